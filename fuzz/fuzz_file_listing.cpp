// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "fuzz.h"
#include "serverconfig/file_listing.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView extension = u".cfg";

qsizetype extensionIn(const QString &text)
{
    return text.indexOf(extension, 0, Qt::CaseInsensitive);
}

void readAny(const QString &listing)
{
    qsizetype behind = 0;
    for (const QString &name : cfgFiles(listing)) {
        require(name.size() <= longestFileName, "a name is not longer than a file's can be");
        require(extensionIn(name) == name.size() - extension.size(), "a name goes up to and with its first extension");
        const qsizetype slash = listing.indexOf(u'/' + name, behind);
        require(slash >= 0, "names stand in the listing, in its order");
        require(slash == 0 || listing.contains(u"\n/"_s + name), "names stand at the beginning of a line");
        behind = slash + 1 + name.size();
    }
}

/// A listing as servers make it, in which every line is a file of the kind that was asked for.
void readTidy(const QStringList &lines)
{
    QString listing = u"---------------\n"_s;
    QStringList expected;
    for (const QString &line : lines) {
        const qsizetype dot = extensionIn(line);
        if (dot < 0)
            continue;
        listing += line + u'\n';
        if (line.startsWith(u'/') && dot + extension.size() - 1 <= longestFileName)
            expected.append(line.first(dot + extension.size()).sliced(1));
    }
    require(cfgFiles(listing) == expected, "each line that begins with a slash gives its name");
}

} // namespace

void fuzz(const QByteArray &input)
{
    const QString listing = fromAnsi(input);
    readAny(listing);
    readTidy(listing.split(u'\n'));
}
