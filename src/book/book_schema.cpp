// SPDX-License-Identifier: MIT
#include "book_schema.h"

#include "book_database.h"
#include "book_file.h"

#include <QList>

#include <array>
#include <span>

using namespace Qt::StringLiterals;

namespace {

// Times are seconds since 1970. Who has GUID 0 is told by his clean name and his address, which are empty for all
// others. What he is found by is gathered in one text, so that a search is one pass over one table.
constexpr std::array first{
    u"CREATE TABLE servers (server INTEGER PRIMARY KEY, address TEXT NOT NULL UNIQUE)",
    u"CREATE TABLE players (player INTEGER PRIMARY KEY, guid TEXT NOT NULL, nobody_name TEXT NOT NULL,"
    u" nobody_address TEXT NOT NULL, name TEXT NOT NULL, first_seen INTEGER NOT NULL, last_seen INTEGER NOT NULL,"
    u" visit_began INTEGER NOT NULL, visits INTEGER NOT NULL, flagged INTEGER NOT NULL DEFAULT 0,"
    u" found_by TEXT NOT NULL, UNIQUE (guid, nobody_name, nobody_address))",
    u"CREATE INDEX players_last_seen ON players (last_seen, player)",
    u"CREATE TABLE names (player INTEGER NOT NULL REFERENCES players ON DELETE CASCADE, name TEXT NOT NULL,"
    u" first_seen INTEGER NOT NULL, last_seen INTEGER NOT NULL, times INTEGER NOT NULL,"
    u" PRIMARY KEY (player, name)) WITHOUT ROWID",
    u"CREATE TABLE addresses (player INTEGER NOT NULL REFERENCES players ON DELETE CASCADE, address TEXT NOT NULL,"
    u" first_seen INTEGER NOT NULL, last_seen INTEGER NOT NULL, times INTEGER NOT NULL,"
    u" PRIMARY KEY (player, address)) WITHOUT ROWID",
    u"CREATE TABLE sightings (player INTEGER NOT NULL REFERENCES players ON DELETE CASCADE, time INTEGER NOT NULL,"
    u" server INTEGER NOT NULL REFERENCES servers, ping INTEGER NOT NULL, score INTEGER NOT NULL,"
    u" PRIMARY KEY (player, time, server)) WITHOUT ROWID",
    u"CREATE TABLE counts (server INTEGER NOT NULL REFERENCES servers, time INTEGER NOT NULL, players INTEGER NOT NULL,"
    u" map TEXT NOT NULL, game_type TEXT NOT NULL, PRIMARY KEY (server, time)) WITHOUT ROWID",
    u"CREATE TABLE notes (note INTEGER PRIMARY KEY, player INTEGER NOT NULL REFERENCES players ON DELETE CASCADE,"
    u" time INTEGER NOT NULL, text TEXT NOT NULL)",
    u"CREATE INDEX notes_player ON notes (player)",
    u"CREATE TABLE actions (action INTEGER PRIMARY KEY, time INTEGER NOT NULL, kind INTEGER NOT NULL,"
    u" server INTEGER REFERENCES servers, num TEXT NOT NULL, guid TEXT NOT NULL, name TEXT NOT NULL,"
    u" clean_name TEXT NOT NULL, address TEXT NOT NULL, maybe INTEGER NOT NULL, automatic INTEGER NOT NULL,"
    u" imported INTEGER NOT NULL, lifted INTEGER NOT NULL, verdict TEXT NOT NULL, reason TEXT NOT NULL)",
    u"CREATE INDEX actions_guid ON actions (guid)",
};

// No number of a player, note or action is given twice, or what is still under way to one who was forgotten would meet
// another. A table cannot be altered so; each is made anew, while foreign keys are not looked after. What is still to
// be done with the file stands in a table of its own.
constexpr std::array second{
    u"CREATE TABLE new_players (player INTEGER PRIMARY KEY AUTOINCREMENT, guid TEXT NOT NULL, nobody_name TEXT NOT "
    u"NULL,"
    u" nobody_address TEXT NOT NULL, name TEXT NOT NULL, first_seen INTEGER NOT NULL, last_seen INTEGER NOT NULL,"
    u" visit_began INTEGER NOT NULL, visits INTEGER NOT NULL, flagged INTEGER NOT NULL DEFAULT 0,"
    u" found_by TEXT NOT NULL, UNIQUE (guid, nobody_name, nobody_address))",
    u"INSERT INTO new_players SELECT * FROM players",
    u"DROP TABLE players",
    u"ALTER TABLE new_players RENAME TO players",
    u"CREATE INDEX players_last_seen ON players (last_seen, player)",
    u"CREATE TABLE new_notes (note INTEGER PRIMARY KEY AUTOINCREMENT,"
    u" player INTEGER NOT NULL REFERENCES players ON DELETE CASCADE, time INTEGER NOT NULL, text TEXT NOT NULL)",
    u"INSERT INTO new_notes SELECT * FROM notes",
    u"DROP TABLE notes",
    u"ALTER TABLE new_notes RENAME TO notes",
    u"CREATE INDEX notes_player ON notes (player)",
    u"CREATE TABLE new_actions (action INTEGER PRIMARY KEY AUTOINCREMENT, time INTEGER NOT NULL, kind INTEGER NOT NULL,"
    u" server INTEGER REFERENCES servers, num TEXT NOT NULL, guid TEXT NOT NULL, name TEXT NOT NULL,"
    u" clean_name TEXT NOT NULL, address TEXT NOT NULL, maybe INTEGER NOT NULL, automatic INTEGER NOT NULL,"
    u" imported INTEGER NOT NULL, lifted INTEGER NOT NULL, verdict TEXT NOT NULL, reason TEXT NOT NULL)",
    u"INSERT INTO new_actions SELECT * FROM actions",
    u"DROP TABLE actions",
    u"ALTER TABLE new_actions RENAME TO actions",
    u"CREATE INDEX actions_guid ON actions (guid)",
    u"CREATE TABLE upkeep (task TEXT PRIMARY KEY) WITHOUT ROWID",
};

/// From each version to the next.
constexpr std::array<std::span<const char16_t *const>, 2> steps{first, second};

} // namespace

int bookVersion()
{
    return static_cast<int>(steps.size());
}

void updateBook(BookDatabase &database, const QString &path)
{
    const auto version = [&database] { return database.number(u"PRAGMA user_version"_s); };
    if (version() > bookVersion())
        throw bookFault(BookFault::Newer, path);
    while (version() < bookVersion())
        database.transaction([&] {
            const qint64 found = version(); // another program may have done it meanwhile
            if (found >= bookVersion())
                return;
            database.run(u"PRAGMA application_id = %1"_s.arg(bookApplication));
            for (const char16_t *sql : steps.at(static_cast<std::size_t>(found)))
                database.run(QString::fromUtf16(sql));
            database.run(u"PRAGMA user_version = %1"_s.arg(found + 1));
        });
}
