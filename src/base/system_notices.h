// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <memory>

class QSocketNotifier;

/// What a program without a window hears from outside. There can be one of it at a time.
class SystemNotices final : public QObject {
    Q_OBJECT

public:
    SystemNotices();
    ~SystemNotices() override;
    Q_DISABLE_COPY_MOVE(SystemNotices)

    /// Whether the program has been told to end; also known where no event loop runs.
    [[nodiscard]] static bool isInterrupted();
    /// From now on `outputclosed` is said. Where the system has no word for it, writing fails later.
    void watchOutput();

signals:
    /// Ctrl+C, or the system ends the program.
    void interrupted();
    /// Nobody reads the pipe any more that is the standard output.
    void outputclosed();

private:
    std::unique_ptr<QSocketNotifier> signalled;
    std::unique_ptr<QSocketNotifier> output;
};
