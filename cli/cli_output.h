// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Standard output and standard error of the program without a window, in UTF-8.
class CliOutput final {
public:
    /// False when it can be written no more.
    bool print(const QString &text);
    /// The text of a reply as it is, with a line feed at its end if there is none.
    bool printReply(const QString &text);
    /// A line for the person, on standard error.
    void note(const QString &text);

    /// Nobody reads the output any more, which is no fault.
    [[nodiscard]] bool isClosed() const { return state == State::Closed; }
    /// It could not be written, on a full disk perhaps.
    [[nodiscard]] bool hasFailed() const { return state == State::Failed; }

private:
    enum class State { Open, Closed, Failed };
    State state = State::Open;
};
