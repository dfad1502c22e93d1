// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <ctime>
#include <limits>

/// The processor time, in seconds, of the quickest of three runs of `work`. Other programs on the machine do not count,
/// so that two such times can be held against each other.
template <typename Work>
double cpuTimeOf(const Work &work)
{
    double quickest = std::numeric_limits<double>::max();
    for (int run = 0; run < 3; ++run) {
        const std::clock_t start = std::clock();
        work();
        quickest = std::min(quickest, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
    return quickest;
}
