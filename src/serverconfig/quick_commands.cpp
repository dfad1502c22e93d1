// SPDX-License-Identifier: MIT
#include "quick_commands.h"

#include "chat_prefix.h"
#include "rcon/conversation.h"
#include "rcon/services.h"
#include "rcon/session.h"

#include <QObject>

#include <array>

using namespace Qt::StringLiterals;

namespace {

struct GameType {
    QLatin1StringView prefix;
    const char *confirmation;
};

constexpr std::array<GameType, 5> gameTypes{{
    {"sd"_L1, QT_TRANSLATE_NOOP("QObject", "Mode changed to SD")},
    {"ctf"_L1, QT_TRANSLATE_NOOP("QObject", "Mode changed to CTF")},
    {"tdm"_L1, QT_TRANSLATE_NOOP("QObject", "Mode changed to TDM")},
    {"dm"_L1, QT_TRANSLATE_NOOP("QObject", "Mode changed to DM")},
    {"hq"_L1, QT_TRANSLATE_NOOP("QObject", "Mode changed to HeadQuarters")},
}};
constexpr int teamDeathmatch = 2;

struct FriendlyFire {
    QLatin1StringView announcement;
    const char *confirmation;
};

constexpr std::array<FriendlyFire, 4> friendlyFireModes{{
    {"Friendly Fire now ^2OFF"_L1, QT_TRANSLATE_NOOP("QObject", "Friendly Fire OFF")},
    {"Friendly Fire now ^2ON"_L1, QT_TRANSLATE_NOOP("QObject", "Friendly Fire ON")},
    {"Friendly Fire now ^2Reflective"_L1, QT_TRANSLATE_NOOP("QObject", "Friendly Fire Reflective")},
    {"Friendly Fire now ^2Shared"_L1, QT_TRANSLATE_NOOP("QObject", "Friendly Fire Shared")},
}};

} // namespace

void switchGameType(const Services &services, int index)
{
    if (index < 0 || index >= static_cast<int>(gameTypes.size()))
        return;
    const GameType &type = gameTypes.at(static_cast<std::size_t>(index));
    const QString command = u"set g_gametype "_s + type.prefix;
    const QString restart = u"map_restart"_s;

    const Conversation talk(services);
    // Team deathmatch does not wait for its type instead of for the restart.
    if (index == teamDeathmatch)
        talk.sendWithoutWaiting(command);
    else
        talk.sendinfo(command, true);
    if (services.session.rconnotconnected)
        return;
    talk.waitseconds(1);
    talk.addmessage(QObject::tr(type.confirmation));
    if (index == teamDeathmatch)
        talk.sendinfo(restart, true);
    else
        talk.sendWithoutWaiting(restart);
}

void setFriendlyFire(const Services &services, int mode)
{
    const FriendlyFire &how = friendlyFireModes.at(static_cast<std::size_t>(mode));
    const Conversation talk(services);
    talk.sendinfo(u"scr_friendlyfire "_s + QString::number(mode), true);
    talk.waitseconds(1);
    talk.sendinfo(u"say "_s + chatPrefix + how.announcement, true);
    talk.addmessage(QObject::tr(how.confirmation));
}

void restartMap(const Services &services)
{
    const Conversation talk(services);
    talk.sendWithoutWaiting(u"map_restart"_s);
    talk.addmessage(QObject::tr("Map Restart"));
}

void rotateMap(const Services &services)
{
    const Conversation talk(services);
    talk.sendWithoutWaiting(u"map_rotate"_s);
    talk.addmessage(QObject::tr("Map Rotate"));
}
