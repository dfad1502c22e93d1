// SPDX-License-Identifier: MIT
#include "message_cycle.h"

#include "base/fault.h"
#include "base/numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

bool MessageCycle::minutePassed(double interval)
{
    if (minutes != 0 && minutes != interval) {
        if (minutes < std::numeric_limits<qint16>::max())
            ++minutes;
        return false;
    }
    minutes = 1;
    return true;
}

int MessageCycle::minutesToNext(double interval) const
{
    if (minutes == 0)
        return 1;
    const bool comesRound =
        interval == std::floor(interval) && interval >= minutes && interval < std::numeric_limits<qint16>::max();
    return comesRound ? static_cast<int>(interval) - minutes + 1 : 0;
}

std::optional<QString> MessageCycle::next(const QStringList &positions)
{
    if (std::ranges::all_of(positions, &QString::isEmpty))
        return {};
    while (true) {
        if (cyclenext >= positions.size())
            cyclenext = 0;
        if (!positions.at(cyclenext).isEmpty())
            return positions.at(cyclenext);
        ++cyclenext;
    }
}

double minutesOf(const QString &interval)
{
    if (isNumeric(interval))
        return toNumber(interval);
    try {
        return leadingNumber(interval);
    } catch (const Fault &) {
        return 0; // no cycle counts that far, and nobody asked for a box every minute
    }
}

bool hasPlaceholder(const QString &message, const QString &placeholder)
{
    return message.contains(placeholder, Qt::CaseInsensitive);
}

QString fillPlaceholder(QString message, const QString &placeholder, const QString &value)
{
    const qsizetype found = message.indexOf(placeholder, 0, Qt::CaseInsensitive);
    return found < 0 ? message : message.replace(found, placeholder.size(), value);
}

QString friendlyFireWord(const QString &mode, const QString &other)
{
    static const QStringList words{u"Off"_s, u"On"_s, u"Reflective"_s, u"Shared"_s};
    try {
        return words.value(toInteger16(mode), other);
    } catch (const Fault &) {
        return other; // the reply was no number
    }
}
