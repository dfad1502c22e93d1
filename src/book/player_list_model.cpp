// SPDX-License-Identifier: MIT
#include "player_list_model.h"

#include "shown_time.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

QStringList PlayerListModel::headers()
{
    return {u"Player"_s, u"GUID"_s, u"Last seen"_s, u"First seen"_s, u"Times"_s, u"Names"_s, u"Flag"_s};
}

QStringList PlayerListModel::cells(const BookPlayer &player)
{
    return {player.name,
            player.guid,
            shownTime(player.lastSeen),
            shownTime(player.firstSeen),
            QString::number(player.visits),
            QString::number(player.names),
            player.isFlagged ? u"flagged"_s : QString()};
}

int PlayerListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(players.size());
}

int PlayerListModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : BookColumn::Count;
}

QVariant PlayerListModel::data(const QModelIndex &index, int role) const
{
    if (role == Qt::DisplayRole)
        return cells(players.at(index.row())).at(index.column()).left(longestShown);
    const bool isNumber = index.column() == BookColumn::Guid || index.column() == BookColumn::Times ||
                          index.column() == BookColumn::Names;
    if (role == Qt::TextAlignmentRole && isNumber)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

QVariant PlayerListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::ToolTipRole && section == BookColumn::Times)
        return u"Visits; a new one begins when he was away for half an hour"_s;
    if (role == Qt::ToolTipRole && section == BookColumn::Names)
        return u"How many names he has had"_s;
    return role == Qt::DisplayRole ? QVariant(headers().value(section)) : QVariant();
}

bool PlayerListModel::canFetchMore(const QModelIndex &parent) const
{
    return !parent.isValid() && hasMore;
}

void PlayerListModel::fetchMore(const QModelIndex &)
{
    hasMore = false; // until the answer says otherwise
    emit morewanted();
}

void PlayerListModel::setPlayers(const QList<BookPlayer> &players_, bool hasMore_)
{
    hasMore = hasMore_;
    const bool isSameOrder = std::ranges::equal(players, players_, {}, &BookPlayer::player, &BookPlayer::player);
    if (isSameOrder) { // what is chosen stays chosen
        players = players_;
        if (!players.isEmpty())
            emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
        return;
    }
    beginResetModel();
    players = players_;
    endResetModel();
}

void PlayerListModel::addPlayers(const QList<BookPlayer> &added, bool hasMore_)
{
    hasMore = hasMore_;
    QList<BookPlayer> news; // somebody may have moved down meanwhile
    std::ranges::copy_if(added, std::back_inserter(news),
                         [this](const BookPlayer &each) { return rowOf(each.player) < 0; });
    if (news.isEmpty())
        return;
    beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(news.size()) - 1);
    players += news;
    endInsertRows();
}

int PlayerListModel::rowOf(qint64 player) const
{
    const auto found = std::ranges::find(players, player, &BookPlayer::player);
    return found == players.end() ? -1 : static_cast<int>(found - players.begin());
}
