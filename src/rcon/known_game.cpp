// SPDX-License-Identifier: MIT
#include "known_game.h"

#include "server_info.h"

#include <QStringList>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestName = 64; // characters; no game type and no map has a longer one

/// A name that a server gave, of no game type and no map when it is empty. What cannot be drawn is left out.
QString readableName(const QString &name)
{
    if (name.startsWith(u'\\'))
        return {}; // the next key, behind an empty value
    QString readable = name.left(longestName).simplified();
    return readable.removeIf([](QChar each) { return !each.isPrint(); });
}

bool changesGame(const QString &comm)
{
    // Each of these loads a map, or names the game type of the next.
    static const std::array<QString, 5> words{u"map"_s, u"devmap"_s, u"map_rotate"_s, u"g_gametype"_s, u"exec"_s};
    QStringList parts = comm.simplified().split(u' ');
    if (parts.first().startsWith(u"set", Qt::CaseInsensitive) && parts.size() > 1)
        parts.removeFirst();
    return parts.size() > 0 && std::ranges::any_of(words, [&](const QString &word) {
               return parts.first().compare(word, Qt::CaseInsensitive) == 0;
           });
}

} // namespace

bool KnownGame::takeReply(const QString &reply)
{
    if (reply.contains(u"\\g_gametype\\") && reply.contains(u"\\mapname\\")) {
        gameType = readableName(::gameType(reply));
        mapName = readableName(::mapName(reply));
        mapOfType = mapName;
        return true;
    }
    const QString found = mapOfStatus(reply);
    if (!found.isEmpty())
        mapName = readableName(found);
    return !found.isEmpty();
}

bool KnownGame::takeCommand(const QString &comm)
{
    const QStringList commands = comm.split(u';');
    if (std::ranges::none_of(commands, changesGame))
        return false;
    *this = {};
    return true;
}
