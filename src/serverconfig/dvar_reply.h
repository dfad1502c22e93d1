// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The value of a server variable in a "dvarlist" reply: the first text in double quotes after the first place where
/// `name` occurs, without regard to case and also inside a longer name. Empty when the name does not occur.
/// Throws InvalidCall when the quotes are missing or not closed.
[[nodiscard]] QString getdvar(QStringView reply, QStringView name);
