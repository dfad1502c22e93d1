// SPDX-License-Identifier: MIT
#include "bans.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 never = std::numeric_limits<qint64>::max();

QString key(const QString &guid, const QString &address)
{
    return guid == "0"_L1 ? address.section(u':', 0, 0) : guid;
}

} // namespace

void Bans::add(const QString &guid, const QString &address)
{
    addUntil(guid, address, never);
}

void Bans::addUntil(const QString &guid, const QString &address, qint64 second)
{
    qint64 &end = ends[key(guid, address)];
    end = qMax(end, second);
}

bool Bans::holds(const QString &guid, const QString &address, qint64 now) const
{
    return ends.value(key(guid, address), now) > now;
}

void Bans::expire(qint64 now)
{
    ends.removeIf([now](const auto &ban) { return ban.value() <= now; });
}
