// SPDX-License-Identifier: MIT
#pragma once

#include "base/fault.h"

#include <QDate>

#include <optional>

/// The date part of a log file's name: two digits each for day, month and year, such as 050306.
[[nodiscard]] QString logDate(QDate date);

/// Appends `text` in the ANSI code page to `file`, which is created when missing and keeps all that was in it.
/// Nothing on success; else the system's error, and no part of the text stays in the file where that can be helped.
[[nodiscard]] std::optional<Fault> appendToLog(const QString &file, const QString &text);
