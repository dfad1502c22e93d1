// SPDX-License-Identifier: MIT
#pragma once

#include "arguments.h"
#include "players/status_table.h"
#include "server_errand.h"

/// Who is on the server. A list that has not come whole is asked for again.
class PlayersErrand : public ServerErrand {
    Q_OBJECT

public:
    PlayersErrand(CliOutput &output_, const Asking &asking_, PlayersFormat format_)
        : ServerErrand(output_, asking_), format(format_)
    {
    }

protected:
    void goOn() override;
    virtual void takePlayers(const QList<StatusRow> &players);
    /// Neither silence nor a torn list has become a whole one.
    virtual void takeLoss(const QString &what);

private:
    void take(const RconReply &reply) override;
    void takeSilence() override;
    [[nodiscard]] QString shown(const QList<StatusRow> &players) const;

    const PlayersFormat format;
    int copiesLeft = 0;
};

/// The same again and again: a JSON line each time.
class WatchErrand final : public PlayersErrand {
    Q_OBJECT

public:
    WatchErrand(CliOutput &output_, const Asking &asking_, AskSchedule::Time interval_);

    /// It has no other end than these.
    void interrupt() override { endAtOnce(ExitStatus::Done); }
    void outputClosed() override { finish(ExitStatus::Done); }

private:
    void goOn() override;
    void takePlayers(const QList<StatusRow> &players) override;
    void takeLoss(const QString &what) override;
    void stop() override;
    void waitForNext();

    const AskSchedule::Time interval;
    QElapsedTimer since;
    AskSchedule::Time nextAt{};
    QTimer pause;
};
