// SPDX-License-Identifier: MIT
#include "csv_record.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool needsQuotes(const QString &item)
{
    return std::ranges::any_of(
        item, [](QChar each) { return each == u'"' || each == u',' || each == u'\r' || each == u'\n'; });
}

} // namespace

QString csvRecord(const QStringList &items, CsvQuotes quotes)
{
    QStringList written;
    for (QString item : items) {
        const bool isQuoted = quotes == CsvQuotes::All || needsQuotes(item);
        written.append(isQuoted ? u'"' + item.replace(u'"', u"\"\""_s) + u'"' : item);
    }
    return written.join(u',') + u"\r\n"_s;
}
