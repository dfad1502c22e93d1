// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

/// A time of the book as the window has it, by the clock on the wall: 2006-03-05 21:07.
[[nodiscard]] inline QString shownTime(qint64 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds).toString(QStringLiteral("yyyy-MM-dd HH:mm"));
}
