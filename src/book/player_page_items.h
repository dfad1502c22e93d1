// SPDX-License-Identifier: MIT
#pragma once

#include "book_records.h"
#include "time_plot.h"

#include <QListWidget>
#include <QSignalBlocker>

#include <algorithm>
#include <utility>

// What the page of a player has in its lists and in its plot.

/// Something in a list that has a number in the book. What is edited is its text alone, without the time before it.
class NumberedItem final : public QListWidgetItem {
public:
    NumberedItem(const QString &shown, QString edited, qint64 number_)
        : QListWidgetItem(shown), text(std::move(edited)), number(number_)
    {
    }

    [[nodiscard]] QVariant data(int role) const override;
    void setData(int role, const QVariant &value) override;

    QString text;
    const qint64 number;
};

/// The one that is chosen in a list of such; nullptr when none is.
[[nodiscard]] const NumberedItem *current(const QListWidget &list);
/// Chooses the one of that number, or none.
void selectNumber(QListWidget &list, qint64 number);

[[nodiscard]] QListWidgetItem *newAlias(const BookAlias &alias);
[[nodiscard]] NumberedItem *newNote(const BookNote &note);
[[nodiscard]] NumberedItem *newAction(const BookAction &action);

/// Fills the list with what `item` makes of each, without losing the place in it.
template <typename Each, typename Item>
void refill(QListWidget &list, const QList<Each> &all, const Item &item)
{
    const QSignalBlocker quiet(list);
    const int row = list.currentRow();
    list.clear();
    for (const Each &each : all)
        list.addItem(item(each));
    list.setCurrentRow(std::min(row, list.count() - 1));
}

/// His ping over time.
[[nodiscard]] PlotData pingPlot(const QList<BookSighting> &sightings);
