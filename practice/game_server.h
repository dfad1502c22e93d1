// SPDX-License-Identifier: MIT
#pragma once

#include "bans.h"
#include "dvars.h"
#include "players.h"
#include "practice_options.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <variant>

/// What one command line did.
struct CommandResult {
    QString reply;      ///< what the server prints, lines ended by line feeds; empty for silence
    QString event;      ///< one line for people; empty when nothing changed on the server
    bool loads = false; ///< a map is being loaded: the server answers nothing for a moment
};

/// The game itself, apart from any socket: its variables, players, bans, files and console commands.
class GameServer final {
public:
    explicit GameServer(const PracticeOptions &options_ = {});

    /// Executes the first line of `line` as the console does. Never fails: a word that means nothing is told so.
    CommandResult execute(const QString &line);
    /// The answer to "getstatus" without its four-byte header.
    [[nodiscard]] QString statusResponse() const;
    /// One second of the game: players come, go, score and hang, bans run out. Returns what happened, a line each.
    QStringList tick();

    [[nodiscard]] Dvars &dvars() { return variables; }
    [[nodiscard]] const Dvars &dvars() const { return variables; }
    [[nodiscard]] Players &players() { return everybody; }
    [[nodiscard]] const Players &players() const { return everybody; }
    [[nodiscard]] Bans &bans() { return banned; }

private:
    using Handler = CommandResult (GameServer::*)(const QStringList &words);
    struct Command {
        QString name;
        Handler handler = nullptr;
        bool PracticeOptions::*needed = nullptr; ///< the option without which the console does not know it, if any
    };
    [[nodiscard]] static const QList<Command> &allCommands();
    [[nodiscard]] bool knows(const Command &command) const;
    [[nodiscard]] Handler handlerOf(const QString &word) const;

    CommandResult commandList(const QStringList &words);
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
    CommandResult unban(const QStringList &words);
    [[nodiscard]] QString complaintAboutBan(const QStringList &words) const;
    [[nodiscard]] QString spoken(const QStringList &words, qsizetype first) const;
    CommandResult dismiss(const QStringList &words, const QString &how);
    [[nodiscard]] std::variant<Player, QString> playerOrComplaint(const QString &slot) const;

    PracticeOptions options;
    Dvars variables;
    Players everybody;
    Bans banned;
    qint64 seconds = 0; ///< since the start, counted by `tick`
    int execDepth = 0;  ///< configuration files that call each other
    bool hob = false;   ///< the Heat of Battle mod runs
};
