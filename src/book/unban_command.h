// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The command that has a server lift all bans of that name, which is as the server's ban file has it; empty when no
/// command can say the name.
[[nodiscard]] QString unbanCommand(const QString &name);
