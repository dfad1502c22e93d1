// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// The files that a practice server has on its imaginary disk.

[[nodiscard]] bool isKnownMap(const QString &map);

/// The reply of "dir DIRECTORY EXTENSION": two lines of heading and from `headLines` 3 on an empty one, then a file a
/// line, in no order.
[[nodiscard]] QString directoryListing(const QString &directory, const QString &extension, int headLines);

/// The reply of "fdir PATTERN": a line of dashes, a file a line, those of the game's own folder with "/" in front, and
/// the count. The pattern need only describe the beginning of a name.
[[nodiscard]] QString fileListing(const QString &pattern);

/// The console lines in a configuration file; nothing when there is no such file. ".cfg" may be left out.
[[nodiscard]] std::optional<QStringList> configurationFile(const QString &name);
