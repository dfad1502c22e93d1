// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The command that has a server lift all bans of that name; empty when no command can say the name.
[[nodiscard]] QString unbanCommand(const QString &name);
