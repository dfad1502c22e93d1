// SPDX-License-Identifier: MIT
#include "timetable.h"

#include "base/clock.h"
#include "base/system_error.h"
#include "rcon/conversation.h"
#include "rcon/server_fields.h"
#include "rcon/services.h"
#include "rcon/session.h"
#include "rcon/shown_command.h"
#include "rcon/udp_client.h"
#include "server_count.h"
#include "settings/whole_file.h"
#include "timetable_file.h"
#include "timetable_times.h"

#include <QFileInfo>
#include <QLocale>
#include <QScopedValueRollback>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString fileName = u"molvark-timetable.json"_s;
constexpr qint64 largestFile = 4LL * 1024 * 1024; // bytes

// The clock can be set, and the computer can sleep: the time is looked at again at least that often.
constexpr qint64 longestSleep = 30 * 1000; // milliseconds
constexpr qint64 latest = 60;              // seconds after which what was due is missed
constexpr int mostPostponed = 20;          // times a second

QString dayAndTime(const QDateTime &at)
{
    return QLocale::c().toString(at, u"ddd d MMM HH:mm"_s);
}

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

Timetable::Timetable(const Services &services_, const UDPClient &udpclient_, QObject *parent)
    : QObject(parent), services(services_), udpclient(udpclient_), tmrtimetable(this), tmrpostponed(this)
{
    tmrtimetable.setObjectName(u"tmrtimetable"_s);
    tmrtimetable.setSingleShot(true);
    tmrtimetable.setTimerType(Qt::PreciseTimer);
    connect(&tmrtimetable, &QTimer::timeout, this, &Timetable::tmrtimetable_Timer);
    tmrpostponed.setObjectName(u"tmrpostponed"_s);
    tmrpostponed.setSingleShot(true);
    tmrpostponed.setInterval(1000);
    connect(&tmrpostponed, &QTimer::timeout, this, &Timetable::sendQueued);
    load();
}

bool Timetable::isKept()
{
    return QFileInfo::exists(fileName);
}

void Timetable::load()
{
    QByteArray text;
    const std::optional<Fault> failed = readWholeFile(fileName, largestFile, text);
    const std::optional<QList<TimedList>> lists = readTimetable(text);
    isReadable = !failed;
    lastText = text;
    if (failed)
        fault = u"The timetable %1 could not be read: %2"_s.arg(fileName, failed->description());
    else if (lists)
        timed = *lists;
    else if (!text.isEmpty())
        putAside();
    plan();
}

void Timetable::putAside()
{
    const QString aside = putFileAside(fileName);
    isReadable = !aside.isEmpty();
    lastText.clear();
    fault = isReadable ? u"The timetable was broken and is kept as %1"_s.arg(aside)
                       : u"The timetable %1 is broken and could not be put aside"_s.arg(fileName);
}

// A file that could not be read is not written over, and neither are the lists of another program.
void Timetable::save()
{
    if (!isReadable || isChangedByAnother())
        return;
    const QByteArray text = timetableText(timed);
    const std::optional<Fault> failed =
        text.size() > largestFile ? systemFault(std::errc::file_too_large) : replaceWholeFile(fileName, text);
    fault = failed ? u"The timetable could not be saved: "_s + failed->description() : QString();
    if (failed)
        emit told(fault);
    else
        lastText = text;
}

bool Timetable::isChangedByAnother()
{
    QByteArray text;
    if (readWholeFile(fileName, largestFile, text) || text == lastText)
        return false;
    const std::optional<QList<TimedList>> theirs = readTimetable(text);
    if (!theirs)
        return false; // it has been removed or broken, and these lists are better than none
    timed = *theirs;
    dues.clear();
    lastText = text;
    fault = u"Another program has changed the timetable; these are its lists"_s;
    emit told(fault);
    return true;
}

void Timetable::add(const TimedList &list)
{
    if (timed.size() >= mostTimedLists)
        return;
    timed.append(list);
    save();
    plan();
}

void Timetable::change(qsizetype index, const TimedList &list)
{
    if (timed.at(index) == list)
        return;
    const auto hasSameTimes = [&](const TimedList &before) {
        return before.isActive == list.isActive && before.when == list.when && before.minutes == list.minutes &&
               before.time == list.time && before.days == list.days;
    };
    if (!hasSameTimes(timed.at(index)))
        dues[index] = {};
    timed[index] = list;
    save();
    plan();
}

void Timetable::remove(qsizetype index)
{
    timed.removeAt(index);
    dues.removeAt(index);
    save();
    plan();
}

// What is due by now stays so, until the timer comes to it.
void Timetable::plan()
{
    const QDateTime now = services.clock.now();
    noticeClock(now);
    dues.resize(timed.size());
    for (qsizetype index = 0; index < timed.size(); ++index) {
        Due &due = dues[index];
        if (!due.begun.isValid())
            due.begun = now;
        if (!due.at || *due.at > now)
            due.at = nextDue(timed.at(index), now, due.begun);
    }
    arm();
    count();
    emit changed();
}

// All times that were reckoned lie too far ahead when the clock has been set back.
void Timetable::noticeClock(const QDateTime &now)
{
    if (lastSeen.isValid() && now < lastSeen.addSecs(-1)) {
        for (Due &due : dues)
            due = {.at = {}, .begun = now, .wasEmpty = due.wasEmpty};
        emptiness.forget();
    }
    lastSeen = now;
}

void Timetable::arm()
{
    std::optional<QDateTime> first;
    for (const Due &due : std::as_const(dues)) {
        if (due.at && (!first || *due.at < *first))
            first = due.at;
    }
    if (first && !services.session.closing)
        tmrtimetable.start(static_cast<int>(std::clamp<qint64>(services.clock.now().msecsTo(*first), 0, longestSleep)));
    else
        tmrtimetable.stop();
}

void Timetable::tmrtimetable_Timer()
{
    const QDateTime now = services.clock.now();
    if (now < lastSeen) {
        plan();
        return;
    }
    lastSeen = now;
    QList<std::pair<TimedList, bool>> ready; // the lists can be changed while one is sent
    for (qsizetype index = 0; index < timed.size(); ++index) {
        Due &due = dues[index];
        if (!due.at || *due.at > now)
            continue;
        ready.append({timed.at(index), due.at->secsTo(now) > latest});
        due.at = nextDue(timed.at(index), now, due.begun);
    }
    arm();
    emit changed();
    for (const auto &[list, isTooLate] : std::as_const(ready))
        begin(list, isTooLate ? u"the computer slept"_s : QString());
}

void Timetable::setConnected(bool on)
{
    if (connected == on)
        return;
    connected = on;
    emptiness.forget();
    if (!on)
        dropQueue();
    for (Due &due : dues)
        due.wasEmpty = false;
    count();
    emit changed();
}

// The next connection may be to another server.
void Timetable::dropQueue()
{
    for (Run &run : std::exchange(queue, {})) {
        run.ended = u"not connected"_s;
        addResult(run);
    }
}

// Only while somebody wants to know.
void Timetable::count()
{
    const bool isWanted = connected && std::ranges::any_of(timed, [](const TimedList &list) {
                              return list.isActive && list.when == TimedList::WhenEmpty;
                          });
    if (isWanted && !serverCount) {
        serverCount = new ServerCount(this);
        connect(serverCount, &ServerCount::counted, this, &Timetable::takeCount);
    }
    if (serverCount && isWanted != serverCount->isRunning()) {
        emptiness.forget();
        if (isWanted)
            serverCount->start(udpclient.address().toString(), udpclient.port());
        else
            serverCount->stop();
    }
}

void Timetable::takeCount(std::optional<int> players)
{
    const QDateTime now = services.clock.now();
    emptiness.take(players, now);
    QList<TimedList> ready;
    for (qsizetype index = 0; index < timed.size(); ++index) {
        const TimedList &list = timed.at(index);
        Due &due = dues[index];
        if (!emptiness.since())
            due.wasEmpty = false;
        const bool isDue = list.isActive && list.when == TimedList::WhenEmpty && !due.wasEmpty && players == 0 &&
                           emptiness.since() && emptiness.since()->secsTo(now) >= 60LL * list.minutes;
        if (!isDue)
            continue;
        due.wasEmpty = true;
        ready.append(list);
    }
    emit changed();
    for (const TimedList &list : std::as_const(ready))
        begin(list);
}

void Timetable::run(qsizetype index)
{
    begin(timed.at(index));
}

void Timetable::begin(const TimedList &list, const QString &obstacle)
{
    Run run;
    run.heading = services.clock.now().time().toString(u"HH:mm"_s) + u' ' + list.name;
    run.commands = withoutEmptyLines(list.commands);
    if (!obstacle.isEmpty())
        run.ended = obstacle;
    else if (!connected)
        run.ended = u"not connected"_s;
    else if (Conversation(services, BroughtBy::Tick).isPageAtWork())
        run.ended = u"a page was being read or written"_s;
    if (!run.ended.isEmpty()) {
        addResult(run);
        return;
    }
    queue.append(run);
    sendQueued();
}

// Entered again from inside a wait it does nothing: what is queued is sent when the list under way has been.
void Timetable::sendQueued()
{
    if (isSending)
        return;
    const QScopedValueRollback sending(isSending, true);
    while (!queue.isEmpty() && !services.session.closing) {
        if (connected && Conversation(services, BroughtBy::Tick).isElsewhere() &&
            ++queue.first().postponed <= mostPostponed) {
            tmrpostponed.start();
            return;
        }
        underWay = queue.takeFirst();
        send(*underWay);
        addResult(*std::exchange(underWay, std::nullopt));
    }
}

void Timetable::send(Run &run)
{
    const Conversation talk(services, BroughtBy::Tick);
    for (const QString &command : std::as_const(run.commands)) {
        if (!connected || !talk.isOpen()) {
            run.ended = u"not connected"_s;
            return;
        }
        if (talk.isPageAtWork() || run.postponed > mostPostponed) {
            run.ended = u"the program was busy"_s;
            return;
        }
        const int number = talk.tellAside(command);
        if (number == 0) {
            run.ended = talk.isOpen() ? u"it could not be sent"_s : u"not connected"_s;
            return;
        }
        run.sent.append({.command = starredCommand(command, services.fields.password()), .number = number});
    }
}

bool Timetable::Run::take(int number, bool isGood, const QString &verdict)
{
    const auto own = std::ranges::find(sent, number, &Sent::number);
    if (own == sent.end())
        return false;
    own->verdict = verdict;
    own->isGood = isGood;
    return true;
}

QString Timetable::Run::result() const
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

void Timetable::addResult(const Run &run)
{
    runs.append(run);
    if (runs.size() > mostResults)
        runs.removeFirst();
    emit resultschanged();
    emit told(run.result());
}

void Timetable::takeVerdict(int number, bool isGood, const QString &word)
{
    if (word.isEmpty())
        return;
    if (underWay && underWay->take(number, isGood, word))
        return;
    for (auto run = runs.rbegin(); run != runs.rend(); ++run) {
        if (run->take(number, isGood, word)) {
            emit resultschanged();
            emit told(run->result());
            return;
        }
    }
}

QStringList Timetable::results() const
{
    QStringList lines;
    for (const Run &run : runs)
        lines.append(run.result());
    return lines;
}

QString Timetable::outlook() const
{
    qsizetype next = -1;
    QStringList waiting;
    for (qsizetype index = 0; index < timed.size(); ++index) {
        const std::optional<QDateTime> &at = dues.at(index).at;
        if (at && (next < 0 || *at < *dues.at(next).at))
            next = index;
        if (timed.at(index).isActive && timed.at(index).when == TimedList::WhenEmpty)
            waiting.append(timed.at(index).name);
    }
    QStringList parts;
    if (next >= 0)
        parts.append(u"Next: %1, %2"_s.arg(timed.at(next).name, dayAndTime(*dues.at(next).at)));
    if (!waiting.isEmpty())
        parts.append(u"When the server is empty: "_s + waiting.join(u", "_s) +
                     (emptiness.since() ? u" (empty since %1)"_s.arg(emptiness.since()->time().toString(u"HH:mm"_s))
                                        : QString()));
    return parts.isEmpty() ? u"Nothing is due."_s : parts.join(u". "_s) + u'.';
}
