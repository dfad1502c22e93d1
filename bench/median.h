// SPDX-License-Identifier: MIT
#pragma once

#include <QList>

#include <algorithm>

/// The figure in the middle, the upper of the two of an even number. There must be one.
inline double median(QList<double> figures)
{
    std::ranges::sort(figures);
    return figures.at(figures.size() / 2);
}
