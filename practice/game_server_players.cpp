// SPDX-License-Identifier: MIT
// The game's commands that are about players.
#include "game_server.h"

#include "base/wire_text.h"
#include "colours.h"
#include "command_words.h"

using namespace Qt::StringLiterals;

CommandResult GameServer::say(const QStringList &words)
{
    return {{}, u"say to all: "_s + spoken(words, 1)};
}

CommandResult GameServer::tell(const QStringList &words)
{
    if (words.size() < 3)
        return {u"Usage: tell <client number> <text>\n"_s, {}};
    const auto found = playerOrComplaint(words.at(1));
    if (const auto *complaint = std::get_if<QString>(&found))
        return {*complaint, {}};
    return {{}, u"say to %1: %2"_s.arg(std::get<Player>(found).name, spoken(words, 2))};
}

QString GameServer::spoken(const QStringList &words, qsizetype first) const
{
    const QString text = joinedFrom(words, first);
    return options.plainSay ? trimBlanks(squeezeBlanks(text)) : text;
}

CommandResult GameServer::kick(const QStringList &words)
{
    return dismiss(words, u"kicked"_s);
}

CommandResult GameServer::ban(const QStringList &words)
{
    if (const QString complaint = complaintAboutBan(words); !complaint.isEmpty())
        return {complaint, {}};
    const auto found = playerOrComplaint(words.value(1));
    if (const auto *player = std::get_if<Player>(&found); player != nullptr && words.size() == 2)
        banned.add(player->guid, player->address, withoutColours(player->name));
    return dismiss(words, u"banned"_s);
}

CommandResult GameServer::temporaryBan(const QStringList &words)
{
    if (const QString complaint = complaintAboutBan(words); !complaint.isEmpty())
        return {complaint, {}};
    const auto found = playerOrComplaint(words.value(1));
    const qint64 end = seconds + variables.number(u"sv_kickBanTime"_s);
    if (const auto *player = std::get_if<Player>(&found); player != nullptr && words.size() == 2)
        banned.addUntil(player->guid, player->address, end);
    return dismiss(words, u"tempbanned"_s);
}

CommandResult GameServer::unban(const QStringList &words)
{
    if (words.size() != 2)
        return {u"Usage: %1 <client name>\n"_s.arg(words.first()), {}};
    const qsizetype lifted = banned.lift(words.at(1));
    if (lifted == 0)
        return {u"no banned user has name %1\n"_s.arg(words.at(1)), {}};
    const QString text = u"unbanned %1 user(s) named %2"_s.arg(QString::number(lifted), words.at(1));
    return {text + u'\n', text};
}

// Where bans go by GUID alone: what keeps whoever `words` means from being banned, and so on the server.
QString GameServer::complaintAboutBan(const QStringList &words) const
{
    const auto found = playerOrComplaint(words.value(1));
    const auto *player = std::get_if<Player>(&found);
    if (!options.guidBans || words.size() != 2 || player == nullptr)
        return {};
    if (player->guid == "0"_L1)
        return u"Can't ban user, GUID is 0\n"_s;
    if (banned.holdsForGood(player->guid, player->address))
        return u"This user (%1) is already banned\n"_s.arg(player->guid);
    return {};
}

CommandResult GameServer::dismiss(const QStringList &words, const QString &how)
{
    if (words.size() != 2)
        return {u"Usage: %1 <client number>\n"_s.arg(words.first()), {}};
    const auto found = playerOrComplaint(words.at(1));
    if (const auto *complaint = std::get_if<QString>(&found))
        return {*complaint, {}};
    const auto &player = std::get<Player>(found);
    everybody.remove(player.slot);
    return {QString::number(player.slot) + u':' + player.name + u' ' + how + u'\n',
            player.name + u" (slot %1) was "_s.arg(player.slot) + how};
}

std::variant<Player, QString> GameServer::playerOrComplaint(const QString &slot) const
{
    bool isNumber = false;
    const int number = slot.toInt(&isNumber);
    if (!isNumber)
        return u"Bad slot number: %1\n"_s.arg(slot);
    const Player *player = everybody.at(number);
    if (player != nullptr)
        return *player;
    const bool isSlot = number >= 0 && number < variables.number(u"sv_maxclients"_s);
    return (isSlot ? u"Client %1 is not active\n"_s : u"Bad client slot: %1\n"_s).arg(number);
}
