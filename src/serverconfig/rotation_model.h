// SPDX-License-Identifier: MIT
#pragma once

#include "rotation_problems.h"

#include <QAbstractTableModel>

namespace RotationColumn {
enum Column { Line, GameType, Map, Count };
}

/// A rotation that is being put together, line by line. After each change the lines are what the game would read in the
/// text that they make; each can be undone. One that would make them longer than a rotation can be is refused.
class RotationModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    [[nodiscard]] const QList<RotationRow> &rows() const { return lines; }
    [[nodiscard]] QString text() const { return rotationText(lines); }

    void setText(const QString &rotation);
    /// Puts a map in front of that line. Without a game type it is played in that of the maps before it.
    void add(int before, const QString &gametype, const QString &map);
    /// Each of the lines, which are in order, once more, all behind the last of them.
    void duplicate(const QList<int> &chosen);
    void remove(const QList<int> &chosen);
    /// Puts the lines, which are in order, in front of the line `before`, as they are counted now.
    void move(const QList<int> &chosen, int before);
    [[nodiscard]] bool canUndo() const { return !states.isEmpty(); }
    void undo();
    /// Marks the lines with problems.
    void mark(const QList<RotationProblem> &problems);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;
    [[nodiscard]] Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
    [[nodiscard]] QStringList mimeTypes() const override;
    [[nodiscard]] QMimeData *mimeData(const QModelIndexList &indexes) const override;
    bool dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                      const QModelIndex &parent) override;

signals:
    /// The lines would make a text that is too long for a rotation, and are as they were.
    void refused();
    /// The lines are others now, those that the change was about stand at `first` and after it.
    void edited(int first, int count);

private:
    [[nodiscard]] QVariant shown(const RotationRow &row, int line, int column) const;
    void replace(const QList<RotationRow> &rows, int first, int count);
    void resize(int size);
    void show(const QList<RotationRow> &rows, int first, int count);

    QList<RotationRow> lines;
    QList<QList<RotationRow>> states; ///< as they were before each change, the last at the end
    QHash<int, QStringList> reasons;  ///< by line
};
