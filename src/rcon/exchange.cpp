// SPDX-License-Identifier: MIT
#include "exchange.h"

#include "base/clock.h"
#include "base/fault.h"
#include "base/focus.h"
#include "base/numbers.h"
#include "command_line.h"
#include "output/output.h"
#include "pace.h"
#include "server_fields.h"
#include "session.h"
#include "udp_client.h"

#include <QCoreApplication>
#include <QScopeGuard>
#include <QScopedValueRollback>

#include <algorithm>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int copies = 5;
constexpr int slotsPerCopy = 3;
constexpr QChar commandMark(0x18); // frames the command in its echo line

constexpr qint64 restOfReply = 1500; // milliseconds

/// Nothing more of the answer comes after this.
bool isWholeStatus(const QString &reply)
{
    return reply.startsWith("map:"_L1) && (reply.endsWith("\n\n"_L1) || reply.endsWith("\r\n\r\n"_L1));
}

constexpr qint64 stall = 1500; // milliseconds that a busy machine may add to a wait

} // namespace

Exchange::Exchange(Session &session_, UDPClient &udpclient_, const ServerFields &fields_, Output &output_,
                   Prompts &prompts_, const Clock &clock_, CodePage codePage_)
    : session(session_),
      udpclient(udpclient_),
      fields(fields_),
      output(output_),
      prompts(prompts_),
      clock(clock_),
      codePage(std::move(codePage_))
{
    connect(&udpclient, &UDPClient::DataArrival, this, &Exchange::UDPClient_DataArrival);
    // Answers to earlier lists go to a socket that is closed.
    connect(&udpclient, &UDPClient::linkbegun, this, [this] { pace.forgetLists(); });
}

void Exchange::sendinfo(const QString &comm, bool quietmode, BroughtBy by)
{
    lastBy = by;
    const int number = begin(comm);
    const qint64 staleBefore = pace.stale();
    int copiesSent = 0;
    const Outcome outcome = sendCopies(comm, by, number, copiesSent);
    emit over(number, outcome != Outcome::NotAwaited);
    if (outcome != Outcome::HadItsTime)
        return;
    const bool isPlain = copiesSent == 1 && asked == number && isWholeStatus(session.rconreply); // one copy, one answer
    if (isPlain && asksForStatus(comm) && staleBefore < pace.last())
        pace.setStale(staleBefore);
    emit ended(session.rconreply);

    if (!session.rconarrived) {
        if (!programMinimised())
            prompts.refuse(u"No response from server in 15 seconds\nCould be server loading map! or \n"
                           "Fragmented UDP packets which routers do not pass onTry again..."_s,
                           u"No response"_s, by);
        return;
    }
    if (!quietmode)
        output.addrcon(u">>RCON sent ["_s + clock.shortTime() + u"] "_s + commandMark + comm + commandMark + u"\r\n"_s);
}

int Exchange::begin(const QString &comm)
{
    const int number = ++asked;
    session.rconarrived = false;
    clearReply();
    session.rconnoroute = 0;
    truncationTold = false;
    emit sending(comm);
    return number;
}

bool Exchange::sendonce(const QString &comm, const std::function<bool(const QString &reply)> &isWhole, bool isQuiet)
{
    const int generation = udpclient.generation();
    const bool wasOpen = udpclient.State() != UDPClient::Closed;
    const auto isLeft = [&] {
        const bool isClosed = wasOpen && udpclient.State() == UDPClient::Closed;
        return session.closing || isClosed || udpclient.generation() != generation;
    };
    const int before = asked;
    const qint64 begunAt = milliseconds();
    awaitTurn(comm);
    // What the command goes by may be old when another command or a box has come between.
    const bool isHeldUp = asked != before || milliseconds() - begunAt > betweenCommands + stall;
    if (isLeft() || (isHeldUp && comm != "status"_L1))
        return false;
    lastBy = BroughtBy::Person;
    const qint64 staleBefore = pace.stale();
    const int mine = begin(comm);
    if (isQuiet)
        quietOne = mine;
    const auto atEnd = qScopeGuard([&] { emit over(mine, true); });
    const Wait begun = newWait(comm, 1, latestAnswer / 1000);
    if (const Sent sent = send(comm, mine); sent != Sent::Yes) {
        if (!isQuiet)
            tellUnsent(sent, lastBy);
        return false;
    }
    const qint64 sentAt = timeSending();
    const QString password = lastPassword;
    const auto isOthers = [&] { return asked != mine || isLeft(); };
    {
        Waiting wait(*this, begun);
        for (qint64 left = latestAnswer; left > 0 && !session.rconarrived && !isOthers(); left -= 1000) {
            rest(std::min<qint64>(left, 1000), [&] { return session.rconarrived || isOthers(); });
            wait.secondPassed();
        }
        if (session.rconarrived)
            rest(restOfReply, [&] { return isOthers() || isWhole(session.rconreply); });
    }
    if (isOthers())
        return false;
    lastPassword = password;
    if (asksForStatus(comm) && isWholeStatus(session.rconreply))
        pace.setStale(staleBefore);
    emit ended(session.rconreply);
    const bool isOld = milliseconds() - sentAt > latestAnswer + restOfReply + stall; // a box has stood before it
    return session.rconarrived && !isOld;
}

int Exchange::sendaside(const QString &comm)
{
    const int generation = udpclient.generation();
    awaitTurn(comm);
    if (session.closing || udpclient.generation() != generation)
        return 0;
    lastBy = BroughtBy::Tick;
    const int number = begin(comm);
    quietOne = number;
    const Sent sent = send(comm, number);
    timeSending();
    emit over(number, false);
    return sent == Sent::Yes ? number : 0;
}

// A wait that runs across midnight never ends, and nothing is held up by it.
bool Exchange::isWaitedIn() const
{
    return yielding > 0 || resting.contains(clock.now().date());
}

qint64 Exchange::timeSending()
{
    const qint64 now = milliseconds();
    pace.time(now);
    return now;
}

qint64 Exchange::untilTurn()
{
    const qint64 now = timeSending();
    return pace.untilHeard(now);
}

void Exchange::sentBeside()
{
    pace.sent(false);
    timeSending();
}

// Other handlers run meanwhile and may send something themselves.
void Exchange::awaitTurn(const QString &comm)
{
    const int generation = udpclient.generation();
    const auto isLeft = [&] { return session.closing || udpclient.generation() != generation; };
    const auto left = [&] {
        const qint64 now = timeSending();
        return pace.untilTurn(now, asksForStatus(comm));
    };
    for (qint64 wait = left(); wait > 0 && wait <= latestAnswer && !isLeft(); wait = left())
        rest(wait, isLeft);
}

// A clock that is set back ends the wait: it is not to last for hours.
void Exchange::rest(qint64 milliseconds_, const std::function<bool()> &isOver)
{
    const qint64 start = milliseconds();
    resting.append(QDateTime::fromMSecsSinceEpoch(start).date());
    const auto rested = qScopeGuard([this] { resting.removeLast(); });
    for (qint64 now = start; !session.closing && !isOver() && now >= start && now < start + milliseconds_;
         now = milliseconds())
        clock.rest(static_cast<double>(start + milliseconds_ - now) / 1000);
}

qint64 Exchange::milliseconds() const
{
    return clock.now().toMSecsSinceEpoch();
}

void Exchange::clearReply()
{
    session.rconreply.clear();
    replyPieces.clear();
}

Exchange::Outcome Exchange::sendCopies(const QString &comm, BroughtBy by, int number, int &copiesSent)
{
    const int generation = udpclient.generation();
    const Wait begun = newWait(comm, copies, copies * slotsPerCopy);
    std::optional<Waiting> wait;
    for (int copy = 1; copy <= copies && !session.rconarrived; ++copy) {
        if (const Sent sent = send(comm, number); sent != Sent::Yes) {
            wait.reset();
            tellUnsent(sent, by);
            return Outcome::GivenUp;
        }
        copiesSent = copy;
        const QString password = lastPassword;
        const bool isAwaited = !std::exchange(session.rconnowait, false); // taken first: another handler may run now
        yield();
        if (!isAwaited)
            return Outcome::NotAwaited;
        if (!wait)
            wait.emplace(*this, begun);
        wait->beginCopy(copy);
        waitForReply(*wait);
        lastPassword = password; // also when another command has been sent meanwhile
        if (session.closing || udpclient.generation() != generation)
            return Outcome::GivenUp; // what was meant for one server is not sent to the next
    }
    return Outcome::HadItsTime;
}

Exchange::Sent Exchange::send(const QString &comm, int number)
{
    if (session.closing)
        return Sent::Closing;
    session.rconnotconnected = udpclient.State() == UDPClient::Closed;
    if (session.rconnotconnected)
        return Sent::NotConnected;
    try {
        lastPassword = fields.password();
        const QByteArray datagram = sendText(u"rcon "_s + lastPassword + u' ' + comm);
        pace.sent(asksForStatus(comm));
        emit copysent({number, comm, lastPassword, datagram});
    } catch (const Fault &fault) {
        if (fault.number() != Fault::NoRoute)
            return Sent::Failed;
        session.rconnoroute = -1;
        return Sent::NoRoute;
    }
    return Sent::Yes;
}

void Exchange::tellUnsent(Sent sent, BroughtBy by)
{
    if (sent == Sent::NotConnected)
        prompts.refuse(u"Please connect to a server first!"_s, u"Not connected"_s, by);
    else if (sent == Sent::NoRoute)
        prompts.refuse(u"No route to server, are you sure your connected to the Internet!"_s, u"No Route"_s, by);
}

QByteArray Exchange::sendText(const QString &text)
{
    QByteArray datagram = session.rconheader + codePage.toBytes(text);
    udpclient.SendData(datagram);
    return datagram;
}

void Exchange::waitForReply(Waiting &wait)
{
    for (int slot = 0; slot < slotsPerCopy && !session.rconarrived && !session.closing; ++slot) {
        waitseconds(1);
        wait.secondPassed();
    }
}

Wait Exchange::newWait(const QString &command, int copies_, int longest)
{
    Wait wait{.command = command, .copies = copies_, .longest = longest};
    if (std::exchange(isStep, false)) {
        wait.step = std::clamp(steps.done, 1, steps.of);
        wait.steps = steps.of;
    }
    return wait;
}

Exchange::Waiting::Waiting(Exchange &exchange_, const Wait &begun) : exchange(exchange_), depth(exchange.waits.size())
{
    exchange.waits.append(begun);
    exchange.announceWait();
}

Exchange::Waiting::~Waiting()
{
    exchange.waits.removeLast(); // nested waits end before those around them
    exchange.announceWait();
}

void Exchange::Waiting::beginCopy(int copy)
{
    wait().copy = copy;
    exchange.announceWait();
}

void Exchange::Waiting::secondPassed()
{
    ++wait().seconds;
    exchange.announceWait();
}

void Exchange::announceWait()
{
    if (waits.isEmpty())
        emit waited();
    else
        emit waiting(waits.constLast());
}

void Exchange::sendquery(const QString &query)
{
    ++asked;
    (void)sendText(query);
    yield();
}

void Exchange::waitseconds(qint16 seconds)
{
    // The time of day falls back to zero at midnight and the target does not, so a wait across midnight goes on.
    const QDateTime begun = clock.now();
    pace.time(begun.toMSecsSinceEpoch());
    const auto start = static_cast<qint32>(roundHalfToEven(begun.time().msecsSinceStartOfDay() / 1000.0));
    const double end = start + seconds;
    resting.append(begun.date());
    const auto rested = qScopeGuard([this] { resting.removeLast(); });
    for (double now = clock.secondsSinceMidnight(); !session.closing && now < end; now = clock.secondsSinceMidnight())
        clock.rest(end - now);
}

void Exchange::yield()
{
    ++yielding;
    const auto yielded = qScopeGuard([this] { --yielding; });
    QCoreApplication::processEvents();
}

void Exchange::UDPClient_DataArrival()
{
    QString text = receive();
    const qsizetype room = largestReply - session.rconreply.size();
    if (!text.isEmpty() && room > 0)
        replyPieces.append({session.rconreply.size(), arrived.mayLackLast, arrived.isCut});
    if (session.rconcollect) {
        session.rconreply += squeezeBlanks(text).left(room);
    } else {
        text.replace(u'\n', u"\r\n"_s);
        session.rconreply += text.left(room);
        output.addrcon(text);
    }

    // A datagram that comes during this yield does not yield once more: a flood would pile up handlers without end.
    if (!yieldingInArrival) {
        const QScopedValueRollback inArrival(yieldingInArrival, true);
        yield();
    }
    session.rconarrived = true;
}

QString Exchange::receive()
{
    const qint64 size = udpclient.arrivedSize(); // another comes while a box is open
    QByteArray bytes;
    bool isTruncated = false;
    try {
        udpclient.GetData(bytes);
    } catch (const Fault &fault) {
        isTruncated = fault.number() == Fault::DatagramTooLarge;
    }
    arrived = {0, bytes.size() == ReplyPiece::losingSize, isTruncated};
    const QByteArray head = bytes.first(std::min<qsizetype>(bytes.size(), 32));
    QString text = codePage.toText(bytes.replace(session.rconheader + "print\n", ""));
    emit datagramcame({head, text, size});
    if (isTruncated)
        tellTruncated();
    return text;
}

void Exchange::tellTruncated()
{
    // More such datagrams may follow, also while the box is open. One box for each command tells of them all: a box
    // for each datagram would leave the person nothing to do but close boxes.
    if (asked == quietOne || std::exchange(truncationTold, true))
        return;
    prompts.inform(u"Data returned is to large for buffers\rTruncated after 8192 bytes\rI bet you did dvarlist ;)"_s,
                   u"Truncated data"_s, lastBy);
}
