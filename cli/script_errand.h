// SPDX-License-Identifier: MIT
#pragma once

#include "script.h"
#include "server_errand.h"

/// Commands, one after the other, and what the server prints.
class ScriptErrand final : public ServerErrand {
    Q_OBJECT

public:
    /// `copiesOfQuestion` is for what changes nothing on the server, the asking's own for the rest.
    ScriptErrand(CliOutput &output_, const Asking &asking_, const QList<ScriptStep> &steps_, int copiesOfQuestion_);

private:
    void goOn() override;
    void take(const RconReply &reply) override;
    void takeSilence() override;
    void stop() override;
    void beginStep(const ScriptStep &step);
    void print(const RconReply &reply);
    void endStep(ExitStatus status);
    [[nodiscard]] QString shown() const;

    const QList<ScriptStep> steps;
    const int copiesOfQuestion;
    qsizetype next = 0;
    ExitStatus first = ExitStatus::Done; ///< the first that is something else
    QTimer pause;
};
