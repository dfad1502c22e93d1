// SPDX-License-Identifier: MIT
#include "book_bans.h"

#include "ban_lines.h"
#include "base/guid.h"
#include "book_database.h"
#include "book_feeder.h"
#include "book_text.h"

using namespace Qt::StringLiterals;

namespace {

void insert(BookDatabase &database, const BookAction &action, bool isImported)
{
    const QVariant server = action.server.isEmpty() ? QVariant(QMetaType::fromType<qint64>())
                                                    : QVariant(numberOfServer(database, action.server));
    const QString guid = action.guid.isEmpty() ? QString() : plainGuid(action.guid);
    const QString address = guid.isEmpty() ? QString() : withoutPort(action.address);
    database.run(u"INSERT INTO actions (time, kind, server, num, guid, name, clean_name, address, maybe, automatic,"
                 " imported, lifted, verdict, reason) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0, ?, ?)"_s,
                 {action.time, static_cast<int>(action.kind), server, action.num, guid, action.name,
                  cleanName(action.name), address, action.isMaybe ? 1 : 0, action.isAutomatic ? 1 : 0,
                  isImported ? 1 : 0, action.verdict, action.reason});
}

} // namespace

qint64 addAction(BookDatabase &database, const BookAction &action)
{
    insert(database, action, false);
    return database.inserted();
}

void removeNamelessActions(BookDatabase &database, const QSet<QString> &names)
{
    QList<qint64> found;
    {
        auto row = database.rows(u"SELECT action, clean_name FROM actions WHERE guid = ''"_s);
        while (row.next())
            if (names.contains(searchKey(row.text(1))))
                found.append(row.number(0));
    }
    for (const qint64 action : found)
        database.run(u"DELETE FROM actions WHERE action = ?"_s, {action});
}

QList<BookBan> allBans(BookDatabase &database)
{
    QList<BookBan> bans;
    auto row = database.rows(u"SELECT action, time, coalesce(servers.address, ''), name, guid, reason, verdict, kind,"
                             " imported, lifted FROM actions LEFT JOIN servers USING (server) WHERE kind <> 0"
                             " ORDER BY time DESC, action DESC"_s);
    while (row.next()) {
        BookBan ban{.action = row.number(0),
                    .time = row.number(1),
                    .server = row.text(2),
                    .name = row.text(3),
                    .guid = row.text(4),
                    .reason = row.text(5),
                    .verdict = row.text(6)};
        const BanFacts facts{
            .isTemporary = row.count(7) == BookAction::TempBan, .isImported = row.isTrue(8), .isLifted = row.isTrue(9)};
        ban.state = stateOfBan(ban, facts);
        bans.append(ban);
    }
    return bans;
}

int importBans(BookDatabase &database, const QList<BookBan> &bans, qint64 time)
{
    QSet<QPair<QString, QString>> known;
    for (const BookBan &ban : allBans(database))
        if (isInBanFile(ban))
            known.insert(keyOfBan(ban));
    int taken = 0;
    for (const BookBan &ban : bans) {
        if (isNobodysGuid(ban.guid) || known.contains(keyOfBan(ban)))
            continue;
        known.insert(keyOfBan(ban));
        BookAction action;
        action.time = time;
        action.kind = BookAction::Ban;
        action.server = ban.server;
        action.guid = ban.guid;
        action.name = ban.name;
        action.reason = ban.reason;
        insert(database, action, true);
        ++taken;
    }
    return taken;
}
