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

/// What a server's reply says of `command`, of which so many copies had gone out by then. Only the beginnings of lines
/// count: names stand further in. What is said when an earlier copy has done it counts as done.
[[nodiscard]] ExitStatus statusOfReply(QStringView command, QStringView reply, int copies = 1);
