// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// How servers answer, in milliseconds and bytes.

/// Between two commands. The strictest servers hear one in half a second, whoever sends it, and the way there takes now
/// a little more, now a little less.
inline constexpr int betweenCommands = 750;

/// How long after a command its answer may come: the latest that are known came after five seconds.
inline constexpr int latestAnswer = 6000;

/// What of a reply beyond this many characters is shown but not kept: no game has a listing of even a tenth of it, and
/// a server that never stops must not fill the memory.
inline constexpr qsizetype largestReply = qsizetype{4} * 1024 * 1024;
