// SPDX-License-Identifier: MIT
#include "players/player_table.h"
#include "players/status_table.h"

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {

/// A full server, as its table arrives: 64 rows of usual length.
QString fullServer()
{
    QString reply = u"map: mp_villa\n"
                    "num score ping guid name lastmsg address qport rate\n"
                    "--- ----- ---- ------ --------------- ------- --------------------- ----- -----\n"_s;
    for (int slot = 0; slot < 64; ++slot)
        reply += u" %1 %2 %3 %4 ^1Big ^7Bob %1^7 50 192.168.100.%1:28960 %5 25000\n"_s.arg(slot)
                     .arg(slot * 7 % 40 - 5)
                     .arg(25 + slot * 11 % 115)
                     .arg(63'281'996 + slot)
                     .arg(65'535 - slot);
    return reply + u'\n';
}

/// A thousand rows, short enough for the last to end before position 32,767.
QString thousandRows()
{
    QString reply = u"map: mp_villa\nnum\n---\n"_s;
    for (int slot = 0; slot < 1000; ++slot)
        reply += u" %1 %2 50 1 n%1 0 bot 1 5000\n"_s.arg(slot).arg(slot * 7 % 100);
    return reply + u'\n';
}

QList<StatusRow> rowsIn(const QString &reply)
{
    StatusTable table;
    QList<StatusRow> rows;
    if (table.skipHeading(reply)) {
        while (!table.ended(reply))
            rows.append(table.next(reply));
    }
    return rows;
}

void readTable(benchmark::State &state, const QString &reply)
{
    qsizetype rows = 0;
    for ([[maybe_unused]] auto round : state) {
        const QList<StatusRow> read = rowsIn(reply);
        rows += read.size();
        benchmark::DoNotOptimize(read.constData());
    }
    state.SetItemsProcessed(rows);
    state.counters["rows"] = benchmark::Counter(static_cast<double>(rows), benchmark::Counter::kAvgIterations);
}

/// From the order of the slots to that of a column, each time anew.
void sortTable(benchmark::State &state, const QString &reply, PlayerColumn column, Qt::SortOrder order)
{
    const QList<StatusRow> rows = rowsIn(reply);
    for ([[maybe_unused]] auto round : state) {
        state.PauseTiming();
        PlayerTable table;
        for (const StatusRow &row : rows)
            table.add({QString(), row.num, row.guid, row.name, row.ping, row.score, row.address, row.qport, row.rate});
        state.ResumeTiming();
        table.sort(column, order);
    }
    state.SetItemsProcessed(state.iterations() * rows.size());
    state.counters["rows"] = static_cast<double>(rows.size());
}

BENCHMARK_CAPTURE(readTable, 64 rows, fullServer());
BENCHMARK_CAPTURE(readTable, 1000 rows, thousandRows());
BENCHMARK_CAPTURE(sortTable, 64 rows by score, fullServer(), Score, Qt::DescendingOrder);
BENCHMARK_CAPTURE(sortTable, 64 rows by name, fullServer(), Player, Qt::AscendingOrder);
BENCHMARK_CAPTURE(sortTable, 1000 rows by score, thousandRows(), Score, Qt::DescendingOrder);
BENCHMARK_CAPTURE(sortTable, 1000 rows by name, thousandRows(), Player, Qt::AscendingOrder);

} // namespace
