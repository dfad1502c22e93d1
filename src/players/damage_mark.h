// SPDX-License-Identifier: MIT
#pragma once

#include "status_table.h"

#include <QIcon>

class QWidget;

/// The picture for a row of `view` that may be damaged: a broken line where it came in two datagrams, a triangle where
/// a character may be missing. On dark grounds it is light.
[[nodiscard]] QIcon damageMark(RowDamage damage, const QWidget &view);
