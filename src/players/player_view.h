// SPDX-License-Identifier: MIT
#pragma once

#include <QTableView>

/// The grid `msfplayers`: its columns have room for what the game sends, and the names take what room there is beyond.
class PlayerView final : public QTableView {
    Q_OBJECT

public:
    using QTableView::QTableView;

    void setModel(QAbstractItemModel *model) override;
    /// The row that is selected; -1 when none is.
    [[nodiscard]] int selectedRow() const;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] int usualWidth(int column) const;

    QSize viewportRoom; ///< for the columns, when the names last got what was left
};
