// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QStringList>

class PlayerTable;

/// One line of a comma-separated file: every item in double quotes, CR LF at the end. Double quotes inside an item stay
/// as they are.
[[nodiscard]] QString csvLine(const QStringList &items);

/// A moment as the file states it: 05-Mar-2006 21:07.
[[nodiscard]] QString csvTime(const QDateTime &time);

/// A line for each player, with what the player list shows of him; of one listed in Query Mode only his name.
[[nodiscard]] QString csvRows(const PlayerTable &players, const QString &time, const QString &server, bool queryMode);
