// SPDX-License-Identifier: MIT
#include "known_game.h"

#include "command_line.h"
#include "server_info.h"

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

bool changesGame(QStringView command)
{
    // Each of these loads a map, or names the game type of the next.
    constexpr std::array<QLatin1StringView, 5> words{"map"_L1, "devmap"_L1, "map_rotate"_L1, "g_gametype"_L1,
                                                     "exec"_L1};
    QStringView rest = command;
    const QStringView what = takeVariable(rest);
    return std::ranges::any_of(words, [what](auto each) { return what.compare(each, Qt::CaseInsensitive) == 0; });
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
    if (std::ranges::none_of(commandsOf(comm), changesGame))
        return false;
    *this = {};
    return true;
}
