// SPDX-License-Identifier: MIT
#include "map_listing.h"

#include "file_listing.h"

namespace {

constexpr QStringView mapExtension = u".d3dbsp";
constexpr int headLines = 3;

} // namespace

std::optional<QStringList> mapNames(QStringView listing)
{
    qsizetype lineFeed = -1;
    for (int line = 0; line < headLines; ++line) {
        lineFeed = listing.indexOf(u'\n', lineFeed + 1);
        if (lineFeed < 0)
            return {};
    }

    QStringList names;
    while (lineFeed >= 0) {
        const qsizetype dot = listing.indexOf(mapExtension, lineFeed + 1, Qt::CaseInsensitive);
        if (dot < 0)
            break;
        const qsizetype start = listing.lastIndexOf(u'\n', dot) + 1;
        if (dot - start <= longestFileName)
            names.append(listing.sliced(start, dot - start).toString());
        lineFeed = listing.indexOf(u'\n', dot);
    }
    return names;
}
