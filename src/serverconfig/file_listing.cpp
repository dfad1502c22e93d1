// SPDX-License-Identifier: MIT
#include "file_listing.h"

namespace {

constexpr QStringView cfgExtension = u".cfg";

} // namespace

QStringList cfgFiles(QStringView listing)
{
    QStringList names;
    qsizetype line = listing.startsWith(u'/') ? 0 : listing.indexOf(u'\n') + 1;
    while (true) {
        const qsizetype dot = listing.indexOf(cfgExtension, line, Qt::CaseInsensitive);
        if (dot < 0)
            break;
        const qsizetype length = dot + cfgExtension.size() - line - 1;
        if (listing.at(line) == u'/' && length <= longestFileName)
            names.append(listing.sliced(line + 1, length).toString());
        const qsizetype end = listing.indexOf(u'\n', dot);
        if (end < 0)
            break;
        line = end + 1;
    }
    return names;
}
