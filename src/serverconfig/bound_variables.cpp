// SPDX-License-Identifier: MIT
#include "bound_variables.h"

#include "base/controls.h"
#include "base/fault.h"
#include "base/prompts.h"
#include "dvar_reply.h"
#include "rcon/conversation.h"
#include "rcon/services.h"
#include "rcon/session.h"

using namespace Qt::StringLiterals;

bool requireConnection(const Services &services)
{
    if (!services.session.connected)
        services.prompts.refuse(u"You need to connect to a server first"_s, u"Not Connected"_s);
    return services.session.connected;
}

void readGroup(const Conversation &talk, const QString &pattern)
{
    talk.sendinfo(u"dvarlist "_s + pattern, true);
    talk.waitseconds(1); // a long listing comes in many datagrams
    if (!talk.lasts())
        throw Fault(Fault::NotConnected); // what the reply holds now is another server's
}

QString valueInReply(const Conversation &talk, const QString &name)
{
    return getdvar(talk.services.session.rconreply, name);
}

void fill(const Conversation &talk, BoundControl &control)
{
    control.setValue(valueInReply(talk, control.tag));
    control.dataChanged = false;
}

void fillUnlessEmpty(const Conversation &talk, BoundControl &control)
{
    if (!valueInReply(talk, control.tag).isEmpty())
        fill(talk, control);
}

void send(const Conversation &talk, BoundControl &control, ValueForm form)
{
    if (!talk.lasts())
        return; // nothing is sent, so the mark stays
    control.dataChanged = false;
    const QString value = control.value();
    talk.sendinfo(control.tag + (form == ValueForm::Quoted ? u'"' + value + u'"' : u' ' + value));
}

void sendIfChanged(const Conversation &talk, BoundControl &control, ValueForm form, const QString &confirmation)
{
    if (!control.dataChanged)
        return;
    send(talk, control, form);
    talk.addmessage(confirmation);
}
