// SPDX-License-Identifier: MIT
#pragma once

#include <QTableView>
#include <QTimer>

class PlayerTable;

/// The grid `msfplayers`: its columns have room for what the game sends, and the names take what room there is beyond.
/// Rows that do not hold the filter's text are only hidden; a hidden row is never selected.
class PlayerView final : public QTableView {
    Q_OBJECT

public:
    using QTableView::QTableView;

    void showTable(PlayerTable &players);
    /// The row that is selected; -1 when none is.
    [[nodiscard]] int selectedRow() const;

    /// The columns from left to right, each as its number and, but for the names, a colon and its width: "1:40,3,0:20".
    [[nodiscard]] QString columnState() const;
    /// Puts the columns as that text says. False, and all stays as it was, when it is no such text.
    bool setColumnState(const QString &state);
    /// Puts the columns as they are at first.
    void resetColumns();

    /// Shows only the players whose name, guid or address holds `text`, without regard to case.
    void setFilter(const QString &text);
    /// The filter sees rows that have been added when the event loop gets to it, or now. One by one they would take the
    /// square of the time.
    void filterAdded();

    /// Scrolls to where the vertical scroll bar stood before the list was filled anew.
    void scrollBackTo(int value);

    void copyRow() const;
    /// Copies the rows that are seen, below the headers.
    void copyList() const;

signals:
    void menuwanted(QPoint place);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void rowsInserted(const QModelIndex &parent, int start, int end) override;

private:
    [[nodiscard]] int usualWidth(int column) const;
    void fitNames();
    void filterRows(int start, int end);
    void leaveHiddenRow();
    [[nodiscard]] QList<int> copiedColumns() const;
    [[nodiscard]] QString rowText(int row) const;

    PlayerTable *table = nullptr;
    QString filter;
    QTimer added;       ///< rows that the filter has not seen
    QSize viewportRoom; ///< for the columns, when the names last got what was left
};
