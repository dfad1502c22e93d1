// SPDX-License-Identifier: MIT
#include "guid.h"

#include <algorithm>

using namespace Qt::StringLiterals;

bool isGuid(QStringView text)
{
    const QStringView digits = text.startsWith(u'-') ? text.sliced(1) : text;
    return !digits.isEmpty() && std::ranges::all_of(digits, [](QChar each) { return each >= u'0' && each <= u'9'; });
}

bool isNobodysGuid(const QString &guid)
{
    return std::ranges::all_of(guid.trimmed(), [](QChar each) { return each == u'0' || each == u'-'; });
}

QString plainGuid(const QString &guid)
{
    return isNobodysGuid(guid) ? u"0"_s : guid.trimmed();
}
