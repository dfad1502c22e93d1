// SPDX-License-Identifier: MIT
#pragma once

#include "base/fault.h"

#include <QByteArray>

#include <optional>

/// Reads the whole file into `bytes`; a missing one counts as empty. The fault of one that cannot be read, is no plain
/// file, or has more than `largest` bytes.
[[nodiscard]] std::optional<Fault> readWholeFile(const QString &path, qint64 largest, QByteArray &bytes);

/// Replaces the file or makes it; when that fails the old one is left whole. A new file is the user's alone, an old one
/// keeps its permissions.
[[nodiscard]] std::optional<Fault> replaceWholeFile(const QString &path, const QByteArray &bytes);

/// The name for a broken file beside it: "NAME.broken-N.SUFFIX".
[[nodiscard]] QString asideName(const QString &path, int number);

/// Gives a broken file a name of its own beside it, with the first number that is free; returns that, or nothing when
/// it cannot be moved.
[[nodiscard]] QString putFileAside(const QString &path);
