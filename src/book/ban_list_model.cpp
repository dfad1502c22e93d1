// SPDX-License-Identifier: MIT
#include "ban_list_model.h"

#include "book_export.h"
#include "player_list_model.h"
#include "shown_time.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString cell(const BookBan &ban, int column)
{
    switch (column) {
    case BanColumn::Time:
        return shownTime(ban.time);
    case BanColumn::Server:
        return ban.server;
    case BanColumn::Player:
        return ban.name;
    case BanColumn::Guid:
        return ban.guid;
    case BanColumn::Reason:
        return ban.reason;
    default:
        return banStateWord(ban.state);
    }
}

} // namespace

int BanListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(all.size());
}

int BanListModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : BanColumn::Count;
}

QVariant BanListModel::data(const QModelIndex &index, int role) const
{
    if (role == Qt::EditRole)
        return cell(all.at(index.row()), index.column());
    if (role == Qt::DisplayRole)
        return cell(all.at(index.row()), index.column()).left(PlayerListModel::longestShown);
    if (role == Qt::TextAlignmentRole && index.column() == BanColumn::Guid)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

bool BanListModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    BookBan &ban = all[index.row()];
    const QString reason = value.toString().simplified();
    if (role != Qt::EditRole || index.column() != BanColumn::Reason || reason == ban.reason)
        return false;
    ban.reason = reason;
    emit dataChanged(index, index);
    emit reasonedited(ban.action, reason);
    return true;
}

Qt::ItemFlags BanListModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags usual = QAbstractTableModel::flags(index);
    return index.column() == BanColumn::Reason ? usual | Qt::ItemIsEditable : usual;
}

QVariant BanListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return QStringList{u"Time"_s, u"Server"_s, u"Player"_s, u"GUID"_s, u"Reason"_s, u"State"_s}.value(section);
}

void BanListModel::setBans(const QList<BookBan> &bans_)
{
    if (std::ranges::equal(all, bans_, {}, &BookBan::action, &BookBan::action)) { // what is chosen stays chosen
        all = bans_;
        if (!all.isEmpty())
            emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
        return;
    }
    beginResetModel();
    all = bans_;
    endResetModel();
}

int BanListModel::rowOf(qint64 action) const
{
    const auto found = std::ranges::find(all, action, &BookBan::action);
    return found == all.end() ? -1 : static_cast<int>(found - all.begin());
}
