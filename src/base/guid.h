// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringView>

/// Whether it is the number of somebody, or 0: digits, perhaps with a minus before them.
[[nodiscard]] bool isGuid(QStringView text);

/// Whether many have this GUID: it is 0, or there is none.
[[nodiscard]] bool isNobodysGuid(const QString &guid);

/// Without blanks at its ends, and "0" however that of many is written.
[[nodiscard]] QString plainGuid(const QString &guid);
