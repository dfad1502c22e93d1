// SPDX-License-Identifier: MIT
#pragma once

#include "dvars.h"
#include "player.h"

#include <QList>
#include <QString>

/// The reply of "status": map line, column names, dashes, a row per player and an empty line.
[[nodiscard]] QString statusTable(const QString &map, const QList<Player> &players);

/// The answer to "getstatus" without its four-byte header: the word, the information string, a line per player.
[[nodiscard]] QString statusResponseText(const Dvars &dvars, const QList<Player> &players);

/// The reply of "serverinfo".
[[nodiscard]] QString serverInfoText(const Dvars &dvars);
