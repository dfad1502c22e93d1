// SPDX-License-Identifier: MIT
#include "player_view.h"

#include "base/context_menu.h"
#include "column_state.h"
#include "player_table.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// `cell` without what would begin another cell or row where it is pasted.
QString oneCell(QString cell)
{
    for (const QChar separator : {u'\t', u'\r', u'\n'})
        cell.replace(separator, u' ');
    return cell;
}

} // namespace

void PlayerView::showTable(PlayerTable &players)
{
    table = &players;
    added.setSingleShot(true);
    connect(&added, &QTimer::timeout, this, [this] { filterRows(0, table->rowCount() - 1); });
    setModel(table);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    horizontalHeader()->setSectionsMovable(true);
    resetColumns();
}

int PlayerView::selectedRow() const
{
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

QString PlayerView::columnState() const
{
    QList<ShownColumn> columns;
    for (int place = 0; place < PlayerColumn::Count; ++place) {
        const int column = horizontalHeader()->logicalIndex(place);
        columns.append({column, column == PlayerColumn::Player ? 0 : columnWidth(column)});
    }
    return columnStateText(columns);
}

bool PlayerView::setColumnState(const QString &state)
{
    const std::optional<QList<ShownColumn>> columns = readColumnState(state);
    if (!columns)
        return false;
    for (int place = 0; place < PlayerColumn::Count; ++place) {
        const ShownColumn &shown = columns->at(place);
        horizontalHeader()->moveSection(horizontalHeader()->visualIndex(shown.column), place);
        if (shown.column != PlayerColumn::Player)
            setColumnWidth(shown.column, shown.width);
    }
    fitNames();
    return true;
}

void PlayerView::resetColumns()
{
    for (int column = 0; column < PlayerColumn::Count; ++column) {
        horizontalHeader()->moveSection(horizontalHeader()->visualIndex(column), column);
        setColumnWidth(column, usualWidth(column));
    }
    fitNames();
}

void PlayerView::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    // It comes also with a scroll bar, and then the width that the person has chosen for the names is to stay.
    if (maximumViewportSize() == viewportRoom)
        return;
    fitNames();
}

void PlayerView::fitNames()
{
    viewportRoom = maximumViewportSize();
    const int others = horizontalHeader()->length() - columnWidth(PlayerColumn::Player);
    const int spare = viewportRoom.width() - others - verticalScrollBar()->sizeHint().width();
    // In a small window a long name ends in dots, rather than that a column is out of sight.
    setColumnWidth(PlayerColumn::Player, std::max(spare, usualWidth(PlayerColumn::Player) * 2 / 3));
}

// Room for as many characters as the header text has, blanks included.
int PlayerView::usualWidth(int column) const
{
    const QFontMetrics metrics = fontMetrics();
    const int margins = 2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1);
    const QString header = table->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    const int room = static_cast<int>(header.size()) * metrics.horizontalAdvance(u'x');
    const bool canBeSortedOn = column >= PlayerColumn::Num && column <= PlayerColumn::Rate;
    const int arrow = canBeSortedOn ? style()->pixelMetric(QStyle::PM_HeaderMarkSize, nullptr, this) : 0;
    const int named = metrics.horizontalAdvance(header.trimmed()) + arrow;
    const int text = std::max({room, metrics.horizontalAdvance(header), named}) + margins;
    return std::max(text, horizontalHeader()->sectionSizeHint(column)); // some styles keep wide margins in headers
}

void PlayerView::setFilter(const QString &text)
{
    filter = text;
    filterRows(0, table->rowCount() - 1);
}

void PlayerView::filterRows(int start, int end)
{
    const auto holds = [this](int row, PlayerColumn::Column column) {
        return table->text(row, column).contains(filter, Qt::CaseInsensitive);
    };
    for (int row = start; row <= end; ++row)
        setRowHidden(row, !holds(row, PlayerColumn::Player) && !holds(row, PlayerColumn::Guid) &&
                              !holds(row, PlayerColumn::Address));
    leaveHiddenRow();
}

// Neither is it acted on, nor does a key go on from it.
void PlayerView::leaveHiddenRow()
{
    const int row = selectedRow();
    const bool isCurrentHidden = currentIndex().isValid() && isRowHidden(currentIndex().row());
    if (isCurrentHidden || (row >= 0 && isRowHidden(row)))
        selectionModel()->clear();
}

void PlayerView::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QTableView::selectionChanged(selected, deselected);
    leaveHiddenRow();
}

void PlayerView::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTableView::currentChanged(current, previous);
    leaveHiddenRow();
}

void PlayerView::rowsInserted(const QModelIndex &parent, int start, int end)
{
    QTableView::rowsInserted(parent, start, end);
    if (!filter.isEmpty() && !added.isActive())
        added.start();
}

void PlayerView::filterAdded()
{
    if (!added.isActive())
        return;
    added.stop();
    filterRows(0, table->rowCount() - 1);
}

void PlayerView::scrollBackTo(int value)
{
    executeDelayedItemsLayout(); // or there is no room to scroll in yet
    updateGeometries();
    verticalScrollBar()->setValue(value);
}

void PlayerView::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy))
        copyRow();
    else
        QTableView::keyPressEvent(event);
}

void PlayerView::contextMenuEvent(QContextMenuEvent *event)
{
    emit menuwanted(menuPlace(*event, *this, currentIndex()));
}

void PlayerView::copyRow() const
{
    if (const int row = selectedRow(); row >= 0)
        copyText(rowText(row));
}

void PlayerView::copyList() const
{
    QStringList cells;
    for (const int column : copiedColumns())
        cells.append(table->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString().trimmed());
    QStringList lines{cells.join(u'\t')};
    for (int row = 0; row < table->rowCount(); ++row) {
        if (!isRowHidden(row))
            lines.append(rowText(row));
    }
    copyText(lines.join(u'\n'));
}

// As they are seen from left to right, without the two that never hold anything.
QList<int> PlayerView::copiedColumns() const
{
    QList<int> columns;
    for (int place = 0; place < PlayerColumn::Count; ++place) {
        const int column = horizontalHeader()->logicalIndex(place);
        if (column != PlayerColumn::Edge && column != PlayerColumn::LastMessage)
            columns.append(column);
    }
    return columns;
}

QString PlayerView::rowText(int row) const
{
    QStringList cells;
    for (const int column : copiedColumns())
        cells.append(oneCell(table->text(row, static_cast<PlayerColumn::Column>(column))));
    return cells.join(u'\t');
}
