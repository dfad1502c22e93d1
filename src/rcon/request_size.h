// SPDX-License-Identifier: MIT
#pragma once

#include "base/wire_text.h"

/// In bytes: what a server reads of a request behind its header.
inline constexpr qsizetype longestRequest = 1023;

/// The bytes of the request that `command` goes out in, behind its header: the password and the blanks count.
[[nodiscard]] inline qsizetype requestSize(const QString &command, const QString &password)
{
    return QByteArrayView("rcon ").size() + toAnsi(password).size() + 1 + toAnsi(command).size();
}
