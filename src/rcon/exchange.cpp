// SPDX-License-Identifier: MIT
#include "exchange.h"

#include "base/clock.h"
#include "base/fault.h"
#include "base/focus.h"
#include "base/numbers.h"
#include "output/output.h"
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

// What comes beyond this many characters is shown but not kept: no game has a listing of even a tenth of it, and a
// server that never stops must not fill the memory.
constexpr qsizetype largestReply = qsizetype{4} * 1024 * 1024;

// In milliseconds. The strictest servers hear one command in half a second, whoever sends it, and the way there takes
// now a little more, now a little less. The latest answers that are known come after five seconds.
constexpr qint64 betweenCommands = 750;
constexpr qint64 latestAnswer = 6000;
constexpr qint64 restOfReply = 1500;

bool beginsWithStatus(QStringView command)
{
    constexpr QLatin1StringView word("status");
    QStringView rest = command.trimmed();
    while (!rest.isEmpty() && (rest.front() == u'/' || rest.front() == u'\\' || rest.front() == u'"'))
        rest = rest.sliced(1);
    if (!rest.startsWith(word, Qt::CaseInsensitive))
        return false;
    const QStringView behind = rest.sliced(word.size());
    return behind.isEmpty() || behind.front().isSpace() || behind.front() == u'"';
}

/// Whether the answer to one of the commands in the line is the list of players: the server takes a slash or quotes
/// with the word, and other words behind it.
bool isStatus(const QString &comm)
{
    return std::ranges::any_of(QStringView(comm).split(u';'), beginsWithStatus);
}

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
    connect(&udpclient, &UDPClient::linkbegun, this, [this] {
        staleUntil = 0; // answers to earlier lists go to a socket that is closed
        isStatusUntimed = false;
    });
}

void Exchange::sendinfo(const QString &comm, bool quietmode, BroughtBy by)
{
    lastBy = by;
    const int number = begin(comm);
    const qint64 staleBefore = staleUntil;
    int copiesSent = 0;
    const Outcome outcome = sendCopies(comm, by, number, copiesSent);
    emit over(number, outcome != Outcome::NotAwaited);
    if (outcome != Outcome::HadItsTime)
        return;
    const bool isPlain = copiesSent == 1 && asked == number && isWholeStatus(session.rconreply); // one copy, one answer
    if (isPlain && isStatus(comm) && staleBefore < lastSent)
        staleUntil = staleBefore;
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
    const qint64 staleBefore = staleUntil;
    const int mine = begin(comm);
    truncationTold = isQuiet;
    const auto atEnd = qScopeGuard([&] { emit over(mine, true); });
    const Wait begun = newWait(comm, 1, latestAnswer / 1000);
    if (const Sent sent = send(comm, mine); sent != Sent::Yes) {
        if (!isQuiet)
            tellUnsent(sent, lastBy);
        return false;
    }
    const qint64 sentAt = milliseconds();
    timeSending(sentAt);
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
    if (isStatus(comm) && isWholeStatus(session.rconreply))
        staleUntil = staleBefore;
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
    truncationTold = true;
    const Sent sent = send(comm, number);
    timeSending(milliseconds());
    emit over(number, false);
    return sent == Sent::Yes ? number : 0;
}

// A wait that runs across midnight never ends, and nothing is held up by it.
bool Exchange::isWaitedIn() const
{
    return yielding > 0 || resting.contains(clock.now().date());
}

// What has been sent was sent just now.
void Exchange::timeSending(qint64 now)
{
    if (std::exchange(isUntimed, false))
        lastSent = now;
    if (std::exchange(isStatusUntimed, false))
        staleUntil = now + latestAnswer;
}

qint64 Exchange::untilTurn()
{
    const qint64 now = milliseconds();
    timeSending(now);
    const qint64 left = lastSent + betweenCommands - now;
    return left > betweenCommands ? 0 : std::max<qint64>(left, 0); // a clock that was set back makes nobody wait
}

void Exchange::sentBeside()
{
    const qint64 now = milliseconds();
    timeSending(now);
    lastSent = now;
}

// Other handlers run meanwhile and may send something themselves.
void Exchange::awaitTurn(const QString &comm)
{
    const int generation = udpclient.generation();
    const auto isLeft = [&] { return session.closing || udpclient.generation() != generation; };
    const auto left = [&] {
        const qint64 now = milliseconds();
        timeSending(now);
        return std::max(lastSent + betweenCommands, isStatus(comm) ? staleUntil : 0) - now;
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
        isUntimed = true;
        isStatusUntimed = isStatusUntimed || isStatus(comm);
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
    const QByteArray datagram = session.rconheader + codePage.toBytes(text);
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

Wait Exchange::newWait(const QString &command, int copies, int longest)
{
    Wait wait{.command = command, .copies = copies, .longest = longest};
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
    timeSending(begun.toMSecsSinceEpoch());
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
    const QString text = codePage.toText(bytes.replace(session.rconheader + "print\n", ""));
    emit datagramcame({head, text, size});
    if (isTruncated)
        tellTruncated();
    return text;
}

void Exchange::tellTruncated()
{
    // More such datagrams may follow, also while the box is open. One box for each command tells of them all: a box
    // for each datagram would leave the person nothing to do but close boxes.
    if (std::exchange(truncationTold, true))
        return;
    prompts.inform(u"Data returned is to large for buffers\rTruncated after 8192 bytes\rI bet you did dvarlist ;)"_s,
                   u"Truncated data"_s, lastBy);
}
