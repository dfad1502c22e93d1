// SPDX-License-Identifier: MIT
#pragma once

#include <QListWidget>

/// A list with a menu about one of its rows. The right mouse button asks for the menu and does nothing else: what a
/// click does is for the left one.
class ListBox final : public QListWidget {
    Q_OBJECT

public:
    using QListWidget::QListWidget;

signals:
    /// The person wants the menu about `row`, which is invalid beside the rows, at `place` of the screen.
    void menuwanted(const QModelIndex &row, QPoint place);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
};
