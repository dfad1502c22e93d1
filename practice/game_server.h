// SPDX-License-Identifier: MIT
#pragma once

#include "bans.h"
#include "dvars.h"
#include "players.h"
#include "practice_options.h"

#include <QString>
#include <QStringList>

#include <variant>

/// What one command line did.
struct CommandResult {
    QString reply;      ///< what the server prints, lines ended by line feeds; empty for silence
    QString event;      ///< one line for people; empty when nothing changed on the server
    bool loads = false; ///< a map is being loaded: the server is deaf for a moment
};

/// The game itself, apart from any socket: its variables, players, bans, files and console commands.
class GameServer final {
public:
    explicit GameServer(const PracticeOptions &options = {});

    /// Executes the first line of `line` as the console does. Never fails: a word that means nothing is told so.
    CommandResult execute(const QString &line);
    /// The answer to "getstatus" without its four-byte header.
    [[nodiscard]] QString statusResponse() const;
    /// One second of the game: players come, go, score and hang, bans run out. Returns what happened, a line each.
    QStringList tick();

    [[nodiscard]] Dvars &dvars() { return m_dvars; }
    [[nodiscard]] const Dvars &dvars() const { return m_dvars; }
    [[nodiscard]] Players &players() { return m_players; }
    [[nodiscard]] const Players &players() const { return m_players; }
    [[nodiscard]] Bans &bans() { return m_bans; }
    [[nodiscard]] qint64 seconds() const { return m_seconds; } ///< since the start, counted by `tick`

private:
    using Handler = CommandResult (GameServer::*)(const QStringList &words);
    [[nodiscard]] static Handler handlerOf(const QString &word);

    CommandResult status(const QStringList &words);
    CommandResult serverInfo(const QStringList &words);
    CommandResult dvarList(const QStringList &words);
    CommandResult fileList(const QStringList &words);
    CommandResult directory(const QStringList &words);
    CommandResult execFile(const QStringList &words);
    CommandResult setDvar(const QStringList &words);
    CommandResult dvarByName(const QStringList &words);
    CommandResult assign(const QString &name, const QString &value);

    CommandResult map(const QStringList &words);
    CommandResult mapRestart(const QStringList &words);
    CommandResult mapRotate(const QStringList &words);
    CommandResult load(const QString &map, const QString &log);
    [[nodiscard]] QString correctGametype();

    CommandResult say(const QStringList &words);
    CommandResult tell(const QStringList &words);
    CommandResult kick(const QStringList &words);
    CommandResult ban(const QStringList &words);
    CommandResult temporaryBan(const QStringList &words);
    CommandResult dismiss(const QStringList &words, const QString &how);
    [[nodiscard]] std::variant<Player, QString> playerOrComplaint(const QString &slot) const;

    Dvars m_dvars;
    Players m_players;
    Bans m_bans;
    qint64 m_seconds = 0;
    int m_execDepth = 0; ///< configuration files that call each other
    bool m_hob = false;
};
