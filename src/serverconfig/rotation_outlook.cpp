// SPDX-License-Identifier: MIT
#include "rotation_outlook.h"

#include "base/fault.h"
#include "dvar_reply.h"

#include <QLocale>

#include <algorithm>
#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView limitPrefix = u"scr_";
constexpr QStringView limitSuffix = u"_timelimit";
constexpr double longest = 1440; // minutes; the game takes a day for all that is longer
constexpr int secondsOfMinute = 60;
// In characters; a server that makes one endless line of its listing is not searched for long.
constexpr qsizetype longestName = 64;
constexpr qsizetype longestLine = 256;

bool isNameLetter(QChar letter)
{
    return letter.isLetterOrNumber() || letter == u'_';
}

std::optional<double> limitIn(QStringView reply, const QString &name)
{
    try {
        bool isNumber = false;
        const double minutes = getdvar(reply, name).toDouble(&isNumber);
        if (isNumber && std::isfinite(minutes) && minutes >= 0)
            return std::min(minutes, longest);
    } catch (const Fault &) {
        return std::nullopt; // The value was cut off.
    }
    return std::nullopt;
}

QString duration(std::optional<double> minutes)
{
    if (!minutes)
        return u"time limit not read"_s;
    if (*minutes == 0)
        return u"no time limit: over by score"_s;
    return *minutes == 1 ? u"1 minute"_s : QString::number(*minutes) + u" minutes"_s;
}

QString timeOfDay(const QDateTime &time, const QDateTime &start)
{
    return QLocale::c().toString(time, time.date() == start.date() ? u"HH:mm"_s : u"ddd HH:mm"_s);
}

} // namespace

TimeLimits timeLimits(QStringView listing)
{
    TimeLimits limits;
    for (qsizetype at = listing.indexOf(limitSuffix, 0, Qt::CaseInsensitive); at >= 0;
         at = listing.indexOf(limitSuffix, at + 1, Qt::CaseInsensitive)) {
        qsizetype begin = at;
        while (begin > 0 && at - begin < longestName && isNameLetter(listing.at(begin - 1)))
            --begin;
        const QString name = listing.sliced(begin, at + limitSuffix.size() - begin).toString().toLower();
        const qsizetype letters = name.size() - limitPrefix.size() - limitSuffix.size();
        if (letters <= 0 || !name.startsWith(limitPrefix))
            continue;
        const QStringView rest = listing.sliced(begin).left(longestLine);
        if (const std::optional<double> minutes = limitIn(rest.left(rest.indexOf(u'\n')), name))
            limits.insert(name.sliced(limitPrefix.size(), letters), *minutes);
    }
    return limits;
}

QStringList rotationOutlook(const QList<RotationRow> &rows, const TimeLimits &limits, const QDateTime &start)
{
    QStringList lines;
    std::optional<QDateTime> time = start;
    const auto when = [&] { return time ? timeOfDay(*time, start) : u"then"_s; };
    for (const RotationRow &row : rows) {
        if (row.isOdd())
            continue;
        const auto limit = limits.constFind(row.gametype.toLower());
        const std::optional<double> minutes = limit == limits.cend() ? std::nullopt : std::optional(*limit);
        const QString played = row.gametype.isEmpty() ? row.map : row.gametype + u' ' + row.map;
        lines.append(u"%1  %2 (%3)"_s.arg(when(), played, duration(minutes)));
        if (time && minutes && *minutes > 0)
            time = time->addSecs(std::llround(*minutes * secondsOfMinute));
        else
            time.reset();
    }
    if (!lines.isEmpty())
        lines.append(when() + u"  the rotation is over"_s);
    return lines;
}
