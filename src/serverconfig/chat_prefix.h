// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Stands before every chat line that the program says on the server: its name in yellow, its version in cyan, then
/// white.
inline const QString chatPrefix = QStringLiteral("^3Molvark ^5(1.0)> ^7");
