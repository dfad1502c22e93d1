// SPDX-License-Identifier: MIT
#pragma once

#include "player_check.h"
#include "player_remark.h"

#include <QAbstractTableModel>
#include <QList>

#include <array>
#include <functional>

/// The columns of the player list. The last message is never filled in.
namespace PlayerColumn {
enum Column { Edge, Num, Guid, Player, Ping, Score, Address, Qport, Rate, LastMessage, Count };
}

/// The texts of one player's cells, by column.
using PlayerCells = std::array<QString, PlayerColumn::Count>;

/// The player list: what was on the server at the last populate.
class PlayerTable final : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// What looks like a number comes first, by its value, then the rest without regard to case; descending, each of
    /// the two from its greatest. Equal cells keep their order.
    void sort(int column, Qt::SortOrder order) override;

    [[nodiscard]] const QString &text(int row, PlayerColumn::Column column) const;
    /// The first row with this slot number; -1 when there is none.
    [[nodiscard]] int rowOf(const QString &num) const;
    /// The first row with this slot number, guid and name, colour codes in the name aside; -1 when there is none.
    [[nodiscard]] int rowOf(const QString &num, const QString &guid, const QString &name) const;
    void clear();
    /// Somebody under the name that the server gave; the cell may show it without colours.
    void add(const PlayerCells &cells, const QString &name = {}, RowDamage damage = RowDamage::None);
    void remove(int row);

    /// Makes the picture that marks a row which may be damaged or is remarked on; it is asked for when one is painted.
    using Mark = std::function<QVariant(RowDamage, PlayerRemark)>;
    void setMark(const Mark &mark_) { mark = mark_; }
    /// Marks the rows of these players, and no others.
    void setRemarks(const QList<RemarkedPlayer> &remarked);
    /// Whom the row is about, for looking for him in another list.
    [[nodiscard]] WantedPlayer wanted(int row) const;

private:
    struct Listed {
        PlayerCells cells;
        QString name;
        RowDamage damage = RowDamage::None;
        PlayerRemark remark = PlayerRemark::None;
    };
    [[nodiscard]] QVariant edge(const Listed &player, int role) const;

    QList<Listed> players;
    Mark mark;
};
