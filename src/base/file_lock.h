// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Whether another process has locked some part of the file. Where the system renames no file that is open, it need not
/// be known, and is false. Whoever asks gives up the locks that this process has on the file.
[[nodiscard]] bool isLockedByAnother(const QString &path);
