// SPDX-License-Identifier: MIT
#include "csv_record.h"

using namespace Qt::StringLiterals;

QString csvRecord(const QStringList &items)
{
    QStringList quoted;
    for (QString item : items)
        quoted.append(u'"' + item.replace(u'"', u"\"\""_s) + u'"');
    return quoted.join(u',') + u"\r\n"_s;
}
