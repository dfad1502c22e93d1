// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

class QAbstractItemView;
class QContextMenuEvent;
class QMenu;
class QModelIndex;
class QPoint;
class QWidget;

/// An empty menu over `owner`, which goes when it is closed.
[[nodiscard]] QMenu *newContextMenu(QWidget *owner);

/// Adds an item to `menu`; `act` happens when it is chosen.
void addMenuItem(QMenu *menu, const QString &name, const QString &caption, bool enabled,
                 const std::function<void()> &act);

/// Where the menu of `view` comes up: at the mouse, or for the menu key on `row` if that can be seen.
[[nodiscard]] QPoint menuPlace(const QContextMenuEvent &event, const QAbstractItemView &view, const QModelIndex &row);

/// Puts `text` on the clipboard.
void copyText(const QString &text);
