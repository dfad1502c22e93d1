// SPDX-License-Identifier: MIT
#include "book_players.h"

#include "ban_lines.h"
#include "book_bans.h"
#include "book_database.h"
#include "book_feeder.h"
#include "book_text.h"

#include <QSet>

#include <climits>

using namespace Qt::StringLiterals;

namespace {

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
    BookBan ban;
    ban.guid = row.text(5);
    ban.verdict = row.text(10);
    const BanFacts facts{
        .isTemporary = row.count(2) == BookAction::TempBan, .isImported = row.isTrue(12), .isLifted = row.isTrue(13)};
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
            .isImported = facts.isImported,
            .state = stateOfBan(ban, facts),
            .verdict = row.text(10),
            .reason = row.text(11)};
}

QList<BookAlias> aliases(BookDatabase &database, const QString &table, qint64 player, int most = INT_MAX)
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

} // namespace

QList<BookPlayer> findPlayers(BookDatabase &database, const QString &text, int from, int most)
{
    const QString key = searchKey(text);
    QList<BookPlayer> found;
    // In the order of the index each row would be fetched from another place; all of them in a row are read sooner.
    auto row = key.isEmpty() ? database.rows(playersWhere(u"ORDER BY last_seen DESC, player DESC LIMIT ? OFFSET ?"_s),
                                             {most, from})
                             : database.rows(playersWhere(u"WHERE instr(found_by, ?) > 0"
                                                          " ORDER BY +last_seen DESC, player DESC LIMIT ? OFFSET ?"_s),
                                             {key, most, from});
    while (row.next())
        found.append(playerIn(row));
    return found;
}

std::optional<qint64> numberOfPlayer(BookDatabase &database, const QString &guid, const QString &name,
                                     const QString &address)
{
    if (guid.isEmpty())
        return std::nullopt;
    const qint64 player =
        database.number(u"SELECT player FROM players WHERE guid = ? AND nobody_name = ? AND nobody_address = ?"_s,
                        BookIdentity(guid, name, address).values());
    return player > 0 ? std::optional(player) : std::nullopt;
}

std::optional<BookPage> pageOfPlayer(BookDatabase &database, qint64 player, int mostAliases)
{
    BookPage page;
    {
        auto row = database.rows(playersWhere(u"WHERE player = ?"_s), {player});
        if (!row.next())
            return std::nullopt;
        page.player = playerIn(row);
    }
    const QVariantList identity = identityOf(database, player);
    page.nobodyName = identity.at(1).toString();
    page.nobodyAddress = identity.at(2).toString();
    page.names = aliases(database, u"names"_s, player, mostAliases);
    page.addresses = aliases(database, u"addresses"_s, player, mostAliases);
    {
        auto row = database.rows(u"SELECT note, time, text FROM notes WHERE player = ? ORDER BY time DESC, note DESC"_s,
                                 {player});
        while (row.next())
            page.notes.append({.note = row.number(0), .time = row.number(1), .text = row.text(2)});
    }
    {
        auto row =
            database.rows(u"SELECT action, time, kind,"
                          " coalesce((SELECT servers.address FROM servers WHERE servers.server = actions.server), ''),"
                          " num, guid, name, address, maybe, automatic, verdict, reason, imported, lifted"_s +
                              ofOne() + u" ORDER BY time DESC, action DESC"_s,
                          identity);
        while (row.next())
            page.actions.append(actionIn(row));
    }
    auto row = database.rows(u"SELECT time, address, ping, score FROM sightings JOIN servers USING (server)"
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

void removePlayer(BookDatabase &database, qint64 player)
{
    const QVariantList identity = identityOf(database, player);
    QSet<QString> names;
    for (const BookAlias &name : aliases(database, u"names"_s, player))
        names.insert(searchKey(cleanName(name.text)));
    names.remove({});
    removeNamelessActions(database, names);
    database.run(u"DELETE"_s + ofOne(), identity);
    database.run(u"DELETE FROM players WHERE player = ?"_s, {player});
}
