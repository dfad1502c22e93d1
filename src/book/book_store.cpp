// SPDX-License-Identifier: MIT
#include "book_store.h"

#include "ban_lines.h"
#include "base/file_lock.h"
#include "book_bans.h"
#include "book_database.h"
#include "book_feeder.h"
#include "book_file.h"
#include "book_schema.h"
#include "book_text.h"

#include <QFileInfo>
#include <QThread>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// A book of this size is read through in about a second; damage in a larger one is found when it is met.
constexpr qint64 largestChecked = 64LL * 1024 * 1024;

QString playersWhere(const QString &rest)
{
    return u"SELECT player, name, guid, last_seen, first_seen, visits,"
           " (SELECT count(*) FROM names WHERE names.player = players.player), flagged FROM players "_s +
           rest;
}

/// Those of one player: by GUID; who has 0 by clean name and address.
QString ofOne()
{
    return u" FROM actions WHERE guid = ? AND (guid <> '0' OR (clean_name = ? AND address = ?))"_s;
}

BookPlayer playerIn(const BookDatabase::Rows &row)
{
    return {.player = row.number(0),
            .name = row.text(1),
            .guid = row.text(2),
            .lastSeen = row.number(3),
            .firstSeen = row.number(4),
            .visits = row.count(5),
            .names = row.count(6),
            .isFlagged = row.isTrue(7)};
}

BookAction actionIn(const BookDatabase::Rows &row)
{
    return {.action = row.number(0),
            .time = row.number(1),
            .kind = static_cast<BookAction::Kind>(row.count(2)),
            .server = row.text(3),
            .num = row.text(4),
            .guid = row.text(5),
            .name = row.text(6),
            .address = row.text(7),
            .isMaybe = row.isTrue(8),
            .isAutomatic = row.isTrue(9),
            .verdict = row.text(10),
            .reason = row.text(11)};
}

QList<BookAlias> aliases(BookDatabase &database, const QString &table, qint64 player,
                         int most = std::numeric_limits<int>::max())
{
    QList<BookAlias> found;
    auto row = database.rows(
        u"SELECT * FROM %1 WHERE player = ? ORDER BY last_seen DESC, first_seen DESC LIMIT ?"_s.arg(table),
        {player, most});
    while (row.next())
        found.append(
            {.text = row.text(1), .firstSeen = row.number(2), .lastSeen = row.number(3), .times = row.count(4)});
    return found;
}

/// Throws when the file is damaged. Nothing is written to it meanwhile, not even what a log still holds.
void checkWhole(const QString &path)
{
    BookDatabase database(path, BookDatabase::Access::Read);
    auto row = database.rows(u"PRAGMA quick_check(1)"_s);
    if (!row.next() || row.text(0) != "ok"_L1)
        throw bookFault(BookFault::Broken, path);
}

} // namespace

BookStore::BookStore(const QString &path_, qint64 oldest, Patience patience_, bool doubt)
    : path(resolvedBookPath(path_)), isDoubtful(doubt), patience(std::move(patience_))
{
    patiently([this, oldest] { open(oldest); });
}

BookStore::~BookStore() = default;

/// Tries again while the book is locked.
template <typename Work>
void BookStore::patiently(const Work &work) const
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
void BookStore::change(const Work &work)
{
    patiently([&] { database->transaction(work); });
    tryCleanUp();
}

void BookStore::open(qint64 oldest)
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

void BookStore::openAsItIs(qint64 oldest)
{
    database.reset(); // of an earlier attempt: looking at the file gives up the locks on it
    const BookFileKind kind = inspectBookFile(path, bookVersion());
    if (kind == BookFileKind::NewerBook)
        throw bookFault(BookFault::Newer, path);
    const bool hasLog = hasBookLog(path);
    const bool isNew = kind == BookFileKind::Missing || kind == BookFileKind::Empty;
    if (kind == BookFileKind::Foreign || (isNew && hasLog))
        throw bookFault(BookFault::Broken, path);
    if (kind == BookFileKind::Missing)
        makeBookFile(path);
    protectBookFile(path);
    if (kind == BookFileKind::Book && !hasBookJournal(path) && (isDoubtful || QFileInfo(path).size() <= largestChecked))
        checkWhole(path);

    fileId = fileIdentity(path);
    database = std::make_unique<BookDatabase>(path, BookDatabase::Access::ReadAndWrite);
    for (const auto *pragma :
         {u"PRAGMA foreign_keys = OFF", u"PRAGMA secure_delete = ON", u"PRAGMA synchronous = NORMAL",
          u"PRAGMA cache_size = -16000"}) // KiB: a populate touches pages all over a large book
        database->run(QString::fromUtf16(pragma));
    updateBook(*database, path);
    database->run(u"PRAGMA foreign_keys = ON"_s);
    database->run(u"PRAGMA journal_mode = WAL"_s);
    if (hasLog) // what was forgotten before the program was killed is not to stay in it
        database->run(u"PRAGMA wal_checkpoint(TRUNCATE)"_s);
    database->transaction([this, oldest] { removeTimesBefore(*database, oldest); });
    companions = companionIdentities(path);
    isUnclean = database->number(u"SELECT count(*) FROM upkeep"_s) > 0;
    isWrittenAnew = false;
    sinceTried.invalidate();
    tryCleanUp();
}

bool BookStore::isThere() const
{
    return fileIdentity(path) == fileId;
}

void BookStore::takeLeave()
{
    database.reset();
    removeCompanions(path, companions);
}

quint64 BookStore::commits() const
{
    return database->commits();
}

QList<KnownPlayer> BookStore::feed(const BookFeed &feed)
{
    QList<KnownPlayer> known;
    change([&] { known = feedBook(*database, feed); });
    return known;
}

QList<BookPlayer> BookStore::search(const QString &text, int from, int most) const
{
    const QString key = searchKey(text);
    QList<BookPlayer> found;
    // In the order of the index each row would be fetched from another place; all of them in a row are read sooner.
    auto row = key.isEmpty() ? database->rows(playersWhere(u"ORDER BY last_seen DESC, player DESC LIMIT ? OFFSET ?"_s),
                                              {most, from})
                             : database->rows(playersWhere(u"WHERE instr(found_by, ?) > 0"
                                                           " ORDER BY +last_seen DESC, player DESC LIMIT ? OFFSET ?"_s),
                                              {key, most, from});
    while (row.next())
        found.append(playerIn(row));
    return found;
}

std::optional<qint64> BookStore::find(const QString &guid, const QString &name, const QString &address) const
{
    if (guid.isEmpty())
        return std::nullopt;
    const qint64 player =
        database->number(u"SELECT player FROM players WHERE guid = ? AND nobody_name = ? AND nobody_address = ?"_s,
                         BookIdentity(guid, name, address).values());
    return player > 0 ? std::optional(player) : std::nullopt;
}

std::optional<BookPage> BookStore::page(qint64 player, int mostAliases) const
{
    BookPage page;
    {
        auto row = database->rows(playersWhere(u"WHERE player = ?"_s), {player});
        if (!row.next())
            return std::nullopt;
        page.player = playerIn(row);
    }
    const QVariantList identity = identityOf(*database, player);
    page.nobodyName = identity.at(1).toString();
    page.nobodyAddress = identity.at(2).toString();
    page.names = aliases(*database, u"names"_s, player, mostAliases);
    page.addresses = aliases(*database, u"addresses"_s, player, mostAliases);
    {
        auto row = database->rows(
            u"SELECT note, time, text FROM notes WHERE player = ? ORDER BY time DESC, note DESC"_s, {player});
        while (row.next())
            page.notes.append({.note = row.number(0), .time = row.number(1), .text = row.text(2)});
    }
    {
        auto row =
            database->rows(u"SELECT action, time, kind,"
                           " coalesce((SELECT servers.address FROM servers WHERE servers.server = actions.server), ''),"
                           " num, guid, name, address, maybe, automatic, verdict, reason"_s +
                               ofOne() + u" ORDER BY time DESC, action DESC"_s,
                           identity);
        while (row.next())
            page.actions.append(actionIn(row));
    }
    auto row = database->rows(u"SELECT time, address, ping, score FROM sightings JOIN servers USING (server)"
                              " WHERE player = ? ORDER BY time"_s,
                              {player});
    QSet<QString> servers; // each text once for all of them
    while (row.next())
        page.sightings.append({.time = row.number(0),
                               .server = *servers.insert(row.text(1)),
                               .ping = row.count(2),
                               .score = row.count(3)});
    return page;
}

void BookStore::setFlag(qint64 player, bool on)
{
    change([&] { database->run(u"UPDATE players SET flagged = ? WHERE player = ?"_s, {on ? 1 : 0, player}); });
}

qint64 BookStore::addNote(qint64 player, const QString &text, qint64 time)
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

void BookStore::changeNote(qint64 note, const QString &text, qint64 time)
{
    change([&] { database->run(u"UPDATE notes SET text = ?, time = ? WHERE note = ?"_s, {text, time, note}); });
}

void BookStore::deleteNote(qint64 note)
{
    change([&] { database->run(u"DELETE FROM notes WHERE note = ?"_s, {note}); });
}

void BookStore::remove(qint64 player)
{
    change([&] {
        const QVariantList identity = identityOf(*database, player);
        QSet<QString> names;
        for (const BookAlias &name : aliases(*database, u"names"_s, player))
            names.insert(searchKey(cleanName(name.text)));
        names.remove({});
        removeNamelessActions(*database, names);
        database->run(u"DELETE"_s + ofOne(), identity);
        database->run(u"DELETE FROM players WHERE player = ?"_s, {player});
        database->run(u"INSERT OR IGNORE INTO upkeep (task) VALUES ('clean')"_s);
    });
    isUnclean = true;
    isWrittenAnew = false;
    sinceTried.invalidate();
}

void BookStore::cleanUp()
{
    cleanUp(true);
}

template <typename Work>
void BookStore::inTurn(bool isPatient, const Work &work) const
{
    if (isPatient)
        patiently(work);
    else
        work();
}

void BookStore::cleanUp(bool isPatient)
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
void BookStore::tryCleanUp()
{
    constexpr qint64 betweenTries = 60'000; // milliseconds
    if (!isWrittenAnew && sinceTried.isValid() && !sinceTried.hasExpired(betweenTries))
        return;
    try {
        cleanUp(false);
    } catch (const BookFault &) { // it is still to be done
    }
}

void BookStore::forget(qint64 player)
{
    remove(player);
    cleanUp();
}

qint64 BookStore::addAction(const BookAction &action)
{
    qint64 number = 0;
    change([&] { number = ::addAction(*database, action); });
    return number;
}

void BookStore::setVerdict(qint64 action, const QString &verdict)
{
    change([&] { database->run(u"UPDATE actions SET verdict = ? WHERE action = ?"_s, {verdict, action}); });
}

void BookStore::setReason(qint64 action, const QString &reason)
{
    change([&] { database->run(u"UPDATE actions SET reason = ? WHERE action = ?"_s, {reason, action}); });
}

QStringList BookStore::servers() const
{
    QStringList all;
    auto row = database->rows(
        u"SELECT address FROM servers WHERE EXISTS (SELECT 1 FROM counts WHERE counts.server = servers.server)"
        " ORDER BY address"_s);
    while (row.next())
        all.append(row.text(0));
    return all;
}

QList<BookCount> BookStore::counts(const QString &server, qint64 since) const
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

QList<BookBan> BookStore::bans() const
{
    return allBans(*database);
}

QList<BookBan> BookStore::liftedWith(const QString &server, const QString &name) const
{
    return bansLiftedWith(allBans(*database), server, name);
}

void BookStore::lift(const QString &server, const QString &name)
{
    QList<qint64> actions;
    for (const BookBan &ban : liftedWith(server, name))
        actions.append(ban.action);
    lift(actions);
}

void BookStore::lift(const QList<qint64> &actions)
{
    change([&] {
        for (const qint64 action : actions)
            database->run(u"UPDATE actions SET lifted = 1 WHERE action = ?"_s, {action});
    });
}

int BookStore::importBans(const QList<BookBan> &bans, qint64 time)
{
    int taken = 0;
    change([&] { taken = ::importBans(*database, bans, time); });
    return taken;
}

BookSize BookStore::size() const
{
    return {.players = database->number(u"SELECT count(*) FROM players"_s),
            .sightings = database->number(u"SELECT count(*) FROM sightings"_s),
            .bytes = QFileInfo(path).size() + QFileInfo(path + u"-wal"_s).size()};
}

void BookStore::removeBefore(qint64 oldest)
{
    change([&] { removeTimesBefore(*database, oldest); });
}
