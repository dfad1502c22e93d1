// SPDX-License-Identifier: MIT
#include "list_views.h"

#include "placeholder.h"

#include <QApplication>
#include <QHeaderView>
#include <QTableView>

#include <algorithm>

void showModel(QTableView &table, QAbstractItemModel &model, const QList<int> &letters)
{
    table.setModel(&model);
    showPlaceholder(&table);
    table.verticalHeader()->setDefaultSectionSize(table.fontMetrics().height() + 4);
    QHeaderView &header = *table.horizontalHeader();
    for (int column = 0; column < letters.size(); ++column) {
        if (letters.at(column) == 0)
            header.setSectionResizeMode(column, QHeaderView::Stretch);
        const int room = letters.at(column) * table.fontMetrics().horizontalAdvance(u'n');
        header.resizeSection(column, std::max(room, header.sectionSizeHint(column)));
    }
}

bool isBeingEdited(const QAbstractItemView &view)
{
    const QWidget *focus = QApplication::focusWidget();
    return focus && view.viewport()->isAncestorOf(focus);
}
