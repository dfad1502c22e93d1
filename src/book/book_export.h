// SPDX-License-Identifier: MIT
#pragma once

#include "book_records.h"

#include <QByteArray>
#include <QString>

/// Everything about one player as JSON, in UTF-8. Times are in UTC, as ISO 8601 has them. A sighting without a ping has
/// no such key, and who has a GUID of his own is kept by that alone.
[[nodiscard]] QByteArray pageJson(const BookPage &page);

/// A time of the book as files have it: 2026-03-05T21:07:00Z.
[[nodiscard]] QString bookTime(qint64 time);

/// As the list of actions and the files have it: "kick", "ban", "temporary ban".
[[nodiscard]] QString actionWord(BookAction::Kind kind);

/// As the ban book has it: "in force", "temporary", "refused", "lifted", "imported".
[[nodiscard]] QString banStateWord(BookBan::State state);
