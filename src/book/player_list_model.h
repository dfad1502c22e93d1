// SPDX-License-Identifier: MIT
#pragma once

#include "book_records.h"

#include <QAbstractTableModel>

/// The columns of the book's list of players.
namespace BookColumn {
enum Column { Player, Guid, LastSeen, FirstSeen, Times, Names, Flag, Count };
}

/// The players that a search in the book has found, as far as they have been asked for.
class PlayerListModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] bool canFetchMore(const QModelIndex &parent) const override;
    void fetchMore(const QModelIndex &parent) override;

    [[nodiscard]] static QStringList headers();
    static constexpr qsizetype longestShown = 1000; ///< characters of a cell; painting a very long name takes seconds
    /// The texts of one row.
    [[nodiscard]] static QStringList cells(const BookPlayer &player);

    /// `hasMore`: there are more than these.
    void setPlayers(const QList<BookPlayer> &players_, bool hasMore_);
    void addPlayers(const QList<BookPlayer> &added, bool hasMore_);
    [[nodiscard]] const BookPlayer &player(int row) const { return players.at(row); }
    /// -1 when he is not among them.
    [[nodiscard]] int rowOf(qint64 player) const;

signals:
    /// The end of what is there has been scrolled to.
    void morewanted();

private:
    QList<BookPlayer> players;
    bool hasMore = false;
};
