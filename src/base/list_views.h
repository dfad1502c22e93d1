// SPDX-License-Identifier: MIT
#pragma once

#include <QList>

class QAbstractItemModel;
class QAbstractItemView;
class QTableView;

/// Shows `model` in `table`: each column gets room for so many letters, and that with 0 what is left.
void showModel(QTableView &table, QAbstractItemModel &model, const QList<int> &letters);
/// True while the person types into one of the cells.
[[nodiscard]] bool isBeingEdited(const QAbstractItemView &view);
