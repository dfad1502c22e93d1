// SPDX-License-Identifier: MIT
#include "book_settings.h"

using namespace Qt::StringLiterals;

namespace {

const QString section = u"book"_s;
constexpr int buffer = 8; // characters of a value

} // namespace

BookSettings BookSettings::read(const IniText &ini)
{
    BookSettings settings;
    const QString keep = ini.value(section, u"keep"_s, buffer);
    settings.isKept = keep.compare(u"true"_s, Qt::CaseInsensitive) == 0 || keep == u"1";
    bool isNumber = false;
    const int days = ini.value(section, u"days"_s, buffer).toInt(&isNumber);
    if (isNumber && days >= fewestDays && days <= mostDays) // any other number would throw away what was to be kept
        settings.days = days;
    return settings;
}

QList<IniEntry> BookSettings::entries() const
{
    return {{section, u"keep"_s, isKept ? u"true"_s : u"false"_s}, {section, u"days"_s, QString::number(days)}};
}
