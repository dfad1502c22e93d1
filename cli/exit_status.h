// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

/// With which the program ends.
enum class ExitStatus {
    Done = 0,
    WrongUsage = 2,
    NoAnswer = 3,
    PasswordRefused = 4,
    NotDone = 5, ///< the server said so
    Interrupted = 130,
};

/// What a server's reply says of `command`. Only the beginnings of lines count: names stand further in.
[[nodiscard]] ExitStatus statusOfReply(QStringView command, QStringView reply);
