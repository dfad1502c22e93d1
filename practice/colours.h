// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// `name` as the game shows it: without the carets and digits that colour it.
[[nodiscard]] QString withoutColours(const QString &name);
