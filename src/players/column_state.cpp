// SPDX-License-Identifier: MIT
#include "column_state.h"

#include "player_table.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

constexpr int narrowest = 8; // pixels: can still be seen and taken hold of
constexpr int widest = 4000;

/// Digits only: neither a sign nor blanks.
std::optional<int> readNumber(QStringView text, int least, int most)
{
    for (const QChar digit : text) {
        if (digit < u'0' || digit > u'9')
            return {};
    }
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    return isNumber && number >= least && number <= most ? std::optional(number) : std::nullopt;
}

std::optional<ShownColumn> readColumn(QStringView text)
{
    const qsizetype colon = text.indexOf(u':');
    const std::optional<int> column = readNumber(colon < 0 ? text : text.first(colon), 0, PlayerColumn::Count - 1);
    if (!column)
        return {};
    if (colon < 0)
        return *column == PlayerColumn::Player ? std::optional(ShownColumn{*column, 0}) : std::nullopt;
    const std::optional<int> width = readNumber(text.sliced(colon + 1), narrowest, widest);
    if (!width)
        return {};
    return ShownColumn{*column, *column == PlayerColumn::Player ? 0 : *width};
}

} // namespace

QString columnStateText(const QList<ShownColumn> &columns)
{
    QStringList parts;
    for (const ShownColumn &shown : columns) {
        const QString number = QString::number(shown.column);
        parts.append(shown.width > 0 ? number + u':' + QString::number(shown.width) : number);
    }
    return parts.join(u',');
}

std::optional<QList<ShownColumn>> readColumnState(const QString &text)
{
    QList<ShownColumn> columns;
    QList<bool> isThere(PlayerColumn::Count, false);
    for (const QStringView part : QStringView(text).split(u',')) {
        const std::optional<ShownColumn> shown = readColumn(part);
        if (!shown || isThere.at(shown->column))
            return {};
        isThere[shown->column] = true;
        columns.append(*shown);
    }
    return columns.size() == PlayerColumn::Count ? std::optional(columns) : std::nullopt;
}
