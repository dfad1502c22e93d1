// SPDX-License-Identifier: MIT
#pragma once

#include "book_records.h"

#include <QByteArrayList>
#include <QElapsedTimer>
#include <QStringList>

#include <functional>
#include <limits>
#include <memory>
#include <optional>

class BookDatabase;

/// The player book in its file, an SQLite database. To be made and used in one thread, and once in a process.
/// Everything throws `BookFault`; a change is in the book whole or not at all.
class BookStore final {
public:
    /// Asked again and again while another program has locked the book, with the milliseconds that it has been waited
    /// for: whether to go on.
    using Patience = std::function<bool(qint64 waited)>;
    [[nodiscard]] static bool fiveSeconds(qint64 waited) { return waited < 5000; }

    /// Opens the book, makes it when it is not there, and brings one of an older version up to date. A file that is
    /// broken or is none of ours is put aside as "molvark-players.broken-N.db", byte for byte, and a new one begun; one
    /// that is locked, read-only or of a newer version is left alone, and that is thrown. Removes sightings and counts
    /// from before `oldest`.
    explicit BookStore(const QString &path, qint64 oldest = 0, Patience patience = fiveSeconds, bool doubt = false);
    ~BookStore();
    Q_DISABLE_COPY_MOVE(BookStore)

    /// The name under which a broken file was put aside; empty when there was none.
    [[nodiscard]] QString putAside() const { return aside; }
    /// False when its file has been taken away meanwhile, or another put in its place.
    [[nodiscard]] bool isThere() const;
    /// Closes such a book, and takes along what is left of its log. Nothing else can be done with it any more.
    void takeLeave();
    /// How often something was written to it.
    [[nodiscard]] quint64 commits() const;

    /// Takes one populate; what is known of each of its players, in its order. GUID 0: by clean name and address.
    QList<KnownPlayer> feed(const BookFeed &feed);

    /// Those one of whose names (colour codes aside), GUID or one of whose addresses holds `text`, without regard to
    /// case; all when it is empty. The one seen last first; at most `most` from `from` on.
    [[nodiscard]] QList<BookPlayer> search(const QString &text, int from, int most) const;
    /// Who that is: by GUID, or, when that is 0, by clean name and address.
    [[nodiscard]] std::optional<qint64> find(const QString &guid, const QString &name, const QString &address) const;
    /// At most so many names and so many addresses of his, those seen last.
    [[nodiscard]] std::optional<BookPage> page(qint64 player, int mostAliases = std::numeric_limits<int>::max()) const;

    void setFlag(qint64 player, bool on);
    qint64 addNote(qint64 player, const QString &text, qint64 time);
    void changeNote(qint64 note, const QString &text, qint64 time);
    void deleteNote(qint64 note);
    /// Removes everything about him, his bans and what was done to a damaged row of one of his names too.
    void remove(qint64 player);
    /// Removes what is left of such players in the file's free pages and its log: the file is written anew. What could
    /// not be done is done with the next change, or when the book is opened.
    void cleanUp();
    /// Both.
    void forget(qint64 player);

    /// Notes an action; it is on the player's page when he is in the book. Returns its number.
    qint64 addAction(const BookAction &action);
    /// The ledger's word on it. One that was refused is not in force; one that was not answered may be.
    void setVerdict(qint64 action, const QString &verdict);
    void setReason(qint64 action, const QString &reason);

    [[nodiscard]] QStringList servers() const;
    /// Oldest first; `since` and later.
    [[nodiscard]] QList<BookCount> counts(const QString &server, qint64 since) const;

    /// The newest first.
    [[nodiscard]] QList<BookBan> bans() const;
    /// Those in force on that server whose clean name is that of `name`, without regard to case: what the server lifts
    /// together. Imported ones of no known server are among them; temporary ones are not in a server's ban file.
    [[nodiscard]] QList<BookBan> liftedWith(const QString &server, const QString &name) const;
    void lift(const QString &server, const QString &name);
    void lift(const QList<qint64> &actions);
    /// Takes those that are not in the ban book yet (same GUID and clean name, in force or imported) and have a GUID;
    /// how many that were. A server, if they have one, is kept.
    int importBans(const QList<BookBan> &bans, qint64 time);

    [[nodiscard]] BookSize size() const;
    void removeBefore(qint64 oldest);

private:
    void open(qint64 oldest);
    void openAsItIs(qint64 oldest);
    template <typename Work>
    void patiently(const Work &work) const;
    template <typename Work>
    void change(const Work &work);
    template <typename Work>
    void inTurn(bool isPatient, const Work &work) const;
    void cleanUp(bool isPatient);
    void tryCleanUp();

    QString path;
    bool isDoubtful;
    Patience patience;
    QString aside;
    std::unique_ptr<BookDatabase> database;
    QByteArray fileId;          ///< of its file
    QByteArrayList companions;  ///< identities of what belongs to it
    bool isUnclean = false;     ///< something of who was forgotten may be left in the file or its log
    bool isWrittenAnew = false; ///< ... but in the log alone
    QElapsedTimer sinceTried;   ///< to write it anew
};
