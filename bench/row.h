// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>

/// Prints one row of the performance page: what was measured, the figure, and the most that it may be.
/// Returns whether it keeps to that.
inline bool row(const char *what, double figure, double most, const char *unit = "")
{
    std::printf("| %s | %.3g%s | %.3g%s |\n", what, figure, unit, most, unit);
    std::fflush(stdout);
    return figure <= most;
}
