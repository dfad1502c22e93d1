// SPDX-License-Identifier: MIT
#include "book/book_fault.h"
#include "book/sql_book_store.h"
#include "book_folder.h"
#include "evening.h"
#include "other_eye.h"
#include "test_class.h"

using namespace Qt::StringLiterals;

namespace {

const QByteArrayList traces{"918273645",    "Zebulon",       "Quincunx",     "203.0.113.77",
                            "198.51.100.5", "Griffelkasten", "Unflaetigkeit"};

/// Those of the traces that are still somewhere in the book's files.
QByteArrayList found(const QString &path)
{
    const QByteArray bytes = (bytesOf(path) + bytesOf(path + u"-wal"_s)).toLower();
    QByteArrayList left;
    for (const QByteArray &trace : traces)
        if (bytes.contains(trace.toLower()))
            left.append(trace);
    return left;
}

BookAction action(const QString &guid, const QString &name, const QString &address)
{
    BookAction action;
    action.time = 5000;
    action.kind = BookAction::Ban;
    action.server = u"10.1.1.1:28960"_s;
    action.num = u"3"_s;
    action.guid = guid;
    action.name = name;
    action.address = address;
    action.reason = u"Unflaetigkeit"_s;
    return action;
}

} // namespace

class BookForgetTest final : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        folder = std::make_unique<BookFolder>();
        path = folder->book();
    }
    void cleanup() { folder.reset(); }

    // He is among hundreds, so that pages with him in them are split while he is there.
    void nothingOfHimIsLeftInTheFiles()
    {
        SqlBookStore store(path);
        const SeenPlayer zebulon{u"918273645"_s, u"^3Zebulon"_s, u"203.0.113.77:28960"_s, 60, 1};
        qint64 player = 0;
        for (int step = 0; step < 60; ++step) {
            QList<SeenPlayer> players{step % 2 == 0 ? zebulon : as(zebulon, u"Quin^2cunx"_s, u"198.51.100.5:28960"_s)};
            for (int other = 0; other < 12; ++other)
                players.append({QString::number(100'000 + (step * 12 + other) * 7919 % 100'000),
                                u"Other %1"_s.arg(other), u"10.0.%1.%2:28960"_s.arg(step).arg(other), 50, 0});
            player = store.feed(populate(1000 + step, players)).first().player;
            if (step % 20 == 0)
                store.addNote(player, u"Griffelkasten %1"_s.arg(step), 1000);
        }
        store.addAction(action(u"918273645"_s, u"^3Zebulon"_s, u"203.0.113.77"_s));
        store.addAction(action({}, u"^5Zebulon"_s, u"203.0.113.77"_s)); // a damaged row: slot and name only
        const qint64 kept = store.addAction(action(u"42"_s, u"Other 3"_s, u"10.0.0.3"_s));
        store.setReason(kept, u"another"_s);
        BookBan imported;
        imported.guid = u"918273645"_s;
        imported.name = u"Quincunx"_s;
        QCOMPARE(store.importBans({imported}, 6000), 1);
        QCOMPARE(found(path), traces);
        const qint64 others = store.size().players - 1;

        forget(store, player);
        QCOMPARE(found(path), QByteArrayList());
        QCOMPARE(store.size().players, others);
        QVERIFY(!store.page(player));
        QCOMPARE(store.bans().size(), 1);
        QCOMPARE(store.bans().first().action, kept);
        QCOMPARE(OtherEye(path).ask("PRAGMA integrity_check"), u"ok"_s);
        QVERIFY(store.feed(populate(9000, {zebulon})).first().hasCome); // as one whom nobody knows
        QCOMPARE(store.page(store.find(u"918273645"_s, {}, {}).value()).value().player.firstSeen, 9000);
    }

    void ofThoseWithGuidZeroOneAloneIsForgotten()
    {
        SqlBookStore store(path);
        const auto known = store.feed(
            populate(1000, {guest(u"Zebulon"_s, u"203.0.113.77:1"_s), guest(u"Zebulon"_s, u"10.0.0.1:1"_s)}));
        store.addAction(action(u"0"_s, u"^1Zebulon"_s, u"203.0.113.77:1"_s));
        store.addAction(action(u"0"_s, u"^1Zebulon"_s, u"10.0.0.1:1"_s));
        QCOMPARE(store.page(known.at(0).player).value().actions.size(), 1);
        forget(store, known.at(0).player);
        QVERIFY(!found(path).contains("203.0.113.77"));
        QCOMPARE(store.page(known.at(1).player).value().actions.size(), 1);
        QCOMPARE(store.bans().size(), 1);
    }

    // Another program that reads keeps the log alive.
    void itIsToldWhenTheLogCannotBeEmptied()
    {
        SqlBookStore store(path, 0, [](qint64) { return false; });
        const qint64 player = store.feed(populate(1000, {bob})).first().player;
        {
            OtherEye reader(path);
            reader.ask("BEGIN");
            reader.ask("SELECT count(*) FROM players");
            QVERIFY_EXCEPTION_THROWN(forget(store, player), BookFault);
        }
        QVERIFY(!store.page(player));
    }

    // As when the program is killed between the two.
    void whatCouldNotBeCleanedIsCleanedAtTheNextOpening()
    {
        {
            SqlBookStore store(path);
            store.remove(withManyNames(store));
            QVERIFY(OtherEye(path).ask("PRAGMA freelist_count").toInt() > 0);
            QCOMPARE(OtherEye(path).ask("SELECT count(*) FROM upkeep"), 1);
        }
        SqlBookStore store(path);
        QCOMPARE(OtherEye(path).ask("PRAGMA freelist_count"), 0);
        QCOMPARE(OtherEye(path).ask("SELECT count(*) FROM upkeep"), 0);
        QCOMPARE(store.size().players, 0);
    }

    void orWithTheNextChange()
    {
        SqlBookStore store(path, 0, [](qint64) { return false; });
        const qint64 player = withManyNames(store);
        {
            OtherEye reader(path);
            reader.ask("BEGIN");
            reader.ask("SELECT count(*) FROM players");
            QVERIFY_EXCEPTION_THROWN(forget(store, player), BookFault);
            QVERIFY(found(path).contains("Zebulon"));
        }
        store.feed(populate(2000, {bob}));
        QCOMPARE(found(path), QByteArrayList());
        QCOMPARE(OtherEye(path).ask("SELECT count(*) FROM upkeep"), 0);
        QCOMPARE(store.size().players, 1);
    }

private:
    static qint64 withManyNames(BookStore &store)
    {
        qint64 player = 0;
        for (int number = 0; number < 400; ++number)
            player = store.feed(populate(1000 + number, {as(bob, u"Zebulon %1"_s.arg(number), {})})).first().player;
        return player;
    }

    std::unique_ptr<BookFolder> folder;
    QString path;
};

GUILESS_TEST(BookForgetTest)
#include "tst_book_forget.moc"
