// SPDX-License-Identifier: MIT
#pragma once

#include "line_breaks.h"

#include <QListWidget>

#include <optional>

/// A list of messages, each wrapped to the width of the list. It stays quick with very many of them: only the new ones
/// are measured, and only those that are seen are laid out. Messages are only added, or all taken away.
class MessageList final : public QListWidget {
    Q_OBJECT

public:
    explicit MessageList(QWidget *parent = nullptr);

    void append(const QString &line);
    /// What the menu offers besides copying.
    void setMenuActions(const QList<QAction *> &actions) { menuActions = actions; }

    [[nodiscard]] QRect visualRect(const QModelIndex &index) const override;
    [[nodiscard]] QModelIndex indexAt(const QPoint &place) const override;
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;
    void reset() override;
    void doItemsLayout() override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void updateGeometries() override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void setSelection(const QRect &area, QItemSelectionModel::SelectionFlags command) override;
    [[nodiscard]] QRegion visualRegionForSelection(const QItemSelection &selection) const override;

private:
    void measure() const;
    void wrapAnew();
    [[nodiscard]] int lineHeight() const;
    [[nodiscard]] int textWidth() const;
    [[nodiscard]] int topOf(int row) const;
    [[nodiscard]] int rowAt(int height) const;
    void paintRow(QPainter &painter, QStyleOptionViewItem &option, const QModelIndex &index, const QRect &area) const;
    void paintText(QPainter &painter, const QRect &row, const QString &text, const QRect &area) const;
    void copySelected() const;
    void copyAll() const;

    QList<QAction *> menuActions;
    // What is known of the rows from the first on; the others have not been measured.
    mutable QList<int> bottoms;
    mutable std::optional<LineBreaks> breaks;
};
