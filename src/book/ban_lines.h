// SPDX-License-Identifier: MIT
#pragma once

#include "book_records.h"

#include <QByteArray>
#include <QLatin1StringView>
#include <QPair>

/// The rules of the ban book.

/// What the book knows of a ban besides what it shows.
struct BanFacts {
    bool isTemporary = false;
    bool isImported = false;
    bool isLifted = false;
};

/// What stands for the ledger's word when a server has answered that it bans no GUID 0.
inline constexpr QLatin1StringView guidZeroVerdict("answered: GUID is 0");
/// The ledger's word on a command that finds nobody of that number or name. The book counts an action as refused for it
/// when it was sent once alone: of one that was sent again an earlier copy may have been carried out.
inline constexpr QLatin1StringView nobodyVerdict("no such player");

/// A ban is refused when the server said so, and for GUID 0, which none can ban. It is in force until that is known,
/// and also when nobody answered: then the server may have it, and whoever looks for a ban to lift must find it.
[[nodiscard]] BookBan::State stateOfBan(const BookBan &ban, const BanFacts &facts);

/// Whether a server has it in its ban file, as far as the book knows: it is in force, or was read from such a file.
[[nodiscard]] bool isInBanFile(const BookBan &ban);

/// Its name in a server's ban file, by which it is lifted. One that was read from such a file is clean already: what
/// looks like a colour code there is left of a name that had one within another.
[[nodiscard]] QString nameInBanFile(const BookBan &ban);

/// Whether it is the same one: names of hosts are written large or small.
[[nodiscard]] bool isSameServer(const QString &one, const QString &other);

/// By which two bans are the same line of a ban file: GUID and clean name, without regard to case.
[[nodiscard]] QPair<QString, QString> keyOfBan(const BookBan &ban);

/// Those of `bans` that "unbanUser NAME" lifts on a server: the ones with that name in its ban file, without regard to
/// case. Of an imported one without a server it is not known where it was made; it is among them.
[[nodiscard]] QList<BookBan> bansLiftedWith(const QList<BookBan> &bans, const QString &server, const QString &name);

/// What was read from a server's ban file.
struct BanLines {
    QList<BookBan> bans; ///< GUID and name alone
    int unreadable = 0;  ///< lines that are none
};

/// Reads lines "GUID name" in the game's character set: a number that is not 0, one blank, and a name, in which quotes
/// and colour codes stay. A line without these, with control characters or with more than 1,000 bytes is unreadable; an
/// empty one is left out, and so is a byte order mark.
[[nodiscard]] BanLines readBanLines(const QByteArray &file);

/// The lines of those that are in a ban file, each once, with clean names.
[[nodiscard]] QByteArray banLines(const QList<BookBan> &bans);
