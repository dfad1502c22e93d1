// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

/// Whether `pattern` describes `name` from end to end, whatever the case: "*" stands for any characters, also none,
/// "?" for exactly one.
[[nodiscard]] bool matchesWildcard(QStringView pattern, QStringView name);
