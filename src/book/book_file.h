// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayList>
#include <QString>

/// What can be known of the book's file without opening it as a database, which could write to it.
enum class BookFileKind {
    Missing,
    Empty,
    Book,
    NewerBook,
    Foreign ///< of another program, or what is left of a broken one
};

inline constexpr quint32 bookApplication = 0x4D6F6C76; ///< "Molv", by which a database is known as a player book

/// Where the file is: the end of a link. Throws when that leads nowhere.
[[nodiscard]] QString resolvedBookPath(const QString &path);

/// Throws when there is something else than a file, or one that may not be read and written.
[[nodiscard]] BookFileKind inspectBookFile(const QString &path, int version);

/// Makes an empty file that nobody but its owner can read, not even at first.
void makeBookFile(const QString &path);

/// Takes from all others what rights they have on the file and what belongs to it.
void protectBookFile(const QString &path);

/// Renames the file and what belongs to it to "...broken-N.db"; returns that name. Throws when another program uses it.
QString putBookAside(const QString &path);

/// Of its log; 0 when there is none.
[[nodiscard]] qint64 logSize(const QString &path);

/// Whether a change was broken off while the book had no log yet. Only who may write can take that back.
[[nodiscard]] bool hasBookJournal(const QString &path);

/// By which the files that belong to the book are known again, each of them.
[[nodiscard]] QByteArrayList companionIdentities(const QString &path);

/// Removes those that are left of a book whose file has been taken away while it was open, and no others: another book
/// that has been put in its place may have come with its own.
void removeCompanions(const QString &path, const QByteArrayList &identities);
