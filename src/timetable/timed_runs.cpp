// SPDX-License-Identifier: MIT
#include "timed_runs.h"

#include "base/clock.h"
#include "rcon/conversation.h"
#include "rcon/server_fields.h"
#include "rcon/services.h"
#include "rcon/session.h"
#include "rcon/shown_command.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int mostPostponed = 20; // times a second

const QString unconnected = u"not connected"_s;
const QString busy = u"the program was busy"_s;

QStringList withoutEmptyLines(const QStringList &commands)
{
    QStringList lines;
    for (const QString &command : commands) {
        if (const QString line = command.trimmed(); !line.isEmpty())
            lines.append(line);
    }
    return lines;
}

} // namespace

TimedRuns::TimedRuns(const Services &services_, QObject *parent)
    : QObject(parent), services(services_), tmrpostponed(this)
{
    tmrpostponed.setObjectName(u"tmrpostponed"_s);
    tmrpostponed.setSingleShot(true);
    tmrpostponed.setInterval(1000);
    connect(&tmrpostponed, &QTimer::timeout, this, &TimedRuns::sendQueued);
}

TimedRuns::Run TimedRuns::newRun(const TimedList &list) const
{
    return {.heading = services.clock.now().time().toString(u"HH:mm"_s) + u' ' + list.name,
            .commands = withoutEmptyLines(list.commands)};
}

// A list that comes while another one is being sent waits for that alone.
bool TimedRuns::areOthersAtWork() const
{
    return !isSending && Conversation(services, BroughtBy::Tick).isElsewhere();
}

void TimedRuns::begin(const TimedList &list, WantedBy by)
{
    Run run = newRun(list);
    run.canWait = by == WantedBy::Person;
    if (!connected)
        return addUnsent(run, unconnected);
    if (Conversation(services, BroughtBy::Tick).isPageAtWork())
        return addUnsent(run, u"a page was being read or written"_s);
    if (!run.canWait && areOthersAtWork())
        return addUnsent(run, busy);
    queue.append(run);
    sendQueued();
}

void TimedRuns::miss(const TimedList &list, const QString &reason)
{
    addUnsent(newRun(list), reason);
}

// Entered again from inside a wait it does nothing: what is queued is sent when the list under way has been.
void TimedRuns::sendQueued()
{
    while (!isSending && !queue.isEmpty() && !services.session.closing) {
        if (areOthersAtWork()) {
            if (queue.constFirst().canWait && ++queue.first().postponed <= mostPostponed)
                return tmrpostponed.start();
            addUnsent(queue.takeFirst(), busy);
            continue;
        }
        const QScopedValueRollback sending(isSending, true);
        underWay = queue.takeFirst();
        send(*underWay);
        addResult(*std::exchange(underWay, std::nullopt));
    }
}

void TimedRuns::send(Run &run) const
{
    const Conversation talk(services, BroughtBy::Tick);
    for (const QString &command : std::as_const(run.commands)) {
        if (!connected || !talk.isOpen()) {
            run.ended = unconnected;
            return;
        }
        const int number = talk.tellAside(command);
        if (number == 0) {
            run.ended = talk.isOpen() ? u"it could not be sent"_s : unconnected;
            return;
        }
        run.sent.append({.command = starredCommand(command, services.fields.password()), .number = number});
    }
}

void TimedRuns::setConnected(bool on)
{
    connected = on;
    if (!on)
        dropQueue();
}

// The next connection may be to another server.
void TimedRuns::dropQueue()
{
    for (const Run &run : std::exchange(queue, {}))
        addUnsent(run, unconnected);
}

bool TimedRuns::Run::take(int number, bool isGood, const QString &verdict)
{
    const auto own = std::ranges::find(sent, number, &Sent::number);
    if (own == sent.end())
        return false;
    own->verdict = verdict;
    own->isGood = isGood;
    return true;
}

QString TimedRuns::Run::result() const
{
    QStringList parts;
    if (!ended.isEmpty())
        parts.append(sent.isEmpty()
                         ? u"missed, "_s + ended
                         : u"broken off after %1 of %2, %3"_s.arg(sent.size()).arg(commands.size()).arg(ended));
    else if (commands.isEmpty())
        parts.append(u"there is no command in it"_s);
    else
        parts.append(sent.size() == 1 ? u"1 command sent"_s : u"%1 commands sent"_s.arg(sent.size()));
    const bool isJudged = std::ranges::none_of(sent, [](const Sent &each) { return each.verdict.isEmpty(); });
    if (isJudged && !sent.isEmpty() && std::ranges::all_of(sent, &Sent::isGood))
        parts.append(u"the server answered"_s);
    for (const Sent &each : sent) {
        if (!each.verdict.isEmpty() && !each.isGood)
            parts.append(each.command.simplified() + u": "_s + each.verdict);
    }
    return heading + u": "_s + parts.join(u"; "_s);
}

void TimedRuns::addResult(const Run &run)
{
    runs.append(run);
    if (runs.size() > mostResults)
        runs.removeFirst();
    emit resultschanged();
    emit told(run.result());
}

void TimedRuns::addUnsent(Run run, const QString &reason)
{
    run.ended = reason;
    addResult(run);
}

void TimedRuns::takeVerdict(int number, bool isGood, const QString &word)
{
    if (word.isEmpty())
        return;
    if (underWay && underWay->take(number, isGood, word))
        return;
    const auto run =
        std::find_if(runs.rbegin(), runs.rend(), [&](auto &each) { return each.take(number, isGood, word); });
    if (run == runs.rend())
        return;
    emit resultschanged();
    emit told(run->result());
}

QStringList TimedRuns::results() const
{
    QStringList lines;
    for (const Run &run : runs)
        lines.append(run.result());
    return lines;
}
