// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QTime>

/// One line of the console program's output: the time, a blank and `text`. Control characters, which a terminal would
/// obey, are written as "\x1B" and the like.
[[nodiscard]] QString logLine(const QTime &time, const QString &text);
