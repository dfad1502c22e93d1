// SPDX-License-Identifier: MIT
#pragma once

#include "player_remark.h"
#include "status_table.h"

#include <QIcon>

class QWidget;

/// The picture for a row of `view` that may be damaged, or about whom something has been written down: a broken line
/// where it came in two datagrams, a triangle where a character may be missing, a sheet of paper, a flag. Both fit
/// beside each other. On dark grounds it is light.
[[nodiscard]] QIcon rowMark(RowDamage damage, PlayerRemark remark, const QWidget &view);
