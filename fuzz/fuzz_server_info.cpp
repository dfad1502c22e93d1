// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "fuzz.h"
#include "rcon/server_info.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

void readAny(const QString &reply)
{
    const QString type = gameType(reply);
    const QString map = mapName(reply);
    require(!type.contains(u'\\') && !type.contains(u'\n'), "a game type ends at a backslash or with its line");
    require(!map.mid(1).contains(u'\\') && !map.contains(u'\n'), "a map name ends at a backslash or with its line");
    require(reply.contains(type) && reply.contains(map), "values stand in the reply");
    require(type.isEmpty() || reply.contains(u"g_gametype"_s, Qt::CaseInsensitive), "no key, no game type");
    require(map.isEmpty() || reply.contains(u"mapname"_s, Qt::CaseInsensitive), "no key, no map name");
    require(refusesPassword(reply) == reply.startsWith(u"bad rconpassword"_s, Qt::CaseInsensitive),
            "a refusal begins with its words");
}

void readTidy(const QString &type, const QString &map)
{
    const QString reply = u"statusResponse\n\\g_gametype\\"_s + type + u"\\mapname\\"_s + map + u"\\protocol\\118\n"_s;
    require(gameType(reply) == type, "the game type is the value behind its key");
    if (!type.contains(u"mapname"_s, Qt::CaseInsensitive))
        require(mapName(reply) == (map.isEmpty() ? u"\\protocol"_s : map), "the map is the value behind its key");
}

} // namespace

void fuzz(const QByteArray &input)
{
    const QString reply = fromAnsi(input);
    readAny(reply);
    const QStringList words = QString(reply).replace(u'\n', u'\\').split(u'\\');
    readTidy(words.value(0), words.value(1));
}
