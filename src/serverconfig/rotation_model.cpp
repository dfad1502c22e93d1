// SPDX-License-Identifier: MIT
#include "rotation_model.h"

#include <QCoreApplication>
#include <QMimeData>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostStates = 100;
const QString linesFormat = u"application/x-molvark-rotation-lines"_s;

/// Lines that another run of the program drags over here are not ours: their numbers are about another rotation.
QByteArray ownMark()
{
    return QByteArray::number(QCoreApplication::applicationPid());
}

/// Those of `all` that `chosen`, in order, names.
QList<RotationRow> those(const QList<RotationRow> &all, const QList<int> &chosen)
{
    QList<RotationRow> rows;
    for (const int line : chosen)
        rows.append(all.at(line));
    return rows;
}

} // namespace

void RotationModel::setText(const QString &rotation)
{
    if (lines.isEmpty() && !canUndo())
        show(rotationRows(rotation), 0, 0); // Nothing was there to come back to.
    else
        replace(rotationRows(rotation), 0, 0);
}

void RotationModel::add(int before, const QString &gametype, const QString &map)
{
    QList<RotationRow> rows = lines;
    rows.insert(before, {.gametype = gametype, .map = map, .namesGametype = true, .odd = {}});
    replace(rows, before, 1);
}

void RotationModel::duplicate(const QList<int> &chosen)
{
    if (chosen.isEmpty())
        return;
    const int behind = chosen.last() + 1;
    const QList<RotationRow> copies = those(lines, chosen);
    replace(lines.first(behind) + copies + lines.sliced(behind), behind, static_cast<int>(copies.size()));
}

void RotationModel::remove(const QList<int> &chosen)
{
    if (chosen.isEmpty())
        return;
    QList<RotationRow> rows;
    for (int line = 0; line < lines.size(); ++line) {
        if (!chosen.contains(line))
            rows.append(lines.at(line));
    }
    const int next = std::min(chosen.first(), static_cast<int>(rows.size()) - 1);
    replace(rows, std::max(next, 0), rows.isEmpty() ? 0 : 1);
}

void RotationModel::move(const QList<int> &chosen, int before)
{
    QList<RotationRow> front;
    QList<RotationRow> back;
    for (int line = 0; line < lines.size(); ++line) {
        if (!chosen.contains(line))
            (line < before ? front : back).append(lines.at(line));
    }
    const QList<RotationRow> moved = those(lines, chosen);
    replace(front + moved + back, static_cast<int>(front.size()), static_cast<int>(moved.size()));
}

void RotationModel::undo()
{
    if (canUndo())
        show(states.takeLast(), 0, 0);
}

// The lines are read from what they make, because words can become others when they stand elsewhere: what is seen is
// what the server would play.
void RotationModel::replace(const QList<RotationRow> &rows, int first, int count)
{
    const QString text = rotationText(rows);
    if (text.size() > longestRotation) {
        emit refused();
        return;
    }
    const QList<RotationRow> read = rotationRows(text);
    if (read != lines) {
        if (states.size() == mostStates)
            states.removeFirst();
        states.append(lines);
    }
    show(read, first, count);
}

void RotationModel::show(const QList<RotationRow> &rows, int first, int count)
{
    reasons.clear();
    resize(static_cast<int>(rows.size()));
    lines = rows;
    if (!lines.isEmpty())
        emit dataChanged(index(0, 0), index(rowCount() - 1, RotationColumn::Count - 1));
    const int size = static_cast<int>(lines.size());
    emit edited(std::min(first, size), std::clamp(size - first, 0, count));
}

// A line that is being changed in its place stays one for the view, and the list does not jump.
void RotationModel::resize(int size)
{
    if (size < rowCount()) {
        beginRemoveRows({}, size, rowCount() - 1);
        lines.resize(size);
        endRemoveRows();
    } else if (size > rowCount()) {
        beginInsertRows({}, rowCount(), size - 1);
        lines.resize(size);
        endInsertRows();
    }
}

void RotationModel::mark(const QList<RotationProblem> &problems)
{
    reasons.clear();
    for (const RotationProblem &problem : problems)
        reasons[problem.row].append(problem.reason);
    if (!lines.isEmpty())
        emit dataChanged(index(0, 0), index(rowCount() - 1, RotationColumn::Count - 1));
}

int RotationModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(lines.size());
}

int RotationModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : RotationColumn::Count;
}

QVariant RotationModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const RotationRow &row = lines.at(index.row());
    if (role == Qt::EditRole && index.column() == RotationColumn::GameType)
        return row.gametype;
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return shown(row, index.row(), index.column());
    if (role == Qt::ToolTipRole && reasons.contains(index.row()))
        return reasons.value(index.row()).join(u'\n');
    return {};
}

QVariant RotationModel::shown(const RotationRow &row, int line, int column) const
{
    switch (column) {
    case RotationColumn::Line:
        return (reasons.contains(line) ? u"! "_s : QString()) + QString::number(line + 1);
    case RotationColumn::GameType:
        return row.gametype.isEmpty() && !row.isOdd() ? u"(as it is)"_s : row.gametype;
    default:
        return row.isOdd() ? row.odd : row.map;
    }
}

bool RotationModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || role != Qt::EditRole || value == data(index, role))
        return false;
    QList<RotationRow> rows = lines;
    RotationRow &row = rows[index.row()];
    const QString words = value.toString().simplified();
    if (words.isEmpty() && index.column() == RotationColumn::Map)
        return false;
    if (index.column() == RotationColumn::GameType) {
        row.gametype = words;
        row.namesGametype = true;
    } else {
        (row.isOdd() ? row.odd : row.map) = words;
    }
    replace(rows, index.row(), 1);
    return true;
}

QVariant RotationModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static constexpr std::array<QLatin1StringView, RotationColumn::Count> headers{"Line"_L1, "Game type"_L1, "Map"_L1};
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= RotationColumn::Count)
        return {};
    return QString(headers.at(static_cast<std::size_t>(section)));
}

Qt::ItemFlags RotationModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::ItemIsDropEnabled; // between the lines, never onto one
    const Qt::ItemFlags all =
        Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren;
    const bool isOddGameType = index.column() == RotationColumn::GameType && lines.at(index.row()).isOdd();
    return index.column() == RotationColumn::Line || isOddGameType ? all : all | Qt::ItemIsEditable;
}

QStringList RotationModel::mimeTypes() const
{
    return {linesFormat};
}

QMimeData *RotationModel::mimeData(const QModelIndexList &indexes) const
{
    QByteArrayList numbers{ownMark()};
    for (const QModelIndex &index : indexes) {
        if (index.column() == RotationColumn::Line)
            numbers.append(QByteArray::number(index.row()));
    }
    auto *data = new QMimeData;
    data->setData(linesFormat, numbers.join(' '));
    return data;
}

// The lines have moved then: the view finds nothing to take away, because the model takes no rows away by itself.
bool RotationModel::dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int, const QModelIndex &parent)
{
    if (action != Qt::MoveAction || parent.isValid() || !data->hasFormat(linesFormat))
        return false;
    QByteArrayList numbers = data->data(linesFormat).split(' ');
    if (numbers.takeFirst() != ownMark())
        return false;
    QList<int> chosen;
    for (const QByteArray &number : numbers) {
        if (const int line = number.toInt(); line >= 0 && line < lines.size())
            chosen.append(line);
    }
    std::ranges::sort(chosen);
    move(chosen, row < 0 ? rowCount() : row);
    return true;
}
