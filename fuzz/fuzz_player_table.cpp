// SPDX-License-Identifier: MIT
#include "base/numbers.h"
#include "base/wire_text.h"
#include "fuzz.h"
#include "players/player_table.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

constexpr PlayerColumn::Column arrival = PlayerColumn::LastMessage; ///< where each row's place before sorting stands

void examine(const QString &first, const QString &second, Qt::SortOrder order, bool inTurn)
{
    const bool areNumbers = isNumeric(first);
    if (areNumbers != isNumeric(second)) {
        require(areNumbers, "numbers come before other texts");
        return;
    }
    const double values = areNumbers ? toNumber(first) - toNumber(second) : 0;
    const bool same =
        areNumbers ? toNumber(first) == toNumber(second) : first.compare(second, Qt::CaseInsensitive) == 0;
    const bool less = areNumbers ? values < 0 : first.compare(second, Qt::CaseInsensitive) < 0;
    require(same ? inTurn : less == (order == Qt::AscendingOrder), "rows are in order, equal ones in turn");
}

} // namespace

// The first byte says which column is sorted which way; every line is a row, with a field to a tab.
void fuzz(const QByteArray &input)
{
    if (input.isEmpty())
        return;
    const int choice = static_cast<uchar>(input.front());
    const auto column = static_cast<PlayerColumn::Column>(choice / 2 % arrival);
    const Qt::SortOrder order = choice % 2 == 0 ? Qt::AscendingOrder : Qt::DescendingOrder;

    PlayerTable table;
    for (const QString &line : fromAnsi(input.sliced(1)).split(u'\n')) {
        const QStringList fields = line.split(u'\t');
        PlayerCells cells;
        for (std::size_t cell = 0; cell < arrival; ++cell)
            cells[cell] = fields.value(static_cast<qsizetype>(cell) % fields.size());
        cells[arrival] = QString::number(table.rowCount());
        table.add(cells);
    }

    table.sort(column, order);
    QList<bool> seen(table.rowCount());
    for (int row = 0; row < table.rowCount(); ++row) {
        const int place = table.text(row, arrival).toInt();
        require(!std::exchange(seen[place], true), "no row is lost or doubled");
        if (row > 0)
            examine(table.text(row - 1, column), table.text(row, column), order,
                    table.text(row - 1, arrival).toInt() < place);
    }
    const QString num = table.text(0, PlayerColumn::Num);
    require(table.rowOf(num) == 0, "a slot number finds its first row");
    for (int left = table.rowCount() - 1; left >= 0; --left) {
        table.remove(left / 2);
        require(table.rowCount() == left, "one row is removed");
    }
}
