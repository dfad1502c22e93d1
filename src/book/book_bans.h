// SPDX-License-Identifier: MIT
#pragma once

#include "book_records.h"

#include <QSet>

class BookDatabase;

/// The actions and the ban book in the database; what changes it is to be called within a transaction.

qint64 addAction(BookDatabase &database, const BookAction &action);

/// Removes actions of which nothing but slot and name is known, under these names (search keys).
void removeNamelessActions(BookDatabase &database, const QSet<QString> &names);

/// The newest first.
[[nodiscard]] QList<BookBan> allBans(BookDatabase &database);

/// How many were not there yet.
int importBans(BookDatabase &database, const QList<BookBan> &bans, qint64 time);
