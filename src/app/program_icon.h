// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

/// The program's icon, drawn at any size.
[[nodiscard]] QIcon programIcon();
