// SPDX-License-Identifier: MIT
#pragma once

#include "book_records.h"

#include <optional>

class BookDatabase;

/// The players in the database: as `BookStore` says of its functions.

[[nodiscard]] QList<BookPlayer> findPlayers(BookDatabase &database, const QString &text, int from, int most);

[[nodiscard]] std::optional<qint64> numberOfPlayer(BookDatabase &database, const QString &guid, const QString &name,
                                                   const QString &address);

[[nodiscard]] std::optional<BookPage> pageOfPlayer(BookDatabase &database, qint64 player, int mostAliases);

/// To be called within a transaction.
void removePlayer(BookDatabase &database, qint64 player);
