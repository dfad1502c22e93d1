// SPDX-License-Identifier: MIT
#include "book/ban_lines.h"
#include "book/sql_book_store.h"
#include "book_folder.h"
#include "evening.h"
#include "test_class.h"

using namespace Qt::StringLiterals;

namespace {

const QString here = u"10.1.1.1:28960"_s;
const QString elsewhere = u"10.2.2.2:28960"_s;

BookAction action(BookAction::Kind kind, const SeenPlayer &player, const QString &server = here)
{
    BookAction action;
    action.time = 5000;
    action.kind = kind;
    action.server = server;
    action.num = u"3"_s;
    action.guid = player.guid;
    action.name = player.name;
    action.address = player.address;
    return action;
}

QList<BookBan::State> states(const BookStore &store)
{
    QList<BookBan::State> all;
    for (const BookBan &ban : store.bans())
        all.append(ban.state);
    return all;
}

} // namespace

class BanBookTest final : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        folder = std::make_unique<BookFolder>();
        store = std::make_unique<SqlBookStore>(folder->book());
    }
    void cleanup()
    {
        store.reset();
        folder.reset();
    }

    void actionsAreOnThePlayersPage()
    {
        store->addAction(action(BookAction::Kick, alice)); // before he was seen
        const qint64 player = store->feed(populate(1000, {alice})).first().player;
        BookAction automatic = action(BookAction::Kick, alice);
        automatic.time = 6000;
        automatic.isAutomatic = true;
        automatic.isMaybe = true;
        const qint64 number = store->addAction(automatic);
        store->setVerdict(number, u"acknowledged"_s);
        store->setReason(number, u"lagged"_s);
        store->addAction(action(BookAction::Kick, bob));

        const auto actions = store->page(player).value().actions;
        QCOMPARE(actions.size(), 2);
        QVERIFY(actions.at(0).isAutomatic && actions.at(0).isMaybe);
        QCOMPARE(actions.at(0).verdict, u"acknowledged"_s);
        QCOMPARE(actions.at(0).reason, u"lagged"_s);
        QCOMPARE(actions.at(0).server, here);
        QCOMPARE(actions.at(0).num, u"3"_s);
        QCOMPARE(actions.at(1).address, u"10.0.0.9"_s);
        QVERIFY(store->bans().isEmpty()); // kicks are none
    }

    void anActionOnADamagedRowIsOnNobodysPage()
    {
        const qint64 player = store->feed(populate(1000, {alice})).first().player;
        BookAction damaged = action(BookAction::Ban, alice);
        damaged.guid.clear();
        store->addAction(damaged);
        QVERIFY(store->page(player).value().actions.isEmpty());
        QCOMPARE(store->bans().first().name, u"Alice"_s);
        QCOMPARE(store->bans().first().guid, u""_s);
        QCOMPARE(store->bans().first().state, BookBan::InForce);
    }

    void theVerdictTellsTheState_data()
    {
        QTest::addColumn<QString>("verdict");
        QTest::addColumn<BookBan::State>("ban");
        QTest::addColumn<BookBan::State>("temporary");
        for (const char *good :
             {"", "acknowledged", "answered", "silent", "late", "cut", "unreadable", "no such player (sent 2 times)"})
            QTest::newRow(qPrintable(u"\"%1\""_s.arg(QLatin1StringView(good))))
                << QString::fromLatin1(good) << BookBan::InForce << BookBan::Temporary;
        for (const char *bad : {"password refused", "unknown command", "no such player", "usage"})
            QTest::newRow(bad) << QString::fromLatin1(bad) << BookBan::Refused << BookBan::Refused;
    }
    void theVerdictTellsTheState()
    {
        QFETCH(const QString, verdict);
        QFETCH(const BookBan::State, ban);
        QFETCH(const BookBan::State, temporary);
        store->setVerdict(store->addAction(action(BookAction::Ban, bob)), verdict);
        store->setVerdict(store->addAction(action(BookAction::TempBan, bob)), verdict);
        QCOMPARE(states(*store), (QList{temporary, ban}));
        QCOMPARE(store->bans().first().verdict, verdict);
    }

    void aBanThatTheServerDidNotTakeForItsGuidIsRefused()
    {
        BookAction damaged = action(BookAction::Ban, bob);
        damaged.guid.clear();
        store->setVerdict(store->addAction(damaged), u"answered: GUID is 0"_s);
        QCOMPARE(states(*store), QList{BookBan::Refused});
    }

    void aServersNameIsTheSameInCapitals()
    {
        store->addAction(action(BookAction::Ban, bob, u"Game.example.org:28960"_s));
        QCOMPARE(store->liftedWith(u"game.EXAMPLE.org:28960"_s, u"Bob"_s).size(), 1);
        store->feed(populate(1000, {bob}, u"game.example.org:28960"_s));
        QCOMPARE(store->servers(), QStringList{u"Game.example.org:28960"_s});
        QCOMPARE(store->counts(u"GAME.example.org:28960"_s, 0).size(), 1);
    }

    void noServerBansGuidZero()
    {
        store->setVerdict(store->addAction(action(BookAction::Ban, guest(u"Guest"_s, u"10.0.0.1:1"_s))), u"answered"_s);
        QCOMPARE(states(*store), QList{BookBan::Refused});
    }

    void liftingTakesAllOfThatNameOnThatServer()
    {
        const SeenPlayer namesake{u"2001"_s, u"^6BOB"_s, u"10.0.0.5:1"_s, 1, 1};
        const qint64 first = store->addAction(action(BookAction::Ban, bob));
        const qint64 second = store->addAction(action(BookAction::Ban, namesake));
        store->addAction(action(BookAction::Ban, bob, elsewhere));
        store->addAction(action(BookAction::TempBan, bob));
        store->addAction(action(BookAction::Ban, as(bob, u"Bobby"_s, {})));
        store->setVerdict(store->addAction(action(BookAction::Ban, bob)), u"no such player"_s);

        const auto lifted = store->liftedWith(here, u"bob"_s);
        QCOMPARE(lifted.size(), 2);
        QCOMPARE(lifted.at(0).action, second);
        QCOMPARE(lifted.at(1).action, first);
        lift(here, u"bOB"_s);
        using enum BookBan::State;
        QCOMPARE(states(*store), (QList{Refused, InForce, Temporary, InForce, Lifted, Lifted}));
        QVERIFY(store->liftedWith(here, u"bob"_s).isEmpty());
        QCOMPARE(store->liftedWith(elsewhere, u"bob"_s).size(), 1);
    }

    void theSameFileTwiceAddsNothing()
    {
        store->addAction(action(BookAction::Ban, bob));
        const auto bans = readBanLines("1001 Bob\n77 Someone else\n77 someone ELSE\n78 Someone else\n").bans;
        QCOMPARE(store->importBans(bans, 7000), 2);
        QCOMPARE(store->importBans(bans, 8000), 0);
        using enum BookBan::State;
        QCOMPARE(states(*store), (QList{Imported, Imported, InForce}));
        QCOMPARE(store->bans().first().time, 7000);
        QCOMPARE(banLines(store->bans()), "78 Someone else\n77 Someone else\n1001 Bob\n"_ba);
        QCOMPARE(store->importBans(readBanLines(banLines(store->bans())).bans, 9000), 0);
    }

    void whatWasLiftedCanBeImportedAgain()
    {
        store->addAction(action(BookAction::Ban, bob));
        lift(here, u"Bob"_s);
        QCOMPARE(store->importBans(readBanLines("1001 Bob\n").bans, 7000), 1);
        QCOMPARE(store->liftedWith(here, u"Bob"_s).size(), 1); // it is not known where it was made
        lift(here, u"Bob"_s);
        QCOMPARE(banLines(store->bans()), ""_ba);
    }

    void anImportedBanIsOnThePlayersPage()
    {
        const qint64 player = store->feed(populate(1000, {bob})).first().player;
        (void)store->importBans(readBanLines("1001 Bob\n").bans, 7000);
        QCOMPARE(store->page(player).value().actions.size(), 1);
        QVERIFY(store->page(player).value().actions.first().isImported);
        QCOMPARE(store->page(player).value().actions.first().state, BookBan::Imported);
    }

    void thePageSaysWhatBecameOfABan()
    {
        const qint64 player = store->feed(populate(1000, {bob})).first().player;
        store->addAction(action(BookAction::Ban, bob));
        store->addAction(action(BookAction::TempBan, bob));
        const qint64 refused = store->addAction(action(BookAction::Ban, bob));
        store->setVerdict(refused, u"no such player"_s);
        const auto states = [&] {
            QList<BookBan::State> all;
            const BookPage page = store->page(player).value();
            for (const BookAction &each : page.actions)
                all.append(each.state);
            return all;
        };
        using enum BookBan::State;
        QCOMPARE(states(), (QList{Refused, Temporary, InForce}));
        QVERIFY(!store->page(player).value().actions.first().isImported);
        lift(here, u"Bob"_s);
        QCOMPARE(states(), (QList{Refused, Temporary, Lifted}));
    }

private:
    void lift(const QString &server, const QString &name)
    {
        QList<qint64> actions;
        for (const BookBan &ban : store->liftedWith(server, name))
            actions.append(ban.action);
        store->lift(actions);
    }

    std::unique_ptr<BookFolder> folder;
    std::unique_ptr<SqlBookStore> store;
};

GUILESS_TEST(BanBookTest)
#include "tst_ban_book.moc"
