// SPDX-License-Identifier: MIT
#include "timetable_times.h"

using namespace Qt::StringLiterals;

namespace {

// When clocks are put forward an hour of that day is left out, and what is due in it comes an hour later.
QDateTime moment(QDate date, QTime time)
{
    const QDateTime there(date, time);
    return there.isValid() ? there : QDateTime(date, time.addSecs(3600));
}

std::optional<QDateTime> nextDay(const TimedList &list, const QDateTime &after)
{
    for (int day = 0; day <= 7; ++day) {
        const QDate date = after.date().addDays(day);
        const QDateTime due = moment(date, list.time);
        if (list.days.at(static_cast<std::size_t>(date.dayOfWeek() - 1)) && due > after)
            return due;
    }
    return {};
}

} // namespace

std::optional<QDateTime> nextDue(const TimedList &list, const QDateTime &after, const QDateTime &begun)
{
    if (!list.isActive)
        return {};
    if (list.when == TimedList::AtTime)
        return nextDay(list, after);
    if (list.when != TimedList::Every)
        return {};
    const qint64 distance = 60LL * list.minutes;
    const qint64 passed = std::max<qint64>(begun.secsTo(after), 0);
    return begun.addSecs((passed / distance + 1) * distance);
}

std::optional<QTime> readTime(const QString &text)
{
    const QTime time = QTime::fromString(text.trimmed(), u"H:mm"_s);
    return time.isValid() ? std::optional(time) : std::nullopt;
}

std::optional<int> readMinutes(const QString &text)
{
    bool isNumber = false;
    const int minutes = text.trimmed().toInt(&isNumber);
    return isNumber && minutes >= 1 && minutes <= TimedList::mostMinutes ? std::optional(minutes) : std::nullopt;
}
