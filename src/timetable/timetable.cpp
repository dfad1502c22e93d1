// SPDX-License-Identifier: MIT
#include "timetable.h"

#include "base/clock.h"
#include "rcon/services.h"
#include "rcon/session.h"
#include "rcon/udp_client.h"
#include "server_count.h"
#include "settings/ini_file.h"
#include "timetable_times.h"

#include <QFileInfo>
#include <QLocale>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// The clock can be set, and the computer can sleep: the time is looked at again at least that often.
constexpr qint64 longestSleep = 30'000; // milliseconds
constexpr qint64 latest = 60;           // seconds after which what was due is missed

QString pathOf(const IniFile &ini)
{
    return ini.beside(u"molvark-timetable.json"_s);
}

QString dayAndTime(const QDateTime &at)
{
    return QLocale::c().toString(at, u"ddd d MMM HH:mm"_s);
}

} // namespace

Timetable::Timetable(const Services &services_, const UDPClient &udpclient_, QObject *parent)
    : QObject(parent),
      services(services_),
      udpclient(udpclient_),
      file(pathOf(services.ini)),
      timed(file.read()),
      runs(services, this),
      tmrtimetable(this)
{
    tmrtimetable.setObjectName(u"tmrtimetable"_s);
    tmrtimetable.setSingleShot(true);
    tmrtimetable.setTimerType(Qt::PreciseTimer);
    connect(&tmrtimetable, &QTimer::timeout, this, &Timetable::tmrtimetable_Timer);
    connect(&runs, &TimedRuns::resultschanged, this, &Timetable::resultschanged);
    connect(&runs, &TimedRuns::told, this, &Timetable::told);
    plan();
}

bool Timetable::isKept(const IniFile &ini)
{
    return QFileInfo::exists(pathOf(ini));
}

// The lists of another program, which has changed the file, are these now.
bool Timetable::save()
{
    const std::optional<QList<TimedList>> theirs = file.write(timed);
    if (theirs) {
        timed = *theirs;
        dues.clear();
    }
    if (!file.fault().isEmpty())
        emit told(file.fault());
    plan();
    return !theirs;
}

bool Timetable::add(const TimedList &list)
{
    if (timed.size() >= mostTimedLists)
        return false;
    timed.append(list);
    return save();
}

bool Timetable::change(qsizetype index, const TimedList &list)
{
    if (timed.at(index) == list)
        return true;
    const auto hasSameTimes = [&](const TimedList &before) {
        return before.isActive == list.isActive && before.when == list.when && before.minutes == list.minutes &&
               before.time == list.time && before.days == list.days;
    };
    if (!hasSameTimes(timed.at(index)))
        dues[index] = {};
    timed[index] = list;
    return save();
}

bool Timetable::remove(qsizetype index)
{
    timed.removeAt(index);
    dues.removeAt(index);
    return save();
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
    for (const auto &[list, isTooLate] : std::as_const(ready)) {
        if (isTooLate)
            runs.miss(list, u"the computer slept"_s);
        else
            runs.begin(list, TimedRuns::WantedBy::Itself);
    }
}

void Timetable::setConnected(bool on)
{
    if (runs.isConnected() == on)
        return;
    emptiness.forget();
    runs.setConnected(on);
    for (Due &due : dues)
        due.wasEmpty = false;
    count();
    emit changed();
}

// Only while somebody wants to know.
void Timetable::count()
{
    const bool isWanted = runs.isConnected() && std::ranges::any_of(timed, [](const TimedList &list) {
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
    const std::optional<QDateTime> before = emptiness.since();
    emptiness.take(players, now);
    const bool isAnew = !emptiness.since() || emptiness.since() != before;
    QList<TimedList> ready;
    for (qsizetype index = 0; index < timed.size(); ++index) {
        const TimedList &list = timed.at(index);
        Due &due = dues[index];
        if (isAnew)
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
        runs.begin(list, TimedRuns::WantedBy::Itself);
}

void Timetable::run(qsizetype index)
{
    runs.begin(timed.at(index), TimedRuns::WantedBy::Person);
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
