// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/// Whether another process has locked some part of the file. Where the system renames no file that is open, it need not
/// be known, and is false. Whoever asks gives up the locks that this process has on the file.
[[nodiscard]] bool isLockedByAnother(const QString &path);

/// By which a file is known again, whatever has its name by then; empty when there is none. Where the system lets no
/// file be taken away that is open it is the same for all.
[[nodiscard]] QByteArray fileIdentity(const QString &path);
