// SPDX-License-Identifier: MIT
#include "book/book_fault.h"
#include "book/sql_book_store.h"
#include "book_folder.h"
#include "evening.h"
#include "other_eye.h"
#include "test_class.h"

#include <QDir>

#include <array>
#include <barrier>
#include <optional>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

/// The tables of the first version.
constexpr std::array firstVersion{
    "CREATE TABLE servers (server INTEGER PRIMARY KEY, address TEXT NOT NULL UNIQUE)",
    "CREATE TABLE players (player INTEGER PRIMARY KEY, guid TEXT NOT NULL, nobody_name TEXT NOT NULL,"
    " nobody_address TEXT NOT NULL, name TEXT NOT NULL, first_seen INTEGER NOT NULL, last_seen INTEGER NOT NULL,"
    " visit_began INTEGER NOT NULL, visits INTEGER NOT NULL, flagged INTEGER NOT NULL DEFAULT 0,"
    " found_by TEXT NOT NULL, UNIQUE (guid, nobody_name, nobody_address))",
    "CREATE INDEX players_last_seen ON players (last_seen, player)",
    "CREATE TABLE names (player INTEGER NOT NULL REFERENCES players ON DELETE CASCADE, name TEXT NOT NULL,"
    " first_seen INTEGER NOT NULL, last_seen INTEGER NOT NULL, times INTEGER NOT NULL,"
    " PRIMARY KEY (player, name)) WITHOUT ROWID",
    "CREATE TABLE addresses (player INTEGER NOT NULL REFERENCES players ON DELETE CASCADE, address TEXT NOT NULL,"
    " first_seen INTEGER NOT NULL, last_seen INTEGER NOT NULL, times INTEGER NOT NULL,"
    " PRIMARY KEY (player, address)) WITHOUT ROWID",
    "CREATE TABLE sightings (player INTEGER NOT NULL REFERENCES players ON DELETE CASCADE, time INTEGER NOT NULL,"
    " server INTEGER NOT NULL REFERENCES servers, ping INTEGER NOT NULL, score INTEGER NOT NULL,"
    " PRIMARY KEY (player, time, server)) WITHOUT ROWID",
    "CREATE TABLE counts (server INTEGER NOT NULL REFERENCES servers, time INTEGER NOT NULL, players INTEGER NOT NULL,"
    " map TEXT NOT NULL, game_type TEXT NOT NULL, PRIMARY KEY (server, time)) WITHOUT ROWID",
    "CREATE TABLE notes (note INTEGER PRIMARY KEY, player INTEGER NOT NULL REFERENCES players ON DELETE CASCADE,"
    " time INTEGER NOT NULL, text TEXT NOT NULL)",
    "CREATE INDEX notes_player ON notes (player)",
    "CREATE TABLE actions (action INTEGER PRIMARY KEY, time INTEGER NOT NULL, kind INTEGER NOT NULL,"
    " server INTEGER REFERENCES servers, num TEXT NOT NULL, guid TEXT NOT NULL, name TEXT NOT NULL,"
    " clean_name TEXT NOT NULL, address TEXT NOT NULL, maybe INTEGER NOT NULL, automatic INTEGER NOT NULL,"
    " imported INTEGER NOT NULL, lifted INTEGER NOT NULL, verdict TEXT NOT NULL, reason TEXT NOT NULL)",
    "CREATE INDEX actions_guid ON actions (guid)",
    "PRAGMA application_id = 1299147894",
    "PRAGMA user_version = 1",
    "INSERT INTO servers VALUES (1, '10.1.1.1:28960')",
    "INSERT INTO players VALUES (7, '1001', '', '', '^1Bob', 1000, 2000, 2000, 2, 1, '\x1F' || '1001' || '\x1F')",
    "INSERT INTO names VALUES (7, '^1Bob', 1000, 2000, 2)",
    "INSERT INTO sightings VALUES (7, 2000, 1, 48, 12)",
    "INSERT INTO notes VALUES (3, 7, 1500, 'Polite')",
    "INSERT INTO actions VALUES (5, 1600, 0, 1, '3', '1001', '^1Bob', 'Bob', '10.0.0.1', 0, 0, 0, 0, 'answered', "
    "'why')",
};

} // namespace

/// What the book does about files that are none of its own, broken, in use or not to be written.
class BookFileTest final : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        folder = std::make_unique<BookFolder>();
        path = folder->book();
    }
    void cleanup() { folder.reset(); }

    void whatIsNoBookIsPutAsideByteForByte_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("text") << "not a database at all\n"_ba;
        QTest::newRow("one byte") << "x"_ba;
        QTest::newRow("the head of a database and no more") << "SQLite format 3\0"_ba;
        QTest::newRow("zeros") << QByteArray(8192, '\0');
        QTest::newRow("ten megabytes") << QByteArray(10'000'000, 'S');
    }
    void whatIsNoBookIsPutAsideByteForByte()
    {
        QFETCH(const QByteArray, bytes);
        QVERIFY(writeBytes(path, bytes));
        SqlBookStore store(path);
        QCOMPARE(store.putAside(), u"molvark-players.broken-1.db"_s);
        QCOMPARE(bytesOf(aside(1)), bytes);
        QCOMPARE(store.feed(populate(1000, {bob})).size(), 1);
    }

    void eachIsPutAsideUnderAnotherName()
    {
        for (int number = 1; number <= 3; ++number) {
            QVERIFY(writeBytes(path, "broken "_ba + QByteArray::number(number)));
            QCOMPARE(SqlBookStore(path).putAside(), u"molvark-players.broken-%1.db"_s.arg(number));
            QVERIFY(QFile::remove(path));
        }
        QCOMPARE(bytesOf(aside(1)), "broken 1"_ba);
        QCOMPARE(bytesOf(aside(3)), "broken 3"_ba);
    }

    // What its program has not moved into the file yet stays in its log.
    void anotherProgramsDatabaseIsPutAsideWithItsLog()
    {
        const QString original = folder->filePath(u"theirs.db"_s);
        OtherEye program(original);
        program.ask("PRAGMA journal_mode = WAL");
        program.ask("CREATE TABLE theirs (text)");
        program.ask("INSERT INTO theirs VALUES ('kept')");
        QVERIFY(copyAsKilled(original, path));
        const QByteArray file = bytesOf(path);
        const QByteArray log = bytesOf(path + u"-wal"_s);
        QVERIFY(!log.isEmpty());

        SqlBookStore store(path);
        QCOMPARE(store.putAside(), u"molvark-players.broken-1.db"_s);
        QCOMPARE(bytesOf(aside(1)), file);
        QCOMPARE(bytesOf(aside(1) + u"-wal"_s), log);
        QCOMPARE(OtherEye(aside(1)).ask("SELECT text FROM theirs").toString(), u"kept"_s);
    }

    void aDamagedBookIsPutAsideWithItsLog()
    {
        const QString original = folder->filePath(u"original.db"_s);
        SqlBookStore before(original);
        before.feed(populate(1000, {bob, alice}));
        QVERIFY(copyAsKilled(original, path));
        QByteArray file = bytesOf(path);
        file.replace(4096, file.size() - 4096, QByteArray(file.size() - 4096, '\x55'));
        QVERIFY(writeBytes(path, file));
        const QByteArray log = bytesOf(path + u"-wal"_s);
        QVERIFY(!log.isEmpty());

        SqlBookStore store(path);
        QCOMPARE(store.putAside(), u"molvark-players.broken-1.db"_s);
        QCOMPARE(bytesOf(aside(1)), file);
        QCOMPARE(bytesOf(aside(1) + u"-wal"_s), log);
        QCOMPARE(store.size().players, 0);
    }

    void aTruncatedBookIsPutAside()
    {
        {
            SqlBookStore store(path);
            store.feed(populate(1000, {bob}));
        }
        const QByteArray half = bytesOf(path).first(20'000);
        QVERIFY(writeBytes(path, half));
        QCOMPARE(SqlBookStore(path).putAside(), u"molvark-players.broken-1.db"_s);
        QCOMPARE(bytesOf(aside(1)), half);
    }

    void anEmptyFileBecomesTheBook()
    {
        QVERIFY(writeBytes(path, {}));
        SqlBookStore store(path);
        QVERIFY(store.putAside().isEmpty());
        QCOMPARE(store.feed(populate(1000, {bob})).size(), 1);
        QVERIFY(!(QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther)));
    }

    void aBookThatOthersCouldReadIsClosedToThem()
    {
        {
            SqlBookStore store(path);
        }
        QVERIFY(
            QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther));
        SqlBookStore store(path);
        QCOMPARE(QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    }

    void whatWasLeftInTheLogIsThere()
    {
        const QString original = folder->filePath(u"original.db"_s);
        SqlBookStore before(original);
        before.feed(populate(1000, {bob, alice}));
        QVERIFY(copyAsKilled(original, path));
        SqlBookStore store(path);
        QVERIFY(store.putAside().isEmpty());
        QCOMPARE(store.size().players, 2);
    }

    // As it is killed while the book is made, before there is a log.
    void aChangeThatWasBrokenOffIsTakenBack()
    {
        const QString original = folder->filePath(u"original.db"_s);
        {
            SqlBookStore before(original);
            for (int time = 1; time <= 200; ++time)
                before.feed(populate(time, {bob, alice}));
        }
        OtherEye writer(original);
        writer.ask("PRAGMA journal_mode = DELETE");
        writer.ask("PRAGMA cache_size = 1");
        writer.ask("BEGIN");
        writer.ask("UPDATE sightings SET ping = 999, score = 123456");
        writer.ask("UPDATE players SET found_by = zeroblob(20000)");
        QVERIFY(QFile::copy(original, path));
        QVERIFY(QFile::copy(original + u"-journal"_s, path + u"-journal"_s));
        QVERIFY(bytesOf(path) != bytesOf(path + u"-journal"_s));

        SqlBookStore store(path);
        QCOMPARE(store.putAside(), QString());
        QCOMPARE(store.search(u"bob"_s, 0, 10).size(), 1);
        QCOMPARE(OtherEye(path).ask("SELECT count(*) FROM sightings WHERE ping = 999"), 0);
        QCOMPARE(OtherEye(path).ask("PRAGMA integrity_check"), u"ok"_s);
    }

    void aNewerBookIsLeftAlone()
    {
        {
            SqlBookStore store(path);
        }
        OtherEye(path).ask("PRAGMA user_version = 99");
        const QByteArray bytes = bytesOf(path);
        const auto fault = faultOfOpening();
        QCOMPARE(fault->kind(), BookFault::Newer);
        QVERIFY(fault->line().contains(u"molvark-players.db"_s));
        QCOMPARE(bytesOf(path), bytes);
        QCOMPARE(filesHere(), QStringList{u"molvark-players.db"_s});
    }

    void aLockedBookIsLeftAlone()
    {
        {
            SqlBookStore store(path);
            store.feed(populate(1000, {bob}));
        }
        {
            OtherEye other(path);
            other.ask("BEGIN EXCLUSIVE");
            const auto fault = faultOfOpening();
            QCOMPARE(fault->kind(), BookFault::Locked);
            QVERIFY(fault->line().contains(u"molvark-players.db"_s));
            QVERIFY(filesHere().filter(u"broken"_s).isEmpty());
        }
        SqlBookStore store(path, 0, [](qint64) { return false; });
        QCOMPARE(store.size().players, 1);
        OtherEye other(path);
        other.ask("BEGIN IMMEDIATE");
        QVERIFY_EXCEPTION_THROWN(store.setFlag(1, true), BookFault);
        QCOMPARE(store.search({}, 0, 10).size(), 1); // it can be read meanwhile
        other.ask("ROLLBACK");
        store.setFlag(1, true);
        QVERIFY(store.search({}, 0, 10).first().isFlagged);
    }

    void whatIsNoFileIsLeftAlone()
    {
        QVERIFY(QDir().mkpath(path));
        QVERIFY(faultOfOpening()->line().contains(u"folder"_s));
        QCOMPARE(filesHere(), QStringList{u"molvark-players.db"_s});
    }

#ifndef Q_OS_WIN
    void aLinkIsFollowed()
    {
        const QString target = folder->filePath(u"elsewhere.db"_s);
        QVERIFY(QFile::link(target, path));
        QVERIFY(faultOfOpening()->line().contains(u"link"_s)); // to nothing
        QVERIFY(!QFile::exists(target));
        {
            SqlBookStore made(target);
            made.feed(populate(1000, {bob}));
        }
        SqlBookStore store(path);
        QCOMPARE(store.size().players, 1);
        QVERIFY(QFileInfo(path).isSymLink());
    }
#endif

    void aBookThatIsTakenAwayIsMissed()
    {
        SqlBookStore store(path);
        QVERIFY(store.isThere());
#ifndef Q_OS_WIN
        QVERIFY(QFile::remove(path));
        QVERIFY(!store.isThere());
#endif
    }

    void itsTablesAndItsVersionAreThose()
    {
        SqlBookStore store(path);
        OtherEye eye(path);
        QCOMPARE(eye.ask("SELECT group_concat(name) FROM (SELECT name FROM sqlite_schema WHERE type = 'table'"
                         " AND name NOT LIKE 'sqlite%' ORDER BY name)"),
                 u"actions,addresses,counts,names,notes,players,servers,sightings,upkeep"_s);
        QCOMPARE(eye.ask("PRAGMA user_version"), 2);
        QCOMPARE(eye.ask("PRAGMA journal_mode"), u"wal"_s);
    }

    // None of them does it again after the other.
    void twoProgramsMayBringItUpToDateAtOnce()
    {
        for (int round = 0; round < 30; ++round) {
            const QString old = folder->filePath(u"old-%1.db"_s.arg(round));
            {
                OtherEye eye(old);
                for (const char *sql : firstVersion)
                    eye.ask(sql);
            }
            std::barrier together(2);
            const auto open = [&](QString &fault) {
                together.arrive_and_wait();
                try {
                    const SqlBookStore store(old);
                    fault = store.putAside();
                } catch (const BookFault &caught) {
                    fault = caught.line();
                }
            };
            QString first;
            QString second;
            std::thread other([&] { open(first); });
            open(second);
            other.join();
            QCOMPARE(first, QString());
            QCOMPARE(second, QString());
        }
    }

    void aBookOfTheFirstVersionIsBroughtUpToDate()
    {
        {
            OtherEye eye(path);
            for (const char *sql : firstVersion)
                eye.ask(sql);
        }
        SqlBookStore store(path);
        QCOMPARE(store.putAside(), QString());
        const BookPage page = store.page(7).value();
        QCOMPARE(page.player.name, u"^1Bob"_s);
        QCOMPARE(page.player.names, 1);
        QVERIFY(page.player.isFlagged);
        QCOMPARE(page.notes.first().note, 3);
        QCOMPARE(page.actions.first().reason, u"why"_s);
        QCOMPARE(page.sightings.first().ping, 48);
        QVERIFY(store.addNote(7, u"another"_s, 1) > 3);
        const QString anew = folder->filePath(u"new.db"_s);
        {
            SqlBookStore other(anew);
        }
        OtherEye eye(path);
        const char *tables = "SELECT group_concat(sql, ';') FROM (SELECT sql FROM sqlite_schema ORDER BY name)";
        QCOMPARE(eye.ask(tables), OtherEye(anew).ask(tables));
        QCOMPARE(eye.ask("SELECT count(*) FROM pragma_foreign_key_check"), 0);
        QCOMPARE(eye.ask("PRAGMA integrity_check"), u"ok"_s);
        forget(store, 7); // takes what hangs on him along
        QCOMPARE(eye.ask("SELECT (SELECT count(*) FROM names) + (SELECT count(*) FROM notes)"), 0);
    }

private:
    [[nodiscard]] QString aside(int number) const
    {
        return folder->filePath(u"molvark-players.broken-%1.db"_s.arg(number));
    }
    [[nodiscard]] QStringList filesHere() const
    {
        return QDir(folder->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }
    [[nodiscard]] std::optional<BookFault> faultOfOpening() const
    {
        try {
            SqlBookStore store(path, 0, [](qint64) { return false; });
        } catch (const BookFault &fault) {
            return fault;
        }
        failTest(u"the book was opened"_s);
    }

    std::unique_ptr<BookFolder> folder;
    QString path;
};

GUILESS_TEST(BookFileTest)
#include "tst_book_file.moc"
