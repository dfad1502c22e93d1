// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// `name` without its colour codes, each of which is a caret and one digit. Other carets stay.
[[nodiscard]] QString stripcolour(const QString &name);
