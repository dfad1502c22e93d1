// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

/// True when the history of console commands takes `command` as a new entry: when no entry but the last equals it.
/// The last entry is never compared, so sending the newest command again lists it twice.
[[nodiscard]] bool historyTakes(const QStringList &history, const QString &command);
