// SPDX-License-Identifier: MIT
// The game's commands that load maps.
#include "game_server.h"

#include "map_rotation.h"
#include "server_files.h"

using namespace Qt::StringLiterals;

CommandResult GameServer::map(const QStringList &words)
{
    if (words.size() != 2)
        return {u"USAGE: map <map name>\n"_s, {}};
    if (!isKnownMap(words.at(1)))
        return {u"Can't find map maps/mp/%1.d3dbsp\n"_s.arg(words.at(1)), {}};
    return load(words.at(1).toLower(), {});
}

CommandResult GameServer::mapRestart(const QStringList &)
{
    return load(variables.value(u"mapname"_s), {});
}

CommandResult GameServer::mapRotate(const QStringList &)
{
    if (variables.value(u"sv_mapRotationCurrent"_s).trimmed().isEmpty())
        variables.set(u"sv_mapRotationCurrent"_s, variables.value(u"sv_mapRotation"_s));
    const RotationTurn turn = takeTurn(variables.value(u"sv_mapRotationCurrent"_s));
    QString log = u"map_rotate...\n\n\"sv_mapRotation\" is: \"%1\"\n\n\"sv_mapRotationCurrent\" is: \"%2\"\n\n"_s.arg(
        variables.value(u"sv_mapRotation"_s), variables.value(u"sv_mapRotationCurrent"_s));
    log += turn.log;
    variables.set(u"sv_mapRotationCurrent"_s, turn.rest);
    if (!turn.gametype.isEmpty())
        variables.assign(u"g_gametype"_s, turn.gametype); // latched, so it waits for a map that can be loaded
    if (turn.map.isEmpty())
        return load(variables.value(u"mapname"_s),
                    log + u"No map specified in sv_mapRotation - forcing map_restart.\n"_s);
    if (!isKnownMap(turn.map))
        return {log + u"Can't find map maps/mp/%1.d3dbsp\n"_s.arg(turn.map), {}};
    return load(turn.map.toLower(), log);
}

CommandResult GameServer::load(const QString &map, const QString &log)
{
    variables.takeUpLatched();
    const QString correction = correctGametype();
    variables.set(u"mapname"_s, map);
    everybody.resetScores();
    const QString gametype = variables.value(u"g_gametype"_s);
    return {log + correction + u"------ Server Initialization ------\nServer: %1\n"_s.arg(map),
            u"loading map %1, game type %2"_s.arg(map, gametype), true};
}

QString GameServer::correctGametype()
{
    QStringList known{u"dm"_s, u"tdm"_s, u"sd"_s, u"ctf"_s, u"hq"_s};
    if (hob)
        known.append(u"hob"_s);
    const QString wanted = variables.value(u"g_gametype"_s);
    if (known.contains(wanted, Qt::CaseInsensitive))
        return {};
    variables.set(u"g_gametype"_s, u"dm"_s);
    return u"g_gametype %1 is not a valid gametype, defaulting to dm\n"_s.arg(wanted);
}
