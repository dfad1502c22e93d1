// SPDX-License-Identifier: MIT
#pragma once

#include "book_records.h"

#include <QStringList>

#include <climits>
#include <functional>
#include <memory>
#include <optional>

/// The player book in its file. To be opened and used in one thread, and once in a process. Everything throws
/// `BookFault`; a change is in the book whole or not at all.
class BookStore {
public:
    /// Asked again and again while another program has locked the book, with the milliseconds that it has been waited
    /// for: whether to go on.
    using Patience = std::function<bool(qint64 waited)>;
    [[nodiscard]] static bool fiveSeconds(qint64 waited) { return waited < 5000; }

    BookStore() = default;
    virtual ~BookStore() = default;
    Q_DISABLE_COPY_MOVE(BookStore)

    /// Which of the books of this run it is: the numbers of players, notes and actions that one gives hold in it alone.
    [[nodiscard]] int edition() const { return ofRun; }
    void setEdition(int edition) { ofRun = edition; }

    /// The name under which a broken file was put aside; empty when there was none.
    [[nodiscard]] virtual QString putAside() const = 0;
    /// False when its file has been taken away meanwhile, or another put in its place.
    [[nodiscard]] virtual bool isThere() const = 0;
    /// Closes such a book, and takes along what is left of its log. Nothing else can be done with it any more.
    virtual void takeLeave() = 0;
    /// Moves into the file what has gathered in its log, if that is much. No change does that by itself.
    virtual void moveLog() = 0;
    /// How often something was written to it.
    [[nodiscard]] virtual quint64 commits() const = 0;

    /// Takes one populate; what is known of each of its players, in its order. GUID 0: by clean name and address.
    virtual QList<KnownPlayer> feed(const BookFeed &feed) = 0;

    /// Those one of whose names (colour codes aside), GUID or one of whose addresses holds `text`, without regard to
    /// case; all when it is empty. The one seen last first; at most `most` from `from` on.
    [[nodiscard]] virtual QList<BookPlayer> search(const QString &text, int from, int most) const = 0;
    /// Who that is: by GUID, or, when that is 0, by clean name and address.
    [[nodiscard]] virtual std::optional<qint64> find(const QString &guid, const QString &name,
                                                     const QString &address) const = 0;
    /// At most so many names and so many addresses of his, those seen last.
    [[nodiscard]] virtual std::optional<BookPage> page(qint64 player, int mostAliases) const = 0;
    [[nodiscard]] std::optional<BookPage> page(qint64 player) const { return page(player, INT_MAX); }

    virtual void setFlag(qint64 player, bool on) = 0;
    virtual qint64 addNote(qint64 player, const QString &text, qint64 time) = 0;
    virtual void changeNote(qint64 note, const QString &text, qint64 time) = 0;
    virtual void deleteNote(qint64 note) = 0;
    /// Removes everything about him, his bans and what was done to a damaged row of one of his names too.
    virtual void remove(qint64 player) = 0;
    /// Removes what is left of such players in the file's free pages and its log: the file is written anew. What could
    /// not be done is done with the next change, or when the book is opened.
    virtual void cleanUp() = 0;

    /// Notes an action; it is on the player's page when he is in the book. Returns its number.
    virtual qint64 addAction(const BookAction &action) = 0;
    /// The ledger's word on it. One that was refused is not in force; one that was not answered may be.
    virtual void setVerdict(qint64 action, const QString &verdict) = 0;
    virtual void setReason(qint64 action, const QString &reason) = 0;

    [[nodiscard]] virtual QStringList servers() const = 0;
    /// Oldest first; `since` and later.
    [[nodiscard]] virtual QList<BookCount> counts(const QString &server, qint64 since) const = 0;

    /// The newest first.
    [[nodiscard]] virtual QList<BookBan> bans() const = 0;
    /// Those in force on that server with that name in its ban file, without regard to case: what the server lifts
    /// together. Imported ones of no known server are among them; temporary ones are not in a server's ban file.
    [[nodiscard]] virtual QList<BookBan> liftedWith(const QString &server, const QString &name) const = 0;
    virtual void lift(const QList<qint64> &actions) = 0;
    /// Takes those that are not in the ban book yet (same GUID and clean name, in force or imported) and have a GUID;
    /// how many that were. A server, if they have one, is kept.
    virtual int importBans(const QList<BookBan> &bans, qint64 time) = 0;

    [[nodiscard]] virtual BookSize size() const = 0;

private:
    int ofRun = 0;
};

/// Opens the book, makes it when it is not there, and brings one of an older version up to date. A file that is broken
/// or is none of ours is put aside as "molvark-players.broken-N.db", byte for byte, and a new one begun; one that is
/// locked, read-only or of a newer version is left alone, and that is thrown. With `doubt` one of any size is looked
/// through for damage. Removes sightings and counts from before `oldest`.
[[nodiscard]] std::unique_ptr<BookStore> openBookStore(const QString &path, qint64 oldest,
                                                       const BookStore::Patience &patience, bool doubt);
