// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

/// One line of a comma-separated file, which ends in CR LF: every item in double quotes, those inside doubled.
[[nodiscard]] QString csvRecord(const QStringList &items);
