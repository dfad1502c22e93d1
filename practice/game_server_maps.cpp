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
    return load(m_dvars.value(u"mapname"_s), {});
}

CommandResult GameServer::mapRotate(const QStringList &)
{
    if (m_dvars.value(u"sv_mapRotationCurrent"_s).trimmed().isEmpty())
        m_dvars.set(u"sv_mapRotationCurrent"_s, m_dvars.value(u"sv_mapRotation"_s));
    const RotationTurn turn = takeTurn(m_dvars.value(u"sv_mapRotationCurrent"_s));
    QString log = u"map_rotate...\n\n\"sv_mapRotation\" is: \"%1\"\n\n\"sv_mapRotationCurrent\" is: \"%2\"\n\n"_s.arg(
        m_dvars.value(u"sv_mapRotation"_s), m_dvars.value(u"sv_mapRotationCurrent"_s));
    log += turn.log;
    m_dvars.set(u"sv_mapRotationCurrent"_s, turn.rest);
    if (!turn.gametype.isEmpty())
        m_dvars.set(u"g_gametype"_s, turn.gametype);
    if (turn.map.isEmpty())
        return load(m_dvars.value(u"mapname"_s),
                    log + u"No map specified in sv_mapRotation - forcing map_restart.\n"_s);
    if (!isKnownMap(turn.map))
        return {log + u"Can't find map maps/mp/%1.d3dbsp\n"_s.arg(turn.map), {}};
    return load(turn.map.toLower(), log);
}

CommandResult GameServer::load(const QString &map, const QString &log)
{
    const QString correction = correctGametype();
    m_dvars.set(u"mapname"_s, map);
    m_players.resetScores();
    const QString gametype = m_dvars.value(u"g_gametype"_s);
    return {log + correction + u"------ Server Initialization ------\nServer: %1\n"_s.arg(map),
            u"loading map %1, game type %2"_s.arg(map, gametype), true};
}

QString GameServer::correctGametype()
{
    QStringList known{u"dm"_s, u"tdm"_s, u"sd"_s, u"ctf"_s, u"hq"_s};
    if (m_hob)
        known.append(u"hob"_s);
    const QString wanted = m_dvars.value(u"g_gametype"_s);
    if (known.contains(wanted, Qt::CaseInsensitive))
        return {};
    m_dvars.set(u"g_gametype"_s, u"dm"_s);
    return u"g_gametype %1 is not a valid gametype, defaulting to dm\n"_s.arg(wanted);
}
