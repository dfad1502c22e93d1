// SPDX-License-Identifier: MIT
#pragma once

#include "timed_list.h"

#include <QByteArray>
#include <QList>

#include <optional>

/// What one file holds at most.
inline constexpr qsizetype mostTimedLists = 1000;

/// The lists as the text of a JSON file, and back. Nothing when the text is none of that kind. What one list lacks or
/// has wrong is as in a new list; one that is not read wholly is switched off.
[[nodiscard]] QByteArray timetableText(const QList<TimedList> &lists);
[[nodiscard]] std::optional<QList<TimedList>> readTimetable(const QByteArray &text);
