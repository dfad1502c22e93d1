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

void Bans::add(const QString &guid, const QString &address, const QString &name)
{
    bans.insert(key(guid, address), {never, name});
}

void Bans::addUntil(const QString &guid, const QString &address, qint64 second)
{
    Ban &ban = bans[key(guid, address)];
    ban.end = qMax(ban.end, second);
}

bool Bans::holds(const QString &guid, const QString &address, qint64 now) const
{
    return bans.value(key(guid, address), {now, {}}).end > now;
}

bool Bans::holdsForGood(const QString &guid, const QString &address) const
{
    return bans.value(key(guid, address)).end == never;
}

qsizetype Bans::lift(const QString &name)
{
    return bans.removeIf([&name](const auto &ban) {
        return ban.value().end == never && ban.value().name.compare(name, Qt::CaseInsensitive) == 0;
    });
}

void Bans::expire(qint64 now)
{
    bans.removeIf([now](const auto &ban) { return ban.value().end <= now; });
}
