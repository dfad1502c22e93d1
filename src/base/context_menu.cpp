// SPDX-License-Identifier: MIT
#include "context_menu.h"

#include <QAbstractItemView>
#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QMenu>

QMenu *newContextMenu(QWidget *owner)
{
    auto *menu = new QMenu(owner);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    return menu;
}

void addMenuItem(QMenu *menu, const QString &name, const QString &caption, bool enabled,
                 const std::function<void()> &act)
{
    QAction *item = menu->addAction(caption, menu->parentWidget(), act);
    item->setObjectName(name);
    item->setEnabled(enabled);
}

QPoint menuPlace(const QContextMenuEvent &event, const QAbstractItemView &view, const QModelIndex &row)
{
    if (event.reason() != QContextMenuEvent::Keyboard)
        return event.globalPos();
    const QRect seen = view.viewport()->rect() & view.visualRect(row);
    return view.viewport()->mapToGlobal(seen.isEmpty() ? view.viewport()->rect().topLeft() : seen.center());
}

void copyText(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
}
