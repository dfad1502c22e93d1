// SPDX-License-Identifier: MIT
#include "book_feeder.h"

#include "book_database.h"
#include "book_text.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 visitGap = 1800; // seconds; who has not been seen for so long comes anew
constexpr QChar apart = u'\x1F';  // between the texts that a player is found by; no search key has it

/// A player as the book has him.
struct Record {
    qint64 player = 0;
    qint64 firstSeen = 0;
    qint64 lastSeen = 0;
    qint64 visitBegan = 0;
    int visits = 0;
    bool isFlagged = false;
    bool hasNote = false;
    QString foundBy;
};

Record recordOf(BookDatabase &database, const BookIdentity &identity)
{
    auto row = database.rows(u"SELECT player, first_seen, last_seen, visit_began, visits, flagged,"
                             " EXISTS (SELECT 1 FROM notes WHERE notes.player = players.player), found_by"
                             " FROM players WHERE guid = ? AND nobody_name = ? AND nobody_address = ?"_s,
                             identity.values());
    if (!row.next())
        return {};
    return {.player = row.number(0),
            .firstSeen = row.number(1),
            .lastSeen = row.number(2),
            .visitBegan = row.number(3),
            .visits = row.count(4),
            .isFlagged = row.isTrue(5),
            .hasNote = row.isTrue(6),
            .foundBy = row.text(7)};
}

void addKey(QString &foundBy, const QString &text)
{
    const QString key = searchKey(text) + apart;
    if (!foundBy.contains(apart + key))
        foundBy += key;
}

class Feeder final {
public:
    Feeder(BookDatabase &database_, const BookFeed &feed_)
        : database(database_), feed(feed_), server(numberOfServer(database_, feed_.server))
    {
        database.run(u"INSERT INTO counts (server, time, players, map, game_type) VALUES (?, ?, ?, ?, ?)"
                     " ON CONFLICT DO UPDATE SET players = excluded.players, map = excluded.map,"
                     " game_type = excluded.game_type"_s,
                     {server, feed.time, feed.count, feed.map, feed.gameType});
    }

    KnownPlayer take(const SeenPlayer &seen)
    {
        const QString address = withoutPort(seen.address);
        const BookIdentity identity(seen.guid, seen.name, address);
        Record record = recordOf(database, identity);
        const bool hasCome = record.player == 0 || qAbs(feed.time - record.lastSeen) >= visitGap;
        if (hasCome) {
            record.visitBegan = feed.time;
            ++record.visits;
        }
        record.foundBy = record.foundBy.isEmpty() ? apart + identity.guid() + apart : record.foundBy;
        addKey(record.foundBy, seen.name);
        addKey(record.foundBy, address);
        write(record, identity, seen.name);

        const auto see = [&](const QString &sql, const QString &text) {
            database.run(sql, {record.player, text, feed.time, feed.time, hasCome ? 1 : 0, record.visitBegan});
        };
        see(seesName, seen.name);
        if (!address.isEmpty())
            see(seesAddress, address);
        database.run(u"INSERT INTO sightings (player, time, server, ping, score) VALUES (?, ?, ?, ?, ?)"
                     " ON CONFLICT DO UPDATE SET ping = excluded.ping, score = excluded.score"_s,
                     {record.player, feed.time, server, seen.ping, seen.score});
        return {.player = record.player,
                .guid = identity.guid(),
                .name = seen.name,
                .address = address,
                .hasNote = record.hasNote,
                .isFlagged = record.isFlagged,
                .hasCome = hasCome};
    }

private:
    void write(Record &record, const BookIdentity &identity, const QString &name)
    {
        if (record.player > 0) {
            database.run(u"UPDATE players SET name = ?, first_seen = ?, last_seen = ?, visit_began = ?, visits = ?,"
                         " found_by = ? WHERE player = ?"_s,
                         {name, std::min(record.firstSeen, feed.time), feed.time, record.visitBegan, record.visits,
                          record.foundBy, record.player});
            return;
        }
        database.run(
            u"INSERT INTO players (guid, nobody_name, nobody_address, name, first_seen, last_seen, visit_began,"
            " visits, found_by) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"_s,
            identity.values() +
                QVariantList{name, feed.time, feed.time, record.visitBegan, record.visits, record.foundBy});
        record.player = database.inserted();
    }

    // Each counts once in a visit.
    const QString seesName = u"INSERT INTO names (player, name, first_seen, last_seen, times) VALUES (?, ?, ?, ?, 1)"
                             " ON CONFLICT DO UPDATE SET times = times + max(?, last_seen < ?),"
                             " last_seen = excluded.last_seen"_s;
    const QString seesAddress =
        u"INSERT INTO addresses (player, address, first_seen, last_seen, times)"
        " VALUES (?, ?, ?, ?, 1) ON CONFLICT DO UPDATE SET times = times + max(?, last_seen < ?),"
        " last_seen = excluded.last_seen"_s;
    BookDatabase &database;
    const BookFeed &feed;
    qint64 server;
};

} // namespace

BookIdentity::BookIdentity(const QString &guid, const QString &name, const QString &address)
    : number(isNobodysGuid(guid) ? u"0"_s : guid.trimmed())
{
    if (!isNobodysGuid(guid))
        return;
    nobodyName = cleanName(name);
    nobodyAddress = withoutPort(address);
}

QVariantList identityOf(BookDatabase &database, qint64 player)
{
    auto row = database.rows(u"SELECT guid, nobody_name, nobody_address FROM players WHERE player = ?"_s, {player});
    return row.next() ? QVariantList{row.text(0), row.text(1), row.text(2)} : QVariantList{u"none"_s, u""_s, u""_s};
}

QList<KnownPlayer> feedBook(BookDatabase &database, const BookFeed &feed)
{
    Feeder feeder(database, feed);
    QList<KnownPlayer> known;
    for (const SeenPlayer &seen : feed.players)
        known.append(feeder.take(seen));
    return known;
}

qint64 numberOfServer(BookDatabase &database, const QString &address)
{
    const qint64 known = database.number(u"SELECT server FROM servers WHERE address = ?"_s, {address});
    if (known > 0)
        return known;
    database.run(u"INSERT INTO servers (address) VALUES (?)"_s, {address});
    return database.inserted();
}

void removeTimesBefore(BookDatabase &database, qint64 oldest)
{
    database.run(u"DELETE FROM sightings WHERE time < ?"_s, {oldest});
    database.run(u"DELETE FROM counts WHERE time < ?"_s, {oldest});
}
