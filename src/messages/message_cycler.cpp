// SPDX-License-Identifier: MIT
#include "message_cycler.h"

#include "base/fault.h"
#include "base/focus.h"
#include "base/prompts.h"
#include "message_sets.h"
#include "rcon/conversation.h"
#include "rcon/server_fields.h"
#include "rcon/services.h"
#include "rcon/session.h"
#include "serverconfig/chat_prefix.h"
#include "serverconfig/dvar_reply.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

MessageCycler::MessageCycler(Services &services_, const MessageSets &sets_, PlaceholderVariables variables_,
                             QObject *parent)
    : QObject(parent), services(services_), sets(sets_), variables(std::move(variables_)), tmrmessage(this)
{
    tmrmessage.setObjectName(u"tmrmessage"_s);
    tmrmessage.setInterval(60'000);
    connect(&tmrmessage, &QTimer::timeout, this, &MessageCycler::tmrmessage_Timer);
}

void MessageCycler::start(const QString &name, bool unsaved, bool autoaction)
{
    if (!services.session.connected) {
        if (!autoaction)
            services.prompts.inform(u"Please connect to server first"_s, u"Not Connected"_s);
        return;
    }
    if (unsaved) {
        services.prompts.refuse(u"Pending Save sets active\rPlease either Save or Discard changes\r"
                                "before starting message cycler"_s,
                                u"Pending Save Sets"_s);
        return;
    }
    if (!autoaction) {
        const Answer answer =
            services.prompts.ask({u"Start Message Cycler"_s, u"Start message Cycle for set named:\r"_s + name,
                                  BoxIcon::Question, BoxButtons::OkCancel});
        if (answer == Answer::Cancel)
            return;
    }
    cyclename = name;
    cycleset = sets.savedSlotOf(name);
    const bool isEmpty = cycleset < 0 || std::ranges::all_of(sets.savedMessages(cycleset), &QString::isEmpty);
    if (!isEmpty) {
        tmrmessage.start();
        emit runningchanged(true);
        emit outlookchanged();
    } else if (!autoaction) {
        services.prompts.refuse(u"The message set does not contain any messages!\r Please make some messages first."_s,
                                u"No messages in set"_s);
    }
}

void MessageCycler::stop()
{
    tmrmessage.stop();
    emit runningchanged(false);
    emit outlookchanged();
}

void MessageCycler::setInterval(const QString &text)
{
    interval = text;
    emit outlookchanged();
}

void MessageCycler::sendNext()
{
    cycle.sendNext();
    emit outlookchanged();
}

void MessageCycler::catchUp(double minutes)
{
    cycle.catchUp(minutes);
    emit outlookchanged();
}

QString MessageCycler::outlook() const
{
    if (!isRunning())
        return {};
    const double every = minutesOf(interval);
    const int next = cycle.minutesToNext(every);
    return u"Messages: %1 every %2 min, "_s.arg(cyclename, every > 0 ? QString::number(every) : interval.trimmed()) +
           (next > 0 ? u"next in %1 min"_s.arg(next) : u"no next message"_s);
}

void MessageCycler::tmrmessage_Timer()
{
    const ReentrancyGuard tick(ticking, services.clock, services.prompts);
    if (!tick)
        return; // the last message still waits for the server
    if (!services.session.connected) {
        if (!programMinimised())
            services.prompts.inform(u"Please connect to server first"_s, u"Not Connected"_s, BroughtBy::Tick);
        return;
    }
    const bool isDue = cycle.minutePassed(minutesOf(interval));
    emit outlookchanged();
    if (isDue && !services.session.rconbusy)
        sayNext(tick);
}

void MessageCycler::sayNext(const ReentrancyGuard &tick)
{
    const std::optional<QString> chosen = cycle.next(sets.savedMessages(cycleset));
    if (!chosen)
        return;
    cycle.advance(); // a box may hold this message up: the next tick says the next one
    const Conversation talk(services, BroughtBy::Tick);
    bool hasAsked = false;
    const QString message = filled(*chosen, talk, tick, hasAsked);
    if (!tick.isLatest())
        return;
    if (talk.isOpen())
        talk.tell(u"say "_s + chatPrefix + message, hasAsked);
    else
        cycle.putBack(); // the message was meant for the server that has been left
}

// Each placeholder is filled once, and what is filled in may bring the next one.
QString MessageCycler::filled(QString message, const Conversation &talk, const ReentrancyGuard &tick,
                              bool &hasAsked) const
{
    message = fillPlaceholder(message, u"%IP%"_s, services.fields.address());
    QString value;
    if (hasPlaceholder(message, u"%SN%"_s)) {
        value = askVariable(talk, variables.servername);
        message = fillPlaceholder(message, u"%SN%"_s, value);
        hasAsked = true;
    }
    if (talk.isOpen() && tick.isLatest() && hasPlaceholder(message, u"%FF%"_s)) {
        // A mode without a word leaves the server's name in its place, if that has been asked for.
        value = friendlyFireWord(askVariable(talk, variables.friendlyfire), value);
        message = fillPlaceholder(message, u"%FF%"_s, value);
        hasAsked = true;
    }
    return message;
}

QString MessageCycler::askVariable(const Conversation &talk, const QString &name)
{
    talk.ask(u"dvarlist "_s + name);
    try {
        return getdvar(talk.reply(), name);
    } catch (const Fault &) {
        return {}; // the reply was cut off: the message is said all the same
    }
}
