// SPDX-License-Identifier: MIT
#include "bound_variables.h"

#include "base/controls.h"
#include "base/prompts.h"
#include "dvar_reply.h"
#include "output/output.h"
#include "rcon/exchange.h"
#include "rcon/services.h"
#include "rcon/session.h"

using namespace Qt::StringLiterals;

bool requireConnection(const Services &services)
{
    if (!services.session.connected)
        services.prompts.refuse(QObject::tr("You need to connect to a server first"), QObject::tr("Not Connected"));
    return services.session.connected;
}

void readGroup(const Services &services, const QString &pattern)
{
    services.exchange.sendinfo(u"dvarlist "_s + pattern, true);
    services.exchange.waitseconds(1); // a long listing comes in many datagrams
}

QString valueInReply(const Services &services, const QString &name)
{
    return getdvar(services.session.rconreply, name);
}

void fill(const Services &services, BoundControl &control)
{
    control.setValue(valueInReply(services, control.tag));
    control.dataChanged = false;
}

void fillUnlessEmpty(const Services &services, BoundControl &control)
{
    if (!valueInReply(services, control.tag).isEmpty())
        fill(services, control);
}

void send(const Services &services, BoundControl &control, ValueForm form)
{
    control.dataChanged = false;
    const QString value = control.value();
    services.exchange.sendinfo(control.tag + (form == ValueForm::Quoted ? u'"' + value + u'"' : u' ' + value));
}

void sendIfChanged(const Services &services, BoundControl &control, ValueForm form, const QString &confirmation)
{
    if (!control.dataChanged)
        return;
    send(services, control, form);
    services.output.addmessage(confirmation);
}
