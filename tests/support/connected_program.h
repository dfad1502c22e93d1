// SPDX-License-Identifier: MIT
#pragma once

#include "game_replies.h"
#include "program.h"

#include <QTabWidget>

#include <chrono>
#include <functional>
#include <optional>

/// The server's limits and delays pass as fast as the program's waits.
inline void shareClock(PracticeServer &server, const Clock &clock)
{
    server.setClock([&clock] { return std::chrono::milliseconds(clock.now().toMSecsSinceEpoch()); });
}

inline void listenOrFail(PracticeServer &server)
{
    if (!server.listen())
        failTest(QStringLiteral("no port for the server"));
}

inline void replayOrFail(PracticeServer &server, const QByteArray &recording)
{
    const Replay replay(recording);
    if (!replay.fault().isEmpty())
        failTest(replay.fault());
    server.replay(replay);
}

/// How a server and a program are to be when a test begins.
struct Beginning {
    PracticeOptions practice = {};
    QByteArray settings = keepsOutput;                             ///< the program's file
    std::function<void(PracticeServer &)> prepare = answerBriefly; ///< what the server is taught before all else
    std::optional<int> tab = {};                                   ///< that is brought to the front
    bool connects = true;
    QByteArray recording = {}; ///< from which the server answers instead of playing
};

/// A practice server and the running program, which is connected to it unless told otherwise; what connecting asked is
/// forgotten. The fixtures of the rooms begin with it.
struct ConnectedProgram {
    explicit ConnectedProgram(const Beginning &beginning = {}) : server(beginning.practice), program(beginning.settings)
    {
        const PracticeOptions &options = beginning.practice;
        if (options.rate != PracticeOptions::Rate::Unlimited || options.late || !beginning.recording.isEmpty())
            shareClock(server, program.clock);
        if (!beginning.recording.isEmpty())
            replayOrFail(server, beginning.recording);
        listenOrFail(server);
        if (beginning.prepare)
            beginning.prepare(server);
        program.start();
        if (beginning.tab)
            program.find<QTabWidget>(QStringLiteral("SSTab"))->setCurrentIndex(*beginning.tab);
        if (beginning.connects)
            program.connectTo(server);
        connecting = server.commands();
        forget();
    }

    /// What the server and the person have been told so far does not count any more.
    void forget()
    {
        server.forgetRequests();
        told = program.messages().size();
    }
    /// Lines in the message list since then.
    [[nodiscard]] QStringList lines() const { return program.messages().mid(told); }
    /// See `Program`; the server is this one.
    [[nodiscard]] bool showsReplies() { return program.showsRepliesOf(server); }
    /// The same, about the players that are on the server in truth.
    [[nodiscard]] bool isRefreshing()
    {
        server.answerAsUsual("status");
        server.answerAsUsual("getstatus");
        return program.isRefreshingFrom(server);
    }

    PracticeServer server;
    Program program;
    QList<QByteArray> connecting; ///< the commands of it

private:
    qsizetype told = 0;
};
