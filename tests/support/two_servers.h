// SPDX-License-Identifier: MIT
#pragma once

#include "at_request.h"
#include "connected_program.h"

/// A program that is connected to the first of two servers.
struct TwoServers final : ConnectedProgram {
    TwoServers()
    {
        listenOrFail(second);
        answerBriefly(second);
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

    PracticeServer &first = server;
    PracticeServer second;
};
