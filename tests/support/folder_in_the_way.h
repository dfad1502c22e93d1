// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cerrno>

// The number and the words with which the system refuses to open a folder as a file.
#ifdef Q_OS_WIN
inline constexpr int folderInTheWay = 5; // ERROR_ACCESS_DENIED
inline const QString folderInTheWayWords = qt_error_string(folderInTheWay);
#else
inline constexpr int folderInTheWay = EISDIR;
inline const QString folderInTheWayWords = QStringLiteral("Is a directory");
#endif
