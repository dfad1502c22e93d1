// SPDX-License-Identifier: MIT
#include "player_table.h"

#include "colour_codes.h"

#include "base/numbers.h"

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace {

QString damageText(RowDamage damage)
{
    return damage == RowDamage::LostCharacter ? u"a character may be missing"_s : u"came in two datagrams"_s;
}

struct Column {
    QStringView header; ///< its length, with the blanks, is the width of the column
    QVariant alignment;
};

// Nobody reads further in a cell, and painting a name of a million characters takes seconds.
constexpr qsizetype longestShown = 1000;

const QVariant left = QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter);
const QVariant right = QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);

const std::array<Column, PlayerColumn::Count> columns{{
    {u"  ", {}},
    {u"Num", {}},
    {u"Guid          ", right},
    {u"Player                                ", left},
    {u"Ping     ", right},
    {u"Score     ", right},
    {u"Address                 ", right},
    {u"Qport    ", right},
    {u" Rate   ", right},
    {u" Last Message", {}},
}};

const Column &columnAt(int section)
{
    return columns.at(static_cast<std::size_t>(section));
}

/// What a cell is sorted by.
struct SortKey {
    explicit SortKey(const QString &cell)
        : text(cell), isNumber(isNumeric(cell)), number(isNumber ? cell.trimmed().toDouble() : 0)
    {
    }

    QString text;
    bool isNumber;
    double number;
};

bool isBefore(const SortKey &one, const SortKey &other)
{
    if (one.isNumber != other.isNumber)
        return one.isNumber;
    if (one.isNumber)
        return one.number < other.number;
    return one.text.compare(other.text, Qt::CaseInsensitive) < 0;
}

bool isBeforeDescending(const SortKey &one, const SortKey &other)
{
    if (one.isNumber != other.isNumber)
        return one.isNumber;     // numbers come first in this order too
    return isBefore(other, one); // NOLINT(readability-suspicious-call-argument)
}

} // namespace

int PlayerTable::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(players.size());
}

int PlayerTable::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : PlayerColumn::Count;
}

QVariant PlayerTable::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    if (role == Qt::DisplayRole)
        return text(index.row(), static_cast<PlayerColumn::Column>(index.column())).left(longestShown);
    const RowDamage damage = players.at(index.row()).damage;
    if (index.column() == PlayerColumn::Edge && damage != RowDamage::None) {
        if (role == Qt::DecorationRole)
            return mark ? mark(damage) : QVariant();
        if (role == Qt::AccessibleDescriptionRole || role == Qt::ToolTipRole)
            return damageText(damage);
    }
    return role == Qt::TextAlignmentRole ? columnAt(index.column()).alignment : QVariant();
}

QVariant PlayerTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= PlayerColumn::Count)
        return {};
    if (role == Qt::DisplayRole)
        return columnAt(section).header.toString();
    return role == Qt::TextAlignmentRole ? columnAt(section).alignment : QVariant();
}

void PlayerTable::sort(int column, Qt::SortOrder order)
{
    QList<SortKey> keys;
    keys.reserve(players.size());
    for (const Listed &player : std::as_const(players))
        keys.append(SortKey(player.cells.at(static_cast<std::size_t>(column))));
    QList<int> from(players.size()); // the old row of each new one
    std::iota(from.begin(), from.end(), 0);
    const auto before = order == Qt::AscendingOrder ? isBefore : isBeforeDescending;
    std::ranges::stable_sort(from, [&](int one, int other) { return before(keys.at(one), keys.at(other)); });

    emit layoutAboutToBeChanged({}, VerticalSortHint);
    QList<Listed> sorted;
    sorted.reserve(players.size());
    for (int row : std::as_const(from))
        sorted.append(players.at(row));
    players.swap(sorted);
    QList<int> to(from.size()); // the new row of each old one
    for (int row = 0; row < from.size(); ++row)
        to[from.at(row)] = row;
    QModelIndexList moved;
    const QModelIndexList kept = persistentIndexList();
    for (const QModelIndex &old : kept)
        moved.append(index(to.at(old.row()), old.column()));
    changePersistentIndexList(kept, moved);
    emit layoutChanged({}, VerticalSortHint);
}

const QString &PlayerTable::text(int row, PlayerColumn::Column column) const
{
    return players.at(row).cells.at(static_cast<std::size_t>(column));
}

int PlayerTable::rowOf(const QString &num) const
{
    for (int row = 0; row < players.size(); ++row) {
        if (text(row, PlayerColumn::Num) == num)
            return row;
    }
    return -1;
}

int PlayerTable::rowOf(const QString &num, const QString &guid, const QString &name) const
{
    for (int row = 0; row < players.size(); ++row) {
        if (text(row, PlayerColumn::Num) == num && text(row, PlayerColumn::Guid) == guid &&
            stripcolour(text(row, PlayerColumn::Player)) == stripcolour(name))
            return row;
    }
    return -1;
}

void PlayerTable::clear()
{
    beginResetModel();
    players.clear();
    endResetModel();
}

void PlayerTable::add(const PlayerCells &cells, const QString &name, RowDamage damage)
{
    beginInsertRows({}, rowCount(), rowCount());
    players.append({cells, name, damage});
    endInsertRows();
}

void PlayerTable::remove(int row)
{
    beginRemoveRows({}, row, row);
    players.removeAt(row);
    endRemoveRows();
}

WantedPlayer PlayerTable::wanted(int row) const
{
    const Listed &player = players.at(row);
    return {text(row, PlayerColumn::Num),     text(row, PlayerColumn::Guid),   player.name,
            text(row, PlayerColumn::Address), text(row, PlayerColumn::Player), player.damage != RowDamage::None,
            text(row, PlayerColumn::Num)};
}
