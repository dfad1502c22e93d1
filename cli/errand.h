// SPDX-License-Identifier: MIT
#pragma once

#include "exit_status.h"

#include <QObject>

class CliOutput;

/// What the program was started for. It says once how it has ended.
class Errand : public QObject {
    Q_OBJECT

public:
    explicit Errand(CliOutput &output_) : output(output_) {}

    /// Called from the event loop.
    virtual void begin() = 0;
    /// The person, or the system, ends it.
    virtual void interrupt() { finish(ExitStatus::Interrupted); }
    /// Nobody reads its output any more.
    virtual void outputClosed() {}
    /// True while the system still looks up a name, also one that nobody waits for any more.
    [[nodiscard]] virtual bool isLookingUp() const = 0;

signals:
    void ended(ExitStatus status);

protected:
    /// Whatever it does stops first.
    void finish(ExitStatus status);
    [[nodiscard]] bool isOver() const { return over; }
    virtual void stop() = 0;

    CliOutput &output;

private:
    bool over = false;
};
