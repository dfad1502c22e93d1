// SPDX-License-Identifier: MIT
#include "sql_book_store.h"

#include "ban_lines.h"
#include "base/file_lock.h"
#include "book_bans.h"
#include "book_database.h"
#include "book_feeder.h"
#include "book_file.h"
#include "book_players.h"
#include "book_schema.h"

#include <QFileInfo>
#include <QThread>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// A book of this size is read through in about a second; damage in a larger one is found when it is met.
constexpr qint64 largestChecked = 64LL * 1024 * 1024;

/// Throws when the file is damaged. Nothing is written to it meanwhile, not even what a log still holds. When there is
/// doubt, indexes are compared with their tables, too: one that is wrong is met by whoever writes.
void checkWhole(const QString &path, bool isDoubtful)
{
    BookDatabase database(path, BookDatabase::Access::Read);
    auto row = database.rows(isDoubtful ? u"PRAGMA integrity_check(1)"_s : u"PRAGMA quick_check(1)"_s);
    if (!row.next() || row.text(0) != "ok"_L1)
        throw bookFault(BookFault::Broken, path);
}

} // namespace

SqlBookStore::SqlBookStore(const QString &path_, qint64 oldest, Patience patience_, bool doubt)
    : path(resolvedBookPath(path_)), isDoubtful(doubt), patience(std::move(patience_))
{
    patiently([this, oldest] { open(oldest); });
}

SqlBookStore::~SqlBookStore() = default;

/// Tries again while the book is locked.
template <typename Work>
void SqlBookStore::patiently(const Work &work) const
{
    QElapsedTimer time;
    for (time.start();;) {
        try {
            return work();
        } catch (const BookFault &fault) {
            if (fault.kind() != BookFault::Locked || !patience(time.elapsed()))
                throw;
        }
        QThread::msleep(10); // not every refusal has waited already
    }
}

template <typename Work>
void SqlBookStore::change(const Work &work)
{
    patiently([&] { database->transaction(work); });
    tryCleanUp();
}

void SqlBookStore::open(qint64 oldest)
{
    try {
        openAsItIs(oldest);
    } catch (const BookFault &fault) {
        database.reset();
        if (fault.kind() != BookFault::Broken)
            throw;
        aside = putBookAside(path);
        openAsItIs(oldest);
    }
}

void SqlBookStore::openAsItIs(qint64 oldest)
{
    database.reset(); // of an earlier attempt: looking at the file gives up the locks on it
    const BookFileKind kind = inspectBookFile(path, bookVersion());
    if (kind == BookFileKind::NewerBook)
        throw bookFault(BookFault::Newer, path);
    const bool hasLog = logSize(path) > 0;
    const bool isNew = kind == BookFileKind::Missing || kind == BookFileKind::Empty;
    if (kind == BookFileKind::Foreign || (isNew && hasLog))
        throw bookFault(BookFault::Broken, path);
    if (kind == BookFileKind::Missing)
        makeBookFile(path);
    protectBookFile(path);
    if (kind == BookFileKind::Book && !hasBookJournal(path) && (isDoubtful || QFileInfo(path).size() <= largestChecked))
        checkWhole(path, isDoubtful);

    fileId = fileIdentity(path);
    database = std::make_unique<BookDatabase>(path, BookDatabase::Access::ReadAndWrite);
    for (const auto *pragma :
         {u"PRAGMA foreign_keys = OFF", u"PRAGMA secure_delete = ON", u"PRAGMA synchronous = NORMAL",
          u"PRAGMA cache_size = -16000",     // KiB: a populate touches pages all over a large book
          u"PRAGMA wal_autocheckpoint = 0"}) // see moveLog
        database->run(QString::fromUtf16(pragma));
    updateBook(*database, path);
    database->run(u"PRAGMA foreign_keys = ON"_s);
    database->run(u"PRAGMA journal_mode = WAL"_s);
    if (hasLog) // what was forgotten before the program was killed is not to stay in it
        database->run(u"PRAGMA wal_checkpoint(TRUNCATE)"_s);
    database->transaction([this, oldest] { removeTimesBefore(*database, oldest); });
    beginLog();
    companions = companionIdentities(path);
    isUnclean = database->number(u"SELECT count(*) FROM upkeep"_s) > 0;
    isWrittenAnew = false;
    sinceTried.invalidate();
    unmovedLog = 0;
    tryCleanUp();
}

bool SqlBookStore::isThere() const
{
    return fileIdentity(path) == fileId;
}

void SqlBookStore::takeLeave()
{
    database.reset();
    removeCompanions(path, companions);
}

// Done by whoever commits, as SQLite would do it, it would hold up a populate. While another program reads, the log
// cannot be moved, and that is not tried again until it has grown by as much.
void SqlBookStore::moveLog()
{
    constexpr qint64 muchLog = 4LL * 1024 * 1024;
    const qint64 size = logSize(path);
    if (size < unmovedLog)
        unmovedLog = 0; // somebody else has moved it
    if (size < unmovedLog + muchLog)
        return;
    const bool isMoved = database->number(u"PRAGMA wal_checkpoint(TRUNCATE)"_s) == 0;
    unmovedLog = isMoved ? 0 : size;
    if (isMoved)
        beginLog();
}

// The head of an empty log goes to the disk with the first change, which is not to be a populate. One that is no change
// does for that; where it cannot be made the populate will say why.
void SqlBookStore::beginLog()
{
    try {
        database->transaction([this] {
            const qint64 version = database->number(u"PRAGMA user_version"_s); // a later program may have changed it
            database->run(u"PRAGMA user_version = %1"_s.arg(version));
        });
    } catch (const BookFault &) {
    }
}

quint64 SqlBookStore::commits() const
{
    return database->commits();
}

QList<KnownPlayer> SqlBookStore::feed(const BookFeed &feed)
{
    QList<KnownPlayer> known;
    change([&] { known = feedBook(*database, feed); });
    return known;
}

QList<BookPlayer> SqlBookStore::search(const QString &text, int from, int most) const
{
    return findPlayers(*database, text, from, most);
}

std::optional<qint64> SqlBookStore::find(const QString &guid, const QString &name, const QString &address) const
{
    return numberOfPlayer(*database, guid, name, address);
}

std::optional<BookPage> SqlBookStore::page(qint64 player, int mostAliases) const
{
    return pageOfPlayer(*database, player, mostAliases);
}

void SqlBookStore::setFlag(qint64 player, bool on)
{
    change([&] { database->run(u"UPDATE players SET flagged = ? WHERE player = ?"_s, {on ? 1 : 0, player}); });
}

qint64 SqlBookStore::addNote(qint64 player, const QString &text, qint64 time)
{
    qint64 note = 0;
    change([&] {
        const qint64 known = database->number(u"SELECT count(*) FROM players WHERE player = ?"_s, {player});
        if (known == 0)
            return; // he was forgotten meanwhile
        database->run(u"INSERT INTO notes (player, time, text) VALUES (?, ?, ?)"_s, {player, time, text});
        note = database->inserted();
    });
    return note;
}

void SqlBookStore::changeNote(qint64 note, const QString &text, qint64 time)
{
    change([&] { database->run(u"UPDATE notes SET text = ?, time = ? WHERE note = ?"_s, {text, time, note}); });
}

void SqlBookStore::deleteNote(qint64 note)
{
    change([&] { database->run(u"DELETE FROM notes WHERE note = ?"_s, {note}); });
}

void SqlBookStore::remove(qint64 player)
{
    change([&] {
        removePlayer(*database, player);
        database->run(u"INSERT OR IGNORE INTO upkeep (task) VALUES ('clean')"_s);
    });
    isUnclean = true;
    isWrittenAnew = false;
    sinceTried.invalidate();
}

void SqlBookStore::cleanUp()
{
    cleanUp(true);
}

template <typename Work>
void SqlBookStore::inTurn(bool isPatient, const Work &work) const
{
    if (isPatient)
        patiently(work);
    else
        work();
}

void SqlBookStore::cleanUp(bool isPatient)
{
    if (!isUnclean)
        return;
    // Pages that were split hold copies of what stood on them; only a new file has none.
    if (!isWrittenAnew) {
        sinceTried.start();
        inTurn(isPatient, [&] { database->run(u"VACUUM"_s); });
        isWrittenAnew = true;
    }
    inTurn(isPatient, [&] {
        if (database->number(u"PRAGMA wal_checkpoint(TRUNCATE)"_s) != 0)
            throw bookFault(BookFault::Locked, path);
    });
    inTurn(isPatient, [&] { database->transaction([&] { database->run(u"DELETE FROM upkeep"_s); }); });
    isUnclean = false;
}

// A large book takes its time to be written anew, which does not succeed sooner for being tried again at once.
void SqlBookStore::tryCleanUp()
{
    constexpr qint64 betweenTries = 60'000; // milliseconds
    if (!isWrittenAnew && sinceTried.isValid() && !sinceTried.hasExpired(betweenTries))
        return;
    try {
        cleanUp(false);
    } catch (const BookFault &) { // it is still to be done
    }
}

qint64 SqlBookStore::addAction(const BookAction &action)
{
    qint64 number = 0;
    change([&] { number = ::addAction(*database, action); });
    return number;
}

void SqlBookStore::setVerdict(qint64 action, const QString &verdict)
{
    change([&] { database->run(u"UPDATE actions SET verdict = ? WHERE action = ?"_s, {verdict, action}); });
}

void SqlBookStore::setReason(qint64 action, const QString &reason)
{
    change([&] { database->run(u"UPDATE actions SET reason = ? WHERE action = ?"_s, {reason, action}); });
}

QStringList SqlBookStore::servers() const
{
    QStringList all;
    auto row = database->rows(
        u"SELECT address FROM servers WHERE EXISTS (SELECT 1 FROM counts WHERE counts.server = servers.server)"
        " ORDER BY address"_s);
    while (row.next())
        all.append(row.text(0));
    return all;
}

QList<BookCount> SqlBookStore::counts(const QString &server, qint64 since) const
{
    QList<BookCount> found;
    auto row = database->rows(u"SELECT time, players, map, game_type FROM counts"
                              " WHERE server = (SELECT server FROM servers WHERE address = ? COLLATE NOCASE)"
                              " AND time >= ? ORDER BY time"_s,
                              {server, since});
    while (row.next())
        found.append({.time = row.number(0), .players = row.count(1), .map = row.text(2), .gameType = row.text(3)});
    return found;
}

QList<BookBan> SqlBookStore::bans() const
{
    return allBans(*database);
}

QList<BookBan> SqlBookStore::liftedWith(const QString &server, const QString &name) const
{
    return bansLiftedWith(allBans(*database), server, name);
}

void SqlBookStore::lift(const QList<qint64> &actions)
{
    change([&] {
        for (const qint64 action : actions)
            database->run(u"UPDATE actions SET lifted = 1 WHERE action = ?"_s, {action});
    });
}

int SqlBookStore::importBans(const QList<BookBan> &bans, qint64 time)
{
    int taken = 0;
    change([&] { taken = ::importBans(*database, bans, time); });
    return taken;
}

BookSize SqlBookStore::size() const
{
    return {.players = database->number(u"SELECT count(*) FROM players"_s),
            .sightings = database->number(u"SELECT count(*) FROM sightings"_s),
            .bytes = QFileInfo(path).size() + logSize(path)};
}
