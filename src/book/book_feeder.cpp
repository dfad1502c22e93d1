// SPDX-License-Identifier: MIT
#include "book_feeder.h"

#include "base/guid.h"
#include "book_database.h"
#include "book_text.h"

#include <QHash>
#include <QStringList>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 visitGap = 1800; // seconds; who has not been seen for so long comes anew
constexpr qsizetype longestKey = 1000;
constexpr qsizetype longestFoundBy = 32'768;
constexpr QChar apart = u'\x1F'; // between the texts that a player is found by; no search key has it

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

/// The oldest give way: a server that invents names is not to make every list slower than the one before.
void addKey(QString &foundBy, const QString &guid, const QString &text)
{
    const QString key = searchKey(text.left(longestKey)) + apart;
    if (foundBy.isEmpty())
        foundBy = apart + guid + apart;
    if (foundBy.contains(apart + key))
        return;
    foundBy += key;
    if (foundBy.size() <= longestFoundBy)
        return;
    const qsizetype afterGuid = foundBy.indexOf(apart, 1) + 1;
    const qsizetype kept = foundBy.indexOf(apart, foundBy.size() - longestFoundBy / 2);
    foundBy = foundBy.first(afterGuid) + foundBy.sliced(kept + 1);
}

/// The rows of a list that are about the same player.
struct RowsOfOne {
    BookIdentity identity;
    QList<qsizetype> places;
};

QList<RowsOfOne> gathered(const QList<SeenPlayer> &players)
{
    QList<RowsOfOne> all;
    QHash<QString, qsizetype> places;
    for (qsizetype at = 0; at < players.size(); ++at) {
        const SeenPlayer &seen = players.at(at);
        const BookIdentity identity(seen.guid, seen.name, seen.address);
        const qsizetype place = places.value(identity.key(), all.size());
        if (place == all.size()) {
            places.insert(identity.key(), place);
            all.append({identity, {}});
        }
        all[place].places.append(at);
    }
    return all;
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

    /// Takes all rows of one player, so that what is known of him is read and written once.
    KnownPlayer take(const RowsOfOne &rows)
    {
        const BookIdentity &identity = rows.identity;
        Record record = recordOf(database, identity);
        const bool hasCome = record.player == 0 || qAbs(feed.time - record.lastSeen) >= visitGap;
        if (hasCome) {
            record.visitBegan = feed.time;
            ++record.visits;
        }
        QStringList names;
        QStringList addresses;
        for (const qsizetype place : rows.places) {
            names.append(feed.players.at(place).name);
            addresses.append(withoutPort(feed.players.at(place).address));
        }
        names.removeDuplicates();
        addresses.removeDuplicates();
        for (const QString &text : names + addresses)
            addKey(record.foundBy, identity.guid(), text);
        const SeenPlayer &seen = feed.players.at(rows.places.last());
        write(record, identity, seen.name);

        const auto see = [&](const QString &sql, const QString &text) {
            database.run(sql, {record.player, text, feed.time, feed.time, hasCome ? 1 : 0, record.visitBegan});
        };
        for (const QString &name : std::as_const(names))
            see(seesName, name);
        addresses.removeAll(QString());
        for (const QString &address : std::as_const(addresses))
            see(seesAddress, address);
        database.run(u"INSERT INTO sightings (player, time, server, ping, score) VALUES (?, ?, ?, ?, ?)"
                     " ON CONFLICT DO UPDATE SET ping = excluded.ping, score = excluded.score"_s,
                     {record.player, feed.time, server, seen.ping, seen.score});
        return {.player = record.player,
                .guid = {},
                .name = {},
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

BookIdentity::BookIdentity(const QString &guid, const QString &name, const QString &address) : number(plainGuid(guid))
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
    QList<KnownPlayer> known(feed.players.size());
    for (const RowsOfOne &rows : gathered(feed.players)) {
        KnownPlayer player = feeder.take(rows);
        for (const qsizetype place : rows.places) {
            player.guid = feed.players.at(place).guid;
            player.name = feed.players.at(place).name;
            known[place] = player;
            player.hasCome = false; // he comes once
        }
    }
    return known;
}

qint64 numberOfServer(BookDatabase &database, const QString &address)
{
    const qint64 known = database.number(u"SELECT server FROM servers WHERE address = ? COLLATE NOCASE"_s, {address});
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
