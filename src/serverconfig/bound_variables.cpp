// SPDX-License-Identifier: MIT
#include "bound_variables.h"

#include "base/controls.h"
#include "base/fault.h"
#include "dvar_reply.h"
#include "rcon/conversation.h"

using namespace Qt::StringLiterals;

bool readGroup(const Conversation &talk, const QString &pattern)
{
    const bool hasCome = talk.ask(u"dvarlist "_s + pattern);
    if (talk.isSuperseded())
        throw Fault(Fault::NotConnected); // The reply is another server's by now.
    return hasCome;
}

QString valueInReply(const Conversation &talk, const QString &name)
{
    return getdvar(talk.reply(), name);
}

void fill(const Conversation &talk, BoundControl &control)
{
    control.setValue(valueInReply(talk, control.tag));
    control.setDataChanged(false);
}

void fillUnlessEmpty(const Conversation &talk, BoundControl &control)
{
    if (!valueInReply(talk, control.tag).isEmpty())
        fill(talk, control);
}

void send(const Conversation &talk, BoundControl &control, ValueForm form)
{
    if (talk.isSuperseded())
        return; // nothing is sent, so the dirty mark stays
    control.setDataChanged(false);
    const QString value = control.value();
    talk.tell(control.tag + (form == ValueForm::Quoted ? u'"' + value + u'"' : u' ' + value));
}

void sendIfChanged(const Conversation &talk, BoundControl &control, ValueForm form, const QString &confirmation)
{
    if (!control.dataChanged())
        return;
    send(talk, control, form);
    talk.note(confirmation);
}
