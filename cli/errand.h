// SPDX-License-Identifier: MIT
#pragma once

#include "exit_status.h"

#include <QObject>

#include <chrono>

class CliOutput;

/// What the program was started for. It says once how it has ended.
class Errand : public QObject {
    Q_OBJECT

public:
    explicit Errand(CliOutput &output_) : output(output_) {}

    /// Called from the event loop.
    virtual void begin() = 0;
    /// The person, or the system, ends it.
    virtual void interrupt() { endAtOnce(ExitStatus::Interrupted); }
    /// Nobody reads its output any more.
    virtual void outputClosed() {}
    /// True while the system still looks up a name, also one that nobody waits for any more.
    [[nodiscard]] virtual bool isLookingUp() const = 0;

signals:
    void ended(ExitStatus status);

protected:
    /// Whatever it does stops first. The end is said when the server hears commands again: the next one may be that of
    /// another call, which knows nothing of this one.
    void finish(ExitStatus status);
    /// The same without that wait, also when it has begun.
    void endAtOnce(ExitStatus status);
    [[nodiscard]] bool isOver() const { return over; }
    virtual void stop() = 0;
    /// How long the server may not hear another command, for what this errand has sent.
    [[nodiscard]] virtual std::chrono::milliseconds untilHeard() const = 0;

    CliOutput &output;

private:
    void end(ExitStatus status);

    bool over = false; ///< nothing is done any more
    bool hasEnded = false;
};
