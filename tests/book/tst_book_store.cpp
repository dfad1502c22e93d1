// SPDX-License-Identifier: MIT
#include "book/book_fault.h"
#include "book/sql_book_store.h"
#include "book_folder.h"
#include "evening.h"
#include "other_eye.h"
#include "test_class.h"

#include <QFile>

#include <algorithm>

using namespace Qt::StringLiterals;

class BookStoreTest final : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        folder = std::make_unique<BookFolder>();
        path = folder->book();
    }
    void cleanup() { folder.reset(); }

    void aPlayerIsKeptWithAllThatIsKnownOfHim()
    {
        SqlBookStore store(path);
        const auto known = store.feed(populate(1000, {bob}));
        QCOMPARE(known.size(), 1);
        QVERIFY(known.first().hasCome);
        QCOMPARE(known.first().guid, u"1001"_s);
        QVERIFY(!store.feed(populate(1030, {bob})).first().hasCome);

        const BookPage page = store.page(known.first().player).value();
        QCOMPARE(page.player.name, u"^1Bob"_s);
        QCOMPARE(page.player.firstSeen, 1000);
        QCOMPARE(page.player.lastSeen, 1030);
        QCOMPARE(page.player.visits, 1);
        QCOMPARE(page.player.names, 1);
        QCOMPARE(texts(page.names), QStringList{u"^1Bob"_s});
        QCOMPARE(texts(page.addresses), QStringList{u"10.0.0.1"_s});
        QCOMPARE(page.sightings.size(), 2);
        QCOMPARE(page.sightings.at(1).time, 1030);
        QCOMPARE(page.sightings.at(1).ping, 48);
    }

    void aGapOfThirtyMinutesBeginsANewVisit_data()
    {
        QTest::addColumn<int>("gap");
        QTest::addColumn<int>("visits");
        QTest::newRow("one second less") << 1799 << 1;
        QTest::newRow("exactly") << 1800 << 2;
        QTest::newRow("more") << 7200 << 2;
        QTest::newRow("the clock was set back a little") << -60 << 1;
        QTest::newRow("the clock was set back by hours") << -7200 << 2;
    }
    void aGapOfThirtyMinutesBeginsANewVisit()
    {
        QFETCH(const int, gap);
        QFETCH(const int, visits);
        SqlBookStore store(path);
        store.feed(populate(100'000, {bob}));
        const auto known = store.feed(populate(100'000 + gap, {bob}));
        QCOMPARE(known.first().hasCome, visits == 2);
        const BookPage page = store.page(known.first().player).value();
        QCOMPARE(page.player.visits, visits);
        QCOMPARE(page.names.first().times, visits);
        QCOMPARE(page.addresses.first().times, visits);
        QCOMPARE(page.player.lastSeen, 100'000 + gap);
        QCOMPARE(page.player.firstSeen, 100'000 + qMin(0, gap));
    }

    void namesAndAddressesCountTheVisitsInWhichTheyWereSeen()
    {
        SqlBookStore store(path);
        const SeenPlayer robert = as(bob, u"Robert"_s, u"10.0.0.2:28960"_s);
        store.feed(populate(1000, {bob}));
        store.feed(populate(1100, {robert})); // he renames himself, and back again
        store.feed(populate(1200, {bob}));
        store.feed(populate(9000, {robert})); // the next visit
        const auto player = store.feed(populate(9100, {robert})).first().player;

        const BookPage page = store.page(player).value();
        QCOMPARE(page.player.visits, 2);
        QCOMPARE(page.player.names, 2);
        QCOMPARE(texts(page.names), (QStringList{u"Robert"_s, u"^1Bob"_s})); // the one seen last first
        QCOMPARE(page.names.at(0).times, 2);
        QCOMPARE(page.names.at(0).firstSeen, 1100);
        QCOMPARE(page.names.at(0).lastSeen, 9100);
        QCOMPARE(page.names.at(1).times, 1);
        QCOMPARE(page.names.at(1).lastSeen, 1200);
        QCOMPARE(texts(page.addresses), (QStringList{u"10.0.0.2"_s, u"10.0.0.1"_s}));
    }

    void whoHasGuidZeroIsMergedWithNobody()
    {
        SqlBookStore store(path);
        const SeenPlayer first = guest(u"^2Unknown"_s, u"10.0.0.1:28960"_s);
        const SeenPlayer recoloured = guest(u"^5Unknown"_s, u"10.0.0.1:1234"_s);
        const SeenPlayer elsewhere = guest(u"Unknown"_s, u"10.0.0.2:28960"_s);
        const SeenPlayer renamed = guest(u"unknown"_s, u"10.0.0.1:28960"_s);
        QList<qint64> numbers;
        for (const KnownPlayer &known : store.feed(populate(1000, {first, recoloured, elsewhere, renamed})))
            numbers.append(known.player);
        QCOMPARE(numbers.at(1), numbers.at(0));
        QCOMPARE(QSet<qint64>(numbers.begin(), numbers.end()).size(), 3);
        QCOMPARE(store.search({}, 0, 10).size(), 3);
        QCOMPARE(store.find(u"0"_s, u"Unknown"_s, u"10.0.0.2:5"_s).value(), numbers.at(2));
        QVERIFY(!store.find(u"0"_s, u"Unknown"_s, u"10.0.0.3"_s));
        QVERIFY(!store.find({}, u"Unknown"_s, u"10.0.0.2"_s));
    }

    void everyPartOfNameGuidAndAddressFinds_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("found");
        const QStringList all{u"ÄRGER"_s, u"100%_[x]"_s, u"^1B^2o^3b"_s};
        const auto row = [](const char *what, const QString &text, const QStringList &found) {
            QTest::newRow(what) << text << found;
        };
        row("nothing typed", u""_s, all);
        row("colour codes aside", u"bob"_s, {u"^1B^2o^3b"_s});
        row("with colour codes", u"^7BO"_s, {u"^1B^2o^3b"_s});
        row("one character", u"b"_s, {u"^1B^2o^3b"_s});
        row("two characters", u"OB"_s, {u"^1B^2o^3b"_s});
        row("beyond ASCII", u"ärg"_s, {u"ÄRGER"_s});
        row("composed of two characters", u"a\u0308rg"_s, {u"ÄRGER"_s});
        row("percent", u"%"_s, {u"100%_[x]"_s});
        row("underscore", u"_"_s, {u"100%_[x]"_s});
        row("underscore for any", u"B_b"_s, {});
        row("bracket", u"[x]"_s, {u"100%_[x]"_s});
        row("a quote", u"'"_s, {});
        row("double quote", u"\""_s, {});
        row("backslash", u"\\"_s, {});
        row("asterisk", u"*"_s, {});
        row("question mark", u"?"_s, {});
        row("a line's end comes along when it is pasted", u"bob\n"_s, {u"^1B^2o^3b"_s});
        row("guid", u"0012"_s, {u"100%_[x]"_s});
        row("address", u"0.0.77"_s, {u"ÄRGER"_s});
        row("an older name", u"robert"_s, {u"^1B^2o^3b"_s});
        row("not across name and address", u"bob10"_s, {});
        row("the port is not kept", u"28960"_s, {});
    }
    void everyPartOfNameGuidAndAddressFinds()
    {
        QFETCH(const QString, text);
        QFETCH(const QStringList, found);
        SqlBookStore store(path);
        store.feed(populate(900, {as(bob, u"Robert"_s, u"10.0.0.1:28960"_s)}));
        store.feed(populate(1000, {as(bob, u"^1B^2o^3b"_s, u"10.0.0.1:28960"_s)}));
        store.feed(populate(1001, {{u"230012"_s, u"100%_[x]"_s, u"10.9.8.7:28960"_s, 1, 2}}));
        store.feed(populate(1002, {{u"777"_s, u"ÄRGER"_s, u"10.0.0.77:28960"_s, 1, 2}}));
        QStringList names;
        for (const BookPlayer &player : store.search(text, 0, 10))
            names.append(player.name);
        QCOMPARE(names, found);
    }

    void theListComesInParts()
    {
        SqlBookStore store(path);
        for (int number = 1; number <= 25; ++number)
            store.feed(populate(1000 + number, {{QString::number(number), u"Player"_s, u"1.1.1.1:1"_s, 0, 0}}));
        QCOMPARE(store.search({}, 0, 10).first().guid, u"25"_s);
        QCOMPARE(store.search({}, 20, 10).size(), 5);
        QCOMPARE(store.search(u"play"_s, 20, 10).last().guid, u"1"_s);
        QCOMPARE(store.search({}, 25, 10).size(), 0);
    }

    void notesAndFlagsAreToldWithThePopulate()
    {
        SqlBookStore store(path);
        const qint64 player = store.feed(populate(1000, {bob})).first().player;
        const qint64 first = store.addNote(player, u"first"_s, 2000);
        const qint64 second = store.addNote(player, u"sécond\nline"_s, 2001);
        store.setFlag(player, true);
        QVERIFY(store.feed(populate(3000, {bob})).first().hasNote);
        QVERIFY(store.feed(populate(3000, {bob})).first().isFlagged);
        store.changeNote(first, u"changed"_s, 2002);
        const auto notes = store.page(player).value().notes;
        QCOMPARE(notes.at(0).text, u"changed"_s);
        QCOMPARE(notes.at(0).time, 2002);
        QCOMPARE(notes.at(1).text, u"sécond\nline"_s);
        store.deleteNote(first);
        store.deleteNote(second);
        store.setFlag(player, false);
        const KnownPlayer known = store.feed(populate(3001, {bob})).first();
        QVERIFY(!known.hasNote && !known.isFlagged);
        QCOMPARE(store.addNote(4711, u"of nobody"_s, 1), 0);
    }

    void noNumberIsGivenTwice()
    {
        SqlBookStore store(path);
        const qint64 player = store.feed(populate(1000, {bob})).first().player;
        const qint64 note = store.addNote(player, u"x"_s, 1);
        BookAction action;
        action.guid = bob.guid;
        const qint64 kicked = store.addAction(action);
        forget(store, player);
        const qint64 next = store.feed(populate(2000, {alice})).first().player;
        QVERIFY(next > player);
        QVERIFY(store.addNote(next, u"y"_s, 1) > note);
        QVERIFY(store.addAction(action) > kicked);
    }

    void everyListIsOnThePageOfAPlayer()
    {
        SqlBookStore store(path);
        store.feed(populate(1000, {guest(u"^1Guest"_s, u"10.0.0.1:5"_s)}, u"a:1"_s));
        SeenPlayer connecting = guest(u"Guest"_s, u"10.0.0.1:6"_s);
        connecting.ping = -1;
        connecting.score = 9;
        const qint64 player = store.feed(populate(1010, {connecting}, u"b:2"_s)).first().player;
        const BookPage page = store.page(player).value();
        QCOMPARE(page.nobodyName, u"Guest"_s);
        QCOMPARE(page.nobodyAddress, u"10.0.0.1"_s);
        QCOMPARE(page.sightings.size(), 2);
        QCOMPARE(page.sightings.at(0).server, u"a:1"_s);
        QCOMPARE(page.sightings.at(1).server, u"b:2"_s);
        QCOMPARE(page.sightings.at(1).ping, -1);
        QCOMPARE(page.sightings.at(1).score, 9);
    }

    // As a server may list him that gives everybody the same GUID, or invents players.
    void oneOfThousandsOfNamesIsTakenOnce()
    {
        SqlBookStore store(path);
        QList<SeenPlayer> rows;
        for (int number = 1; number <= 3000; ++number)
            rows.append(as(bob, u"Somebody with the number %1"_s.arg(number), u"10.0.0.1:1"_s));
        rows.append(rows.last());
        const auto known = store.feed(populate(1000, rows));
        QCOMPARE(known.size(), 3001);
        QCOMPARE(known.at(7).name, u"Somebody with the number 8"_s);
        QCOMPARE(known.at(7).player, known.last().player);
        QVERIFY(known.first().hasCome && !known.last().hasCome);
        const qint64 player = known.first().player;
        const BookPage page = store.page(player).value();
        QCOMPARE(page.player.visits, 1);
        QCOMPARE(page.names.size(), 3000);
        QVERIFY(std::ranges::all_of(page.names, [](const BookAlias &name) { return name.times == 1; }));
        QCOMPARE(page.sightings.size(), 1);
        QCOMPARE(store.page(player, 1000).value().names.size(), 1000);
        QVERIFY(OtherEye(path).ask("SELECT max(length(found_by)) FROM players").toInt() <= 32'768);
        QCOMPARE(store.search(u"number 3000"_s, 0, 10).size(), 1); // the newest are found
        QCOMPARE(store.search(u"1001"_s, 0, 10).size(), 1);        // and his GUID
    }

    void aGuidIsGivenBackAsItStoodInTheList()
    {
        SqlBookStore store(path);
        SeenPlayer nobody = guest(u"Guest"_s, u"10.0.0.1:5"_s);
        nobody.guid = u"00"_s;
        QCOMPARE(store.feed(populate(1000, {nobody})).first().guid, u"00"_s);
        QCOMPARE(store.search({}, 0, 10).first().guid, u"0"_s);
    }

    void countsOfServersAreKeptApart()
    {
        SqlBookStore store(path);
        BookFeed feed = populate(1000, {bob});
        feed.map = u"mp_toujane"_s;
        feed.gameType = u"sd"_s;
        feed.count = 3; // two rows were damaged
        store.feed(feed);
        store.feed(populate(1000, {}, u"other:28961"_s));
        store.feed(populate(1100, {}));
        QCOMPARE(store.servers(), (QStringList{u"10.1.1.1:28960"_s, u"other:28961"_s}));
        const auto counts = store.counts(u"10.1.1.1:28960"_s, 1000);
        QCOMPARE(counts.size(), 2);
        QCOMPARE(counts.first().players, 3);
        QCOMPARE(counts.first().map, u"mp_toujane"_s);
        QCOMPARE(counts.first().gameType, u"sd"_s);
        QCOMPARE(store.counts(u"10.1.1.1:28960"_s, 1001).size(), 1);
        QCOMPARE(store.counts(u"unknown"_s, 0).size(), 0);
    }

    void oldSightingsAreRemovedWhenItIsOpened()
    {
        qint64 player = 0;
        {
            SqlBookStore store(path);
            player = store.feed(populate(1000, {bob})).first().player;
            store.feed(populate(5000, {bob}));
            QCOMPARE(store.size().sightings, 2);
        }
        SqlBookStore store(path, 5000);
        QCOMPARE(store.size().sightings, 1);
        QCOMPARE(store.size().players, 1);
        QCOMPARE(store.page(player).value().sightings.first().time, 5000);
        QCOMPARE(store.page(player).value().player.firstSeen, 1000); // the rest stays
        QCOMPARE(store.counts(u"10.1.1.1:28960"_s, 0).size(), 1);
        QVERIFY(store.size().bytes > 0);
    }

    void whatNamesAreMadeOfIsKept_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("empty") << u""_s;
        QTest::newRow("colour codes alone") << u"^1^2"_s;
        QTest::newRow("quotes") << u"'; DROP TABLE players; --\""_s;
        QTest::newRow("NUL") << u"a\0b"_s;
        QTest::newRow("control characters") << u"a\x1f\x01"
                                               u"b"_s;
        QTest::newRow("beyond the first plane") << u"\U0001F600"_s;
        QTest::newRow("a thousand characters") << QString(1000, u'x');
    }
    void whatNamesAreMadeOfIsKept()
    {
        QFETCH(const QString, name);
        SqlBookStore store(path);
        const auto known = store.feed(populate(1000, {as(bob, name, u""_s)}));
        QCOMPARE(known.first().name, name);
        QCOMPARE(texts(store.page(known.first().player).value().names), QStringList{name});
        QCOMPARE(store.search({}, 0, 10).first().name, name);
    }

    void theBookIsItsOwnersAlone()
    {
        SqlBookStore store(path);
        store.feed(populate(1000, {bob}));
        for (const QString &ending : {u""_s, u"-wal"_s, u"-shm"_s}) {
            const QFile::Permissions others =
                QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
            QVERIFY2(QFile::exists(path + ending), qPrintable(ending));
            QVERIFY2(!(QFile::permissions(path + ending) & others), qPrintable(ending));
        }
    }

private:
    std::unique_ptr<BookFolder> folder;
    QString path;
};

GUILESS_TEST(BookStoreTest)
#include "tst_book_store.moc"
