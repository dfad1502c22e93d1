// SPDX-License-Identifier: MIT
#include "conversation.h"

#include "exchange.h"
#include "output/output.h"
#include "server_link.h"
#include "services.h"
#include "session.h"
#include "udp_client.h"

Conversation::Conversation(const Services &services_, BroughtBy by_)
    : services(services_), by(by_), generation(services.link.udpclient.generation())
{
}

bool Conversation::isSuperseded() const
{
    return services.link.udpclient.generation() != generation;
}

bool Conversation::isOpen() const
{
    return !isSuperseded() && services.session.connected && !services.session.closing;
}

bool Conversation::tell(const QString &comm, bool quietmode) const
{
    if (!isSuperseded())
        services.link.exchange.sendinfo(comm, quietmode, by);
    return !isSuperseded();
}

bool Conversation::tellWithoutWaiting(const QString &comm) const
{
    if (isSuperseded())
        return false;
    services.session.rconnowait = true;
    return tell(comm, true);
}

Fate Conversation::tellOnce(const QString &comm, const std::function<bool(const QString &reply)> &isWhole,
                            bool isQuiet) const
{
    const auto isAnyWhole = [](const QString &) { return true; };
    if (!isOpen())
        return Fate::Unsent;
    Exchange &exchange = services.link.exchange;
    bool isBegun = false;
    bool isSent = false;
    const QObject watch; // as long as this lasts
    QObject::connect(&exchange, &Exchange::sending, &watch, [&](const QString &begun) { isBegun |= begun == comm; });
    QObject::connect(&exchange, &Exchange::copysent, &watch,
                     [&](const SentCopy &copy) { isSent |= copy.comm == comm; });
    const int before = exchange.exchanges();
    if (exchange.sendonce(comm, isWhole ? isWhole : isAnyWhole, isQuiet) && isOpen())
        return Fate::Answered;
    if (!isSent)
        return isBegun || !isOpen() ? Fate::Unsent : Fate::HeldUp;
    const bool isAlone = exchange.exchanges() == before + 1;
    return isAlone && !services.session.rconarrived ? Fate::Silent : Fate::Disturbed;
}

int Conversation::tellAside(const QString &comm) const
{
    return isOpen() ? services.link.exchange.sendaside(comm) : 0;
}

bool Conversation::isElsewhere() const
{
    const ServerLink &link = services.link;
    return link.exchange.isWaitedIn() || link.collecting.holders.contains(link.epoch(services.clock)) || isPageAtWork();
}

// By who holds the flag: one that was left set on purpose holds up the two timers, and nobody else.
bool Conversation::isPageAtWork() const
{
    const ServerLink::Epoch now = services.link.epoch(services.clock);
    return services.link.busy.holders.contains(now) || services.link.pages.contains(now);
}

bool Conversation::ask(const QString &comm, bool quietmode) const
{
    beginStep();
    tell(comm, quietmode);
    wait(1);
    asked = services.link.exchange.exchanges();
    return services.session.rconarrived && !isSuperseded();
}

// A timer's tick may come in the middle of a person's reading and is no step of it.
void Conversation::beginStep() const
{
    if (by == BroughtBy::Person && !isSuperseded())
        services.link.exchange.nextStep();
}

void Conversation::sendQuery(const QString &comm) const
{
    if (isSuperseded())
        return;
    query = comm;
    services.session.rconarrived = false;
    beginStep();
    services.link.exchange.sendquery(query);
}

bool Conversation::awaitAnswer() const
{
    constexpr int waits = 5;
    {
        Exchange &exchange = services.link.exchange;
        Exchange::Waiting waiting(exchange, exchange.newWait(query, 1, waits));
        for (int count = 0; !services.session.rconarrived && count < waits && isOpen(); ++count) {
            wait(1);
            yield();
            waiting.secondPassed();
        }
    }
    emit services.link.exchange.ended(services.session.rconreply);
    asked = services.link.exchange.exchanges();
    return services.session.rconarrived && isOpen();
}

bool Conversation::wait(qint16 seconds) const
{
    if (!isSuperseded())
        services.link.exchange.waitseconds(seconds);
    return !isSuperseded();
}

void Conversation::yield() const
{
    services.link.exchange.yield();
}

bool Conversation::note(const QString &text) const
{
    if (!isSuperseded())
        services.output.addmessage(text);
    return !isSuperseded();
}

const QString &Conversation::reply() const
{
    return services.session.rconreply;
}

const QList<ReplyPiece> &Conversation::pieces() const
{
    return services.link.exchange.pieces();
}

void Conversation::clearReply() const
{
    if (!isSuperseded())
        services.link.exchange.clearReply();
}

bool Conversation::ownsReply() const
{
    return services.link.exchange.exchanges() == asked;
}
