// SPDX-License-Identifier: MIT
#pragma once

#include "errand.h"
#include "rcon_client.h"
#include "server_choice.h"

/// What the questions of an errand have in common.
struct Asking {
    CliServer server;
    QString password; ///< empty when it is not needed and not known
    int copies = 1;
    AskSchedule::Time timeout{3000};
};

/// An errand that asks a server one question after the other.
class ServerErrand : public Errand {
    Q_OBJECT

public:
    ServerErrand(CliOutput &output_, Asking asking_);

    void begin() override;
    [[nodiscard]] bool isLookingUp() const override { return client.isLookingUp(); }

protected:
    /// The server can be asked from now on.
    virtual void goOn() = 0;
    virtual void take(const RconReply &reply) = 0;
    virtual void takeSilence() = 0;
    void stop() override { client.close(); }
    [[nodiscard]] std::chrono::milliseconds untilHeard() const override;
    void ask(const RconQuestion &question) { client.ask(question); }
    /// The same for a console command.
    void askConsole(const QString &command, int copies);

    const Asking asking;

private:
    void endUnanswered(const QString &why);

    RconClient client;
    bool isConsoleAsked = false;
};
