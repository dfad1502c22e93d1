// SPDX-License-Identifier: MIT
#include "server_info.h"

#include <QString>

#include <algorithm>

namespace {

// The text behind the first `key` and its backslash, up to the backslash found at `searchFrom` characters or more
// behind the value's start, or to the end of the line.
QString valueBehind(QStringView reply, QStringView key, qsizetype searchFrom)
{
    const qsizetype found = reply.indexOf(key, 0, Qt::CaseInsensitive);
    if (found < 0)
        return {};
    const QStringView rest = reply.sliced(std::min(found + key.size() + 1, reply.size()));
    const auto end = [&](qsizetype position) { return position < 0 ? rest.size() : position; };
    return rest.first(std::min(end(rest.indexOf(u'\\', searchFrom)), end(rest.indexOf(u'\n')))).toString();
}

} // namespace

QString gameType(QStringView reply)
{
    return valueBehind(reply, u"g_gametype", 0);
}

QString mapName(QStringView reply)
{
    // One character further on than the game type's search: an empty name takes the next key along.
    return valueBehind(reply, u"mapname", 1);
}

QString mapOfStatus(QStringView reply)
{
    constexpr QLatin1StringView label("map:");
    if (!reply.startsWith(label))
        return {};
    const QStringView line = reply.first(std::min<qsizetype>(reply.size(), 200));
    return line.sliced(label.size(), std::max<qsizetype>(line.indexOf(u'\n'), label.size()) - label.size())
        .trimmed()
        .toString();
}

bool refusesPassword(QStringView reply)
{
    return reply.first(std::min<qsizetype>(reply.size(), 16)).compare(u"BAD RCONPASSWORD", Qt::CaseInsensitive) == 0;
}
