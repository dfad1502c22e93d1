// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "fuzz.h"
#include "serverconfig/file_listing.h"
#include "serverconfig/map_listing.h"

using namespace Qt::StringLiterals;

namespace {

std::optional<QStringList> namesByLine(const QString &listing)
{
    constexpr qsizetype headLines = 3;
    const QStringList lines = listing.split(u'\n');
    if (lines.size() <= headLines)
        return {};
    QStringList names;
    for (const QString &line : lines.sliced(headLines)) {
        const qsizetype dot = line.indexOf(u".d3dbsp"_s, 0, Qt::CaseInsensitive);
        if (dot >= 0 && dot <= longestFileName)
            names.append(line.first(dot));
    }
    return names;
}

} // namespace

void fuzz(const QByteArray &input)
{
    const QString listing = fromAnsi(input);
    require(mapNames(listing) == namesByLine(listing), "each line behind the heading that holds the extension");
}
