// SPDX-License-Identifier: MIT
#include "list_box.h"

#include "context_menu.h"

#include <QContextMenuEvent>
#include <QMouseEvent>

void ListBox::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::RightButton)
        QListWidget::mousePressEvent(event);
}

void ListBox::contextMenuEvent(QContextMenuEvent *event)
{
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex row = byKey ? currentIndex() : indexAt(event->pos());
    emit menuwanted(row, menuPlace(*event, *this, row));
}
