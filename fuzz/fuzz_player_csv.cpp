// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "fuzz.h"
#include "players/player_csv.h"

#include <QLocale>

#include <algorithm>
#include <cstring>

using namespace Qt::StringLiterals;

namespace {

void writeLine(const QStringList &items)
{
    const QString line = csvLine(items);
    require(line.startsWith(u'"') && line.endsWith(u"\"\r\n"_s), "a line is quoted and ended");
    const QString between = line.sliced(1, line.size() - 4);
    if (std::ranges::none_of(items, [](const QString &item) { return item.contains(u'"'); }))
        require(between.split(u"\",\""_s) == items, "items without quotes can be told apart again");
    for (const QString &item : items)
        require(between.contains(item), "an item stays as it is");
}

void writeTime(quint64 seed)
{
    constexpr quint64 endOf9999 = 253'402'300'800; // seconds
    const QDateTime time = QDateTime::fromSecsSinceEpoch(static_cast<qint64>(seed % endOf9999), Qt::UTC);
    const QDateTime read = QLocale::c().toDateTime(csvTime(time), u"dd-MMM-yyyy hh:mm"_s);
    require(read.date() == time.date(), "a day reads back");
    require(read.time() == QTime(time.time().hour(), time.time().minute()), "a minute reads back");
}

} // namespace

void fuzz(const QByteArray &input)
{
    writeLine(fromAnsi(input).split(u'\n'));
    quint64 seed = 0;
    std::memcpy(&seed, input.constData(), std::min<std::size_t>(sizeof seed, static_cast<std::size_t>(input.size())));
    writeTime(seed);
}
