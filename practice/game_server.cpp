// SPDX-License-Identifier: MIT
#include "game_server.h"

#include "command_words.h"
#include "map_rotation.h"
#include "server_files.h"
#include "status_table.h"
#include "wildcard.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString firstRotation()
{
    return u"gametype tdm map mp_toujane gametype sd map mp_carentan gametype ctf map mp_dawnville "
           "gametype hq map mp_burgundy gametype dm map mp_matmata"_s;
}

} // namespace

GameServer::GameServer(const PracticeOptions &options_)
    : options(options_),
      variables(Dvars::stock(options.mod == PracticeOptions::hobMod)),
      everybody(options),
      hob(options.mod == PracticeOptions::hobMod)
{
    const RotationTurn turn = takeTurn(firstRotation());
    variables.set(u"sv_mapRotation"_s, firstRotation());
    variables.set(u"sv_mapRotationCurrent"_s, turn.rest);
    variables.set(u"g_gametype"_s, turn.gametype);
    variables.set(u"mapname"_s, turn.map);
    const qsizetype slotCount = qMax<qsizetype>(variables.number(u"sv_maxclients"_s), everybody.count());
    variables.set(u"sv_maxclients"_s, QString::number(slotCount));
    variables.set(u"rcon_password"_s, options.password);
    if (hob)
        variables.set(u"fs_game"_s, options.mod);
}

// By name, as "cmdlist" prints them.
const QList<GameServer::Command> &GameServer::allCommands()
{
    static const QList<Command> commands{
        {u"banClient"_s, &GameServer::ban},
        {u"clientkick"_s, &GameServer::kick},
        {u"cmdlist"_s, &GameServer::commandList, &PracticeOptions::cmdlist},
        {u"dir"_s, &GameServer::directory},
        {u"dvarlist"_s, &GameServer::dvarList},
        {u"exec"_s, &GameServer::execFile},
        {u"fdir"_s, &GameServer::fileList},
        {u"map"_s, &GameServer::map},
        {u"map_restart"_s, &GameServer::mapRestart},
        {u"map_rotate"_s, &GameServer::mapRotate},
        {u"say"_s, &GameServer::say},
        {u"serverinfo"_s, &GameServer::serverInfo},
        {u"set"_s, &GameServer::setDvar},
        {u"seta"_s, &GameServer::setDvar},
        {u"sets"_s, &GameServer::setDvar},
        {u"status"_s, &GameServer::status},
        {u"tell"_s, &GameServer::tell},
        {u"tempBanClient"_s, &GameServer::temporaryBan},
        {u"unbanUser"_s, &GameServer::unban, &PracticeOptions::guidBans},
    };
    return commands;
}

bool GameServer::knows(const Command &command) const
{
    return command.needed == nullptr || options.*command.needed;
}

GameServer::Handler GameServer::handlerOf(const QString &word) const
{
    const auto isMeant = [this, &word](const Command &command) {
        return knows(command) && command.name.compare(word, Qt::CaseInsensitive) == 0;
    };
    const auto found = std::ranges::find_if(allCommands(), isMeant);
    return found == allCommands().end() ? nullptr : found->handler;
}

CommandResult GameServer::execute(const QString &line)
{
    const QStringList words = commandWords(line);
    if (words.isEmpty())
        return {};
    const Handler handler = handlerOf(words.first());
    return handler == nullptr ? dvarByName(words) : (this->*handler)(words);
}

QString GameServer::statusResponse() const
{
    return statusResponseText(variables, everybody.all());
}

QStringList GameServer::tick()
{
    ++seconds;
    banned.expire(seconds);
    return everybody.step(banned, seconds, variables.number(u"sv_maxclients"_s));
}

CommandResult GameServer::status(const QStringList &)
{
    return {statusTable(variables.value(u"mapname"_s), everybody.all()), {}};
}

CommandResult GameServer::serverInfo(const QStringList &)
{
    return {serverInfoText(variables), {}};
}

CommandResult GameServer::dvarList(const QStringList &words)
{
    return {variables.listing(words.value(1)), {}};
}

CommandResult GameServer::fileList(const QStringList &words)
{
    if (words.size() < 2)
        return {u"usage: fdir <filter>\nexample: fdir *.cfg\n"_s, {}};
    return {fileListing(words.at(1)), {}};
}

// The two below are in the table of commands, and so not const.
// NOLINTBEGIN(readability-make-member-function-const)
CommandResult GameServer::commandList(const QStringList &words)
{
    QString text;
    for (const Command &command : allCommands()) {
        if (knows(command) && (words.size() < 2 || matchesWildcard(words.at(1), command.name)))
            text += command.name + u'\n';
    }
    return {text + u"%1 commands\n"_s.arg(text.count(u'\n')), {}};
}

CommandResult GameServer::directory(const QStringList &words)
{
    if (words.size() < 2 || words.size() > 3)
        return {u"usage: dir <directory> [extension]\n"_s, {}};
    return {directoryListing(words.at(1), words.value(2), options.headLines), {}};
}
// NOLINTEND(readability-make-member-function-const)

CommandResult GameServer::execFile(const QStringList &words)
{
    constexpr int deepest = 8;
    if (words.size() != 2)
        return {u"exec <filename> : execute a script file\n"_s, {}};
    const std::optional<QStringList> lines = configurationFile(words.at(1));
    if (!lines || execDepth >= deepest)
        return {u"couldn't exec %1\n"_s.arg(words.at(1)), {}};
    CommandResult result{u"execing %1\n"_s.arg(words.at(1)), words.at(1) + u" was executed"_s};
    ++execDepth;
    for (const QString &line : *lines) {
        const CommandResult inner = execute(line); // what it prints stays on the server
        result.event += inner.event.isEmpty() ? QString() : u"; "_s + inner.event;
        result.loads = result.loads || inner.loads;
    }
    --execDepth;
    return result;
}

CommandResult GameServer::setDvar(const QStringList &words)
{
    if (words.size() < 3)
        return {u"USAGE: %1 <variable> <value>\n"_s.arg(words.first()), {}};
    return assign(words.at(1), joinedFrom(words, 2));
}

CommandResult GameServer::dvarByName(const QStringList &words)
{
    const Dvar *dvar = variables.find(words.first());
    if (dvar == nullptr)
        return {u"Unknown command \"%1\"\n"_s.arg(words.first()), {}};
    if (words.size() == 1 && options.readProtected && dvar->name == "rcon_password"_L1)
        return {dvar->name + u" is read protected\n"_s, {}};
    if (words.size() == 1)
        return {Dvars::description(*dvar), {}};
    return assign(dvar->name, joinedFrom(words, 1));
}

CommandResult GameServer::assign(const QString &name, const QString &value)
{
    const auto [outcome, reply] = variables.assign(name, value);
    if (outcome == Assignment::Outcome::Refused)
        return {reply, {}};
    if (holdsPassword(name))
        return {reply, name + u" was changed"_s};
    const bool waits = outcome == Assignment::Outcome::Latched;
    return {reply, (waits ? u"%1 is \"%2\" from the next map on"_s : u"%1 is now \"%2\""_s).arg(name, value)};
}
