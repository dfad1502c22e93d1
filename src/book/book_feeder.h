// SPDX-License-Identifier: MIT
#pragma once

#include "book_records.h"

#include <QVariantList>

class BookDatabase;

/// Who somebody is for the book: his GUID, or, when that is 0, his clean name and his address.
class BookIdentity final {
public:
    BookIdentity(const QString &guid, const QString &name, const QString &address);

    /// GUID, name and address; the last two are empty when he has a GUID of his own.
    [[nodiscard]] QVariantList values() const { return {number, nobodyName, nobodyAddress}; }
    [[nodiscard]] const QString &guid() const { return number; }
    /// The three in one text.
    [[nodiscard]] QString key() const { return number + u'\x1F' + nobodyName + u'\x1F' + nobodyAddress; }

private:
    QString number;
    QString nobodyName;
    QString nobodyAddress;
};

/// The same of a player in the book.
[[nodiscard]] QVariantList identityOf(BookDatabase &database, qint64 player);

/// Writes a populate into the book, within a transaction; what is known of each player, in their order.
QList<KnownPlayer> feedBook(BookDatabase &database, const BookFeed &feed);

/// The number of a server, which is noted if it is not known.
qint64 numberOfServer(BookDatabase &database, const QString &address);

void removeTimesBefore(BookDatabase &database, qint64 oldest);
