// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

#include <optional>

/// A column of the player list and its width in pixels; 0 for that of the names, which follows the room.
struct ShownColumn {
    int column = 0;
    int width = 0;

    bool operator==(const ShownColumn &) const = default;
};

/// The columns from left to right as a text that can be kept.
[[nodiscard]] QString columnStateText(const QList<ShownColumn> &columns);

/// The columns of such a text; nothing when it does not name each once, or a width is missing or can't be.
[[nodiscard]] std::optional<QList<ShownColumn>> readColumnState(const QString &text);
