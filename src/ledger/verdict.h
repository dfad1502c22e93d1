// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// What became of a command.
enum class Verdict {
    None, ///< it is not known yet
    Acknowledged,
    Answered,
    PasswordRefused,
    UnknownCommand,
    NoSuchPlayer,
    Usage,
    Silent,
    Late,
    Cut,
    TooLong,
    Unreadable,
};

/// As it stands in the ledger; empty for `None`.
[[nodiscard]] QString verdictWord(Verdict verdict);

/// Whether the server has taken the command: acknowledged or answered.
[[nodiscard]] bool isGood(Verdict verdict);

/// The first line of an answer with anything in it, without blanks at its ends.
[[nodiscard]] QStringView firstLine(QStringView text);

/// What the words of an answer, which may be that to several copies, say of `command`.
[[nodiscard]] Verdict verdictOfReply(QStringView command, QStringView reply);
