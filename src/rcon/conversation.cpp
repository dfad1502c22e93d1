// SPDX-License-Identifier: MIT
#include "conversation.h"

#include "exchange.h"
#include "output/output.h"
#include "services.h"
#include "session.h"
#include "udp_client.h"

Conversation::Conversation(const Services &services_) : services(services_), link(services.udpclient.link()) {}

bool Conversation::lasts() const
{
    return services.udpclient.link() == link;
}

void Conversation::sendinfo(const QString &comm, bool quietmode) const
{
    if (lasts())
        services.exchange.sendinfo(comm, quietmode);
}

void Conversation::sendWithoutWaiting(const QString &comm) const
{
    if (!lasts())
        return;
    services.session.rconnowait = true;
    services.exchange.sendinfo(comm, true);
}

void Conversation::waitseconds(qint16 seconds) const
{
    if (lasts())
        services.exchange.waitseconds(seconds);
}

void Conversation::addmessage(const QString &text) const
{
    if (lasts())
        services.output.addmessage(text);
}
