// SPDX-License-Identifier: MIT
#include "player_view.h"

#include "player_table.h"

#include <QHeaderView>
#include <QScrollBar>

#include <algorithm>

void PlayerView::setModel(QAbstractItemModel *model)
{
    QTableView::setModel(model);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    for (int column = 0; column < PlayerColumn::Count; ++column)
        setColumnWidth(column, usualWidth(column));
}

int PlayerView::selectedRow() const
{
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

void PlayerView::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    // It comes also with a scroll bar, and then the widths that the person has chosen are to stay.
    if (maximumViewportSize() == viewportRoom)
        return;
    viewportRoom = maximumViewportSize();
    const int others = horizontalHeader()->length() - columnWidth(PlayerColumn::Player);
    const int spare = viewportRoom.width() - others - verticalScrollBar()->sizeHint().width();
    setColumnWidth(PlayerColumn::Player, std::max(spare, usualWidth(PlayerColumn::Player)));
}

// Room for as many characters as the header text has, blanks included.
int PlayerView::usualWidth(int column) const
{
    const QFontMetrics metrics = fontMetrics();
    const int margins = 2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1);
    const QString header = model()->headerData(column, Qt::Horizontal).toString();
    const int room = static_cast<int>(header.size()) * metrics.horizontalAdvance(u'x');
    const int text = std::max(room, metrics.horizontalAdvance(header)) + margins;
    return std::max(text, horizontalHeader()->sectionSizeHint(column)); // some styles keep wide margins in headers
}
