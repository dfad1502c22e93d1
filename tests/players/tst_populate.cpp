// SPDX-License-Identifier: MIT
#include "player_grid.h"

using namespace Qt::StringLiterals;

class PopulateTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void withoutAConnectionNothingIsAskedAndTheListStays()
    {
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s)});
        tab.populate();
        tab.program.click(u"cmdconnect"_s);
        tab.server.forgetRequests();
        tab.populate();
        const Box refused = exclamation(u"Not Connected"_s, u"You need to connect to a server first"_s);
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{refused});
        QVERIFY(tab.server.requests().isEmpty());
        QCOMPARE(tab.grid(), QList<QStringList>{cells(somebody(3, u"Ann"_s))});
    }

    void everyPlayerIsARow()
    {
        PlayersTab tab;
        Player joining = somebody(12, u"Cem"_s);
        joining.state = Player::State::Connecting;
        Player leaving = somebody(13, u"Dan"_s, 60, -2);
        leaving.state = Player::State::Leaving;
        leaving.guid = u"0"_s;
        leaving.qport = -4711;
        leaving.address = u"loopback"_s;
        tab.put({somebody(0, u"Ann"_s, 999, 40), somebody(7, u"Ben"_s, 8), joining, leaving});
        const QString pane = tab.program.pane();
        tab.populate();
        const QList<QStringList> wanted{
            {u""_s, u"0"_s, u"100000"_s, u"Ann"_s, u"999"_s, u"40"_s, u"10.0.0.0:28960"_s, u"1000"_s, u"25000"_s,
             u""_s},
            {u""_s, u"7"_s, u"100007"_s, u"Ben"_s, u"8"_s, u"0"_s, u"10.0.0.7:28960"_s, u"1007"_s, u"25000"_s, u""_s},
            {u""_s, u"12"_s, u"100012"_s, u"Cem"_s, u"CNCT"_s, u"0"_s, u"10.0.0.12:28960"_s, u"1012"_s, u"25000"_s,
             u""_s},
            {u""_s, u"13"_s, u"0"_s, u"Dan"_s, u"ZMBI"_s, u"-2"_s, u"loopback"_s, u"-4711"_s, u"25000"_s, u""_s}};
        QCOMPARE(tab.grid(), wanted);
        QCOMPARE(tab.server.requests(), QList<QByteArray>{QByteArray(4, '\xFF') + "rcon practice status"});
        QCOMPARE(tab.program.pane(), pane);
        QVERIFY(tab.showsReplies());
    }

    void aSecondPopulateStartsFromNothing()
    {
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s), somebody(5, u"Ben"_s)});
        tab.populate();
        tab.server.game().players().remove(3);
        tab.populate();
        QCOMPARE(tab.grid(), QList<QStringList>{cells(somebody(5, u"Ben"_s))});
    }

    void namesAreShownWhole_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QString>("received");
        QTest::addColumn<QString>("cleaned");
        const auto row = [](const char *what, const QByteArray &name, const QString &received, const QString &cleaned) {
            QTest::newRow(what) << name << received << cleaned;
        };
        row("colours", "^1Big ^7Bob", u"^1Big ^7Bob"_s, u"Big Bob"_s);
        row("blanks inside", "the  quick   brown", u"the quick brown"_s, u"the quick brown"_s);
        row("a number", "007", u"007"_s, u"007"_s);
        row("a whole row", "4 10 48 77 Copycat 50 1.2.3.4:5 6 7", u"4 10 48 77 Copycat 50 1.2.3.4:5 6 7"_s,
            u"4 10 48 77 Copycat 50 1.2.3.4:5 6 7"_s);
        row("a caret at the end", "^4Blue^", u"^4Blue^"_s, u"Blue^"_s);
        row("a caret before a letter", "^xRay^_^", u"^xRay^_^"_s, u"^xRay^_^"_s);
        row("a doubled caret", "^^1Up", u"^^1Up"_s, u"^Up"_s);
        row("the ends of the digits", "^0a^9b^/c^:d", u"^0a^9b^/c^:d"_s, u"ab^/c^:d"_s);
        row("colours alone", "^1^2", u"^1^2"_s, u""_s);
        row("a blank behind the colour", "^1 Bob", u"^1 Bob"_s, u" Bob"_s);
        row("no name", "", u""_s, u""_s);
        row("odd bytes", "\x01\t\r\x80\xA0\xFF\"", u"\x01\t\r\u20AC\u00A0\u00FF\""_s,
            u"\x01\t\r\u20AC\u00A0\u00FF\""_s);
        row("markup", "<b>bold</b>&amp;", u"<b>bold</b>&amp;"_s, u"<b>bold</b>&amp;"_s);
    }

    void namesAreShownWhole()
    {
        QFETCH(QByteArray, name);
        QFETCH(QString, received);
        QFETCH(QString, cleaned);
        PlayersTab tab("removeid=0\r\n");
        tab.server.answer("status", {statusHeading + statusLine(name) + "\n"});
        tab.populate();
        QCOMPARE(tab.grid(), QList<QStringList>{statusCells(received)});

        tab.tickBox(u"chkremcol"_s);
        QVERIFY2(tab.grid() == QList<QStringList>{statusCells(received)}, "the box takes effect at the next populate");
        tab.populate();
        QCOMPARE(tab.grid(), QList<QStringList>{statusCells(cleaned)});
    }

    void aListWithoutRowsIsTold_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::newRow("an empty server") << statusHeading + "\n";
        QTest::newRow("the three lines alone") << statusHeading;
        QTest::newRow("three characters more") << statusHeading + "  3";
        QTest::newRow("two lines") << QByteArray("map: mp_carentan\nnum score\n---");
        QTest::newRow("no line feed") << QByteArray("map: mp_carentan");
        QTest::newRow("nothing") << QByteArray();
    }

    void aListWithoutRowsIsTold()
    {
        QFETCH(QByteArray, reply);
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s)});
        tab.populate();
        tab.server.answer("status", {reply});
        tab.populate();
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{noPlayersBox()});
        QVERIFY(tab.grid().isEmpty());
        QVERIFY(tab.showsReplies());
    }

    void aSilentServerIsToldByBothBoxes()
    {
        PlayersTab tab;
        tab.server.setSilent(true);
        tab.populate();
        QCOMPARE(tab.program.prompts.takeBoxes(), (QList<Box>{noResponseBox(), noPlayersBox()}));
        QCOMPARE(tab.server.commands(), QList<QByteArray>(5, "status"));
        tab.server.setSilent(false);
        QVERIFY(tab.showsReplies());
    }

    void theNoteIsShownWhileTheServerIsAsked_data()
    {
        QTest::addColumn<QByteArray>("request");
        QTest::newRow("rcon") << QByteArray("status");
        QTest::newRow("query") << QByteArray("getstatus");
    }

    void theNoteIsShownWhileTheServerIsAsked()
    {
        QFETCH(QByteArray, request);
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s)});
        tab.tickBox(u"chkplyq"_s, request == "getstatus");
        QString note;
        atRequest(tab.server, request, [&] {
            if (tab.program.progress()->isVisible())
                note = tab.program.note();
        });
        tab.populate();
        QCOMPARE(note, u"Asking server for player list..."_s);
        QVERIFY(!tab.program.progress()->isVisible());
        QCOMPARE(tab.program.note(), u""_s);
    }

    void anAutomaticRefreshIsSilent_data()
    {
        QTest::addColumn<QByteArray>("preferences");
        QTest::addColumn<bool>("ticked");
        QTest::newRow("preferred and ticked") << QByteArray("autoqplayer=1\r\n") << true;
        QTest::newRow("preferred alone") << QByteArray("autoqplayer=1\r\n") << false;
        QTest::newRow("ticked alone") << QByteArray() << true;
    }

    void anAutomaticRefreshIsSilent()
    {
        QFETCH(QByteArray, preferences);
        QFETCH(bool, ticked);
        PlayersTab tab(preferences);
        tab.tickBox(u"chkautoupdate"_s, ticked);
        tab.program.prompts.takeBoxes();
        tab.server.forgetRequests();
        int notes = 0;
        connect(&tab.server, &PracticeServer::requested, this, [&] { notes += tab.program.progress()->isVisible(); });
        tab.tick();
        QCOMPARE(tab.server.commands(), QList<QByteArray>{"status"});
        QVERIFY(tab.program.prompts.takeBoxes().isEmpty());
        QCOMPARE(notes, 0);
    }

    void theListIsSorted_data()
    {
        QTest::addColumn<int>("item");
        QTest::addColumn<QStringList>("order");
        const auto row = [](const char *item, int index, const QString &order) {
            QTest::newRow(item) << index << order.split(u' ');
        };
        row("nothing", -1, u"2 10 11"_s);
        row("Num", 0, u"2 10 11"_s);
        row("Guid", 1, u"11 2 10"_s);
        row("Player", 2, u"11 10 2"_s);
        row("Ping", 3, u"10 2 11"_s);
        row("Score", 4, u"11 10 2"_s);
        row("Address", 5, u"10 2 11"_s);
        row("Port", 6, u"10 2 11"_s);
        row("Rate", 7, u"2 11 10"_s);
    }

    void theListIsSorted()
    {
        QFETCH(int, item);
        QFETCH(QStringList, order);
        PlayersTab tab;
        const auto part = [](const QString &name) { return name + u" Smith"_s; };
        tab.put({{2, -3, 100, u"300"_s, part(u"bravo"_s), 50, u"10.0.0.9:28960"_s, 900, 5000},
                 {10, 7, 20, u"1000"_s, part(u"Alpha"_s), 50, u"10.0.0.10:1"_s, -5, 25000},
                 {11, 10, 0, u"20"_s, part(u"7up"_s), 50, u"loopback"_s, 10000, 15000, Player::State::Connecting}});
        tab.populate();
        tab.sortOn(item);
        QCOMPARE(tab.column(1), order);
        tab.populate();
        QCOMPARE(tab.column(1), order);
        QHash<QString, QString> names{
            {u"2"_s, u"bravo Smith"_s}, {u"10"_s, u"Alpha Smith"_s}, {u"11"_s, u"7up Smith"_s}};
        for (const QStringList &row : tab.grid())
            QCOMPARE(row.at(3), names.value(row.at(1)));
    }

    void oneRowIsNotSorted()
    {
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s)});
        tab.populate();
        tab.select(0);
        for (int item = 0; item < 8; ++item)
            tab.sortOn(item);
        QCOMPARE(tab.grid(), QList<QStringList>{cells(somebody(3, u"Ann"_s))});
        QCOMPARE(tab.selected(), QStringList{u"3"_s});
    }

    void aSecondClickMeanwhileIsIgnored()
    {
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s), somebody(5, u"Ben"_s)});
        atRequest(tab.server, "status", [&] { tab.populate(); });
        tab.populate();
        QCOMPARE(tab.server.commands(), QList<QByteArray>{"status"});
        QCOMPARE(tab.column(1), (QStringList{u"3"_s, u"5"_s}));
    }

    void nothingIsSelectedAfterAPopulate()
    {
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s), somebody(5, u"Ben"_s)});
        tab.populate();
        QVERIFY(tab.selected().isEmpty());
        tab.select(1);
        QCOMPARE(tab.selected(), QStringList{u"5"_s});
        tab.populate();
        QVERIFY(tab.selected().isEmpty());
    }

    void theFocusAloneSelectsNothing()
    {
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s), somebody(5, u"Ben"_s)});
        tab.populate();
        tab.view()->setFocus(Qt::TabFocusReason);
        QVERIFY(tab.view()->hasFocus());
        QVERIFY(tab.selected().isEmpty());
        tab.populate();
        QVERIFY(tab.selected().isEmpty());
        tab.server.forgetRequests();
        tab.program.click(u"cmdplykick"_s);
        QCOMPARE(tab.program.prompts.takeBoxes().size(), 1);
        QVERIFY(tab.server.requests().isEmpty());
    }
};

WINDOW_TEST(PopulateTest)
#include "tst_populate.moc"
