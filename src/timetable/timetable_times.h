// SPDX-License-Identifier: MIT
#pragma once

#include "timed_list.h"

#include <QDateTime>

#include <optional>

/// When `list` is due for the first time after `after`; its minutes count from `begun` on. Nothing when no time decides
/// it: switched off, sent by hand, when the server is empty, or on no day.
[[nodiscard]] std::optional<QDateTime> nextDue(const TimedList &list, const QDateTime &after, const QDateTime &begun);

/// A time of day as people type it, "20:30" or "8:05"; nothing for anything else.
[[nodiscard]] std::optional<QTime> readTime(const QString &text);
/// 1 to `TimedList::mostMinutes`; nothing for anything else.
[[nodiscard]] std::optional<int> readMinutes(const QString &text);
