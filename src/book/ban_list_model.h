// SPDX-License-Identifier: MIT
#pragma once

#include "book_records.h"

#include <QAbstractTableModel>

/// The columns of the ban book.
namespace BanColumn {
enum Column { Time, Server, Player, Guid, Reason, State, Count };
}

/// All bans in the book. The reason can be edited in its cell.
class BanListModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    void setBans(const QList<BookBan> &bans_);
    [[nodiscard]] const QList<BookBan> &bans() const { return all; }
    /// -1 when it is not among them.
    [[nodiscard]] int rowOf(qint64 action) const;

signals:
    void reasonedited(qint64 action, const QString &reason);

private:
    QList<BookBan> all;
};
