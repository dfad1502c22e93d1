// SPDX-License-Identifier: MIT
#include "quick_commands.h"

#include "chat_prefix.h"
#include "rcon/conversation.h"
#include "rcon/reading.h"
#include "rcon/services.h"
#include "rcon/session.h"
#include "stock_game.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

/// Of each of the game's own types.
constexpr std::array<QLatin1StringView, stockGameTypes.size()> confirmations{
    "Mode changed to SD"_L1, "Mode changed to CTF"_L1, "Mode changed to TDM"_L1, "Mode changed to DM"_L1,
    "Mode changed to HeadQuarters"_L1};
constexpr int teamDeathmatch = 2;

struct FriendlyFire {
    QLatin1StringView announcement;
    QLatin1StringView confirmation;
};

constexpr std::array<FriendlyFire, 4> friendlyFireModes{{
    {"Friendly Fire now ^2OFF"_L1, "Friendly Fire OFF"_L1},
    {"Friendly Fire now ^2ON"_L1, "Friendly Fire ON"_L1},
    {"Friendly Fire now ^2Reflective"_L1, "Friendly Fire Reflective"_L1},
    {"Friendly Fire now ^2Shared"_L1, "Friendly Fire Shared"_L1},
}};

} // namespace

void switchGameType(const Services &services, int index)
{
    if (index < 0 || index >= static_cast<int>(stockGameTypes.size()))
        return;
    const auto type = static_cast<std::size_t>(index);
    const QString command = u"set g_gametype "_s + stockGameTypes.at(type);
    const QString restart = u"map_restart"_s;

    const Conversation talk(services);
    const PageAtWork working(services);
    // The other game types wait until the server has taken them, but not for the restart. For this one it is reversed.
    if (index == teamDeathmatch)
        talk.tellWithoutWaiting(command);
    else
        talk.tell(command, true);
    if (services.session.rconnotconnected)
        return;
    talk.wait(1);
    talk.note(confirmations.at(type));
    if (index == teamDeathmatch)
        talk.tell(restart, true);
    else
        talk.tellWithoutWaiting(restart);
}

void setFriendlyFire(const Services &services, int mode)
{
    const FriendlyFire &how = friendlyFireModes.at(static_cast<std::size_t>(mode));
    const Conversation talk(services);
    const PageAtWork working(services);
    talk.tell(u"scr_friendlyfire "_s + QString::number(mode), true);
    talk.wait(1);
    talk.tell(u"say "_s + chatPrefix + how.announcement, true);
    talk.note(how.confirmation);
}

void restartMap(const Services &services)
{
    const Conversation talk(services);
    talk.tellWithoutWaiting(u"map_restart"_s);
    talk.note(u"Map Restart"_s);
}

void rotateMap(const Services &services)
{
    const Conversation talk(services);
    talk.tellWithoutWaiting(u"map_rotate"_s);
    talk.note(u"Map Rotate"_s);
}
