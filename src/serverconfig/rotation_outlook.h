// SPDX-License-Identifier: MIT
#pragma once

#include "rotation_text.h"

#include <QDateTime>
#include <QHash>

/// Minutes by game type, whose prefix is in small letters; 0 is no limit.
using TimeLimits = QHash<QString, double>;

/// The time limits in a reply to "dvarlist scr_*"; what is cut off or no number is left out.
[[nodiscard]] TimeLimits timeLimits(QStringView listing);

/// Which map comes when, one line each, and when the rotation is over, if its first map begins at `start` and every map
/// lasts as long as it may. Behind a map without a known limit no times are known any more.
[[nodiscard]] QStringList rotationOutlook(const QList<RotationRow> &rows, const TimeLimits &limits,
                                          const QDateTime &start);
