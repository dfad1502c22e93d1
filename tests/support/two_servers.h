// SPDX-License-Identifier: MIT
#pragma once

#include "program.h"
#include "tests/rcon/at_request.h"
#include "tests/rcon/game_replies.h"

/// A program that is connected to the first of two servers.
struct TwoServers final {
    TwoServers()
    {
        for (PracticeServer *server : {&first, &second}) {
            if (!server->listen())
                qFatal("no port for the server");
            answerBriefly(*server);
        }
        program.start();
        program.connectTo(first);
        first.forgetRequests();
    }

    /// The person goes over to the second server while the first answers this command.
    void leaveAt(const QByteArray &command)
    {
        atRequest(first, command, [this] {
            QTimer::singleShot(0, &first, [this] {
                program.click(QStringLiteral("cmdconnect"));
                program.connectTo(second);
                second.forgetRequests();
            });
        });
    }
    /// What the message list says from the second connection on.
    [[nodiscard]] QStringList messagesOfSecond() const
    {
        const QStringList all = program.messages();
        return all.mid(all.lastIndexOf(QStringLiteral("Connected to server 127.0.0.1:%1").arg(second.port())) + 1);
    }

    PracticeServer first;
    PracticeServer second;
    Program program{keepsOutput};
};
