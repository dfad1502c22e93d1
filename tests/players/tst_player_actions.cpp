// SPDX-License-Identifier: MIT
#include "player_grid.h"

#include "link.h"

using namespace Qt::StringLiterals;

namespace {

const Player ann = somebody(3, u"Ann"_s, 40, 9);
const Player ben = somebody(5, u"Ben"_s, 60, 4);
const Player cem = somebody(9, u"Cem"_s, 50, 20);

/// The data of one test for each of the three buttons that get rid of a player.
void buttons()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QString>("note"); ///< with Ben's name
    QTest::addColumn<QString>("select");
    QTest::addColumn<QString>("refusal");
    QTest::newRow("kick") << u"cmdplykick"_s << QByteArray("clientkick ") << u"Player Kicked >Ben<"_s
                          << u"Select a player from the list to Kick first"_s
                          << u"Only Kick with Rcon access, not in Query Mode"_s;
    QTest::newRow("ban") << u"cmdplyban"_s << QByteArray("banclient ") << u"Player banned and kicked [Ben]"_s
                         << u"Select a player from the list to Ban first"_s
                         << u"Only Ban with Rcon access, not in Query Mode"_s;
    QTest::newRow("temporary ban") << u"cmdtempban"_s << QByteArray("tempbanclient ")
                                   << u"Player temporary banned and kicked [Ben]"_s
                                   << u"Select a player from the list to temporary Ban first"_s
                                   << u"Only Temp Ban with Rcon access, not in Query Mode"_s;
}

/// The tab with a list of three players.
struct ThreePlayers {
    explicit ThreePlayers(const QByteArray &preferences = {}) : tab(preferences)
    {
        tab.put({ann, ben, cem});
        tab.populate();
        tab.server.forgetRequests();
        messages = tab.program.messages();
    }

    [[nodiscard]] QStringList newMessages() const { return tab.program.messages().mid(messages.size()); }

    PlayersTab tab;
    QStringList messages; ///< those from before
};

} // namespace

class PlayerActionsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theSelectedPlayerGoes_data() { buttons(); }
    void theSelectedPlayerGoes()
    {
        QFETCH(QString, button);
        QFETCH(QByteArray, command);
        QFETCH(QString, note);
        ThreePlayers on;
        const QString pane = on.tab.program.pane();
        on.tab.select(1);
        on.tab.program.click(button);
        QCOMPARE(on.tab.server.requests(), QList<QByteArray>{request(command + '5')});
        QCOMPARE(on.newMessages(), QStringList{note});
        QCOMPARE(on.tab.grid(), (QList<QStringList>{cells(ann), cells(cem)}));
        QVERIFY2(on.tab.selected().isEmpty(), "a second click must not hit the next player");
        QVERIFY(!on.tab.server.game().players().at(5));
        const QString said = on.tab.program.pane().mid(pane.size());
        QVERIFY(said.contains(u">>RCON sent ["_s) &&
                said.contains(u"] \x18"_s + QString::fromLatin1(command) + u"5\x18\r\n"_s));
    }

    // Somebody else may be in the slot that stands in the row's second field, the score.
    void aRowInTheFirstColumnIsAboutItsOwnSlot_data()
    {
        QTest::addColumn<int>("slot");
        QTest::addColumn<QByteArray>("rows");
        QTest::newRow("three digits") << 103
                                      << "103     5   48 100103 Dan   50 10.0.0.103:28960 1103 25000\n"
                                         "104     3   48 100104 Eve   50 10.0.0.104:28960 1104 25000\n"_ba;
        QTest::newRow("aligned to the left") << 9
                                             << "9   5     48   100009 Dan   50 10.0.0.9:28960 1009 25000\n"
                                                "10  3     48   100010 Eve   50 10.0.0.10:28960 1010 25000\n"_ba;
    }
    void aRowInTheFirstColumnIsAboutItsOwnSlot()
    {
        QFETCH(int, slot);
        QFETCH(QByteArray, rows);
        PlayersTab tab;
        const Player dan = somebody(slot, u"Dan"_s, 48, 5);
        const Player eve = somebody(slot + 1, u"Eve"_s, 48, 3);
        tab.put({ben, dan, eve});
        tab.server.answer("status", {statusHeading + rows + '\n'});
        tab.populate();
        QCOMPARE(tab.grid(), (QList<QStringList>{cells(dan), cells(eve)}));

        tab.server.forgetRequests();
        tab.select(0);
        tab.program.click(u"cmdplykick"_s);
        QCOMPARE(tab.server.commands(), QList<QByteArray>{"clientkick " + QByteArray::number(slot)});
        QVERIFY2(tab.server.game().players().at(5), "somebody else was kicked");
    }

    void theLastPlayerLeavesAnEmptyList_data() { buttons(); }
    void theLastPlayerLeavesAnEmptyList()
    {
        QFETCH(QString, button);
        QFETCH(QByteArray, command);
        PlayersTab tab;
        tab.put({ben});
        tab.populate();
        tab.select(0);
        tab.program.click(button);
        QCOMPARE(tab.server.commands().constLast(), command + '5');
        QVERIFY(tab.grid().isEmpty());
        tab.program.click(button);
        QCOMPARE(tab.program.prompts.takeBoxes().size(), 1);
        QCOMPARE(tab.server.commands().size(), 2);
    }

    void withoutASelectionNothingIsSent_data() { buttons(); }
    void withoutASelectionNothingIsSent()
    {
        QFETCH(QString, button);
        QFETCH(QString, select);
        ThreePlayers on;
        for (const bool queryMode : {false, true}) {
            on.tab.tickBox(u"chkplyq"_s, queryMode);
            on.tab.program.click(button);
            QCOMPARE(on.tab.program.prompts.takeBoxes(), QList<Box>{information(u"No player"_s, select)});
        }
        QVERIFY(on.tab.server.requests().isEmpty());
        QVERIFY(on.newMessages().isEmpty());
        QCOMPARE(on.tab.column(1), (QStringList{u"3"_s, u"5"_s, u"9"_s}));
    }

    void inQueryModeNothingIsSent_data() { buttons(); }
    void inQueryModeNothingIsSent()
    {
        QFETCH(QString, button);
        QFETCH(QString, refusal);
        ThreePlayers on;
        for (const bool filledSo : {false, true}) {
            on.tab.tickBox(u"chkplyq"_s);
            if (filledSo)
                on.tab.populate();
            on.tab.server.forgetRequests();
            const QList<QStringList> grid = on.tab.grid();
            on.tab.select(1);
            on.tab.program.click(button);
            QCOMPARE(on.tab.program.prompts.takeBoxes(), QList<Box>{information(u"Need Rcon Access"_s, refusal)});
            QVERIFY(on.tab.server.requests().isEmpty());
            QCOMPARE(on.tab.grid(), grid);
        }
        QVERIFY(on.newMessages().isEmpty());
    }

    void aListReadMeanwhileLosesWhoIsStillInIt_data() { buttons(); }
    void aListReadMeanwhileLosesWhoIsStillInIt()
    {
        QFETCH(QString, button);
        QFETCH(QByteArray, command);
        QFETCH(QString, note);
        ThreePlayers on;
        on.tab.select(1);
        atRequest(on.tab.server, command + '5', [&] { on.tab.populate(); });
        on.tab.program.click(button);
        QVERIFY(on.tab.program.prompts.takeBoxes().isEmpty());
        QCOMPARE(on.newMessages(), QStringList{note});
        QCOMPARE(on.tab.server.commands(), (QList<QByteArray>{command + '5', "status"}));
        QCOMPARE(on.tab.column(1), (QStringList{u"3"_s, u"9"_s}));
    }

    // Somebody else may have come into his slot by then, or he may have come back with another name.
    void aListReadMeanwhileWithoutHimLosesNobody_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<bool>("isReplaced");
        QTest::newRow("kicked and gone") << u"cmdplykick"_s << QByteArray("clientkick ") << false;
        QTest::newRow("kicked, and somebody else came") << u"cmdplykick"_s << QByteArray("clientkick ") << true;
        QTest::newRow("banned and gone") << u"cmdplyban"_s << QByteArray("banclient ") << false;
        QTest::newRow("banned, and somebody else came") << u"cmdplyban"_s << QByteArray("banclient ") << true;
        QTest::newRow("banned for a time and gone") << u"cmdtempban"_s << QByteArray("tempbanclient ") << false;
    }
    void aListReadMeanwhileWithoutHimLosesNobody()
    {
        QFETCH(QString, button);
        QFETCH(QByteArray, command);
        QFETCH(bool, isReplaced);
        ThreePlayers on;
        on.tab.select(1);
        QList<QStringList> grid;
        atRequest(on.tab.server, command + '5', [&] {
            on.tab.server.game().players().remove(5);
            if (isReplaced)
                on.tab.put({somebody(5, u"Dan"_s)});
            on.tab.populate();
            grid = on.tab.grid();
        });
        on.tab.program.click(button);
        QVERIFY(on.tab.program.prompts.takeBoxes().isEmpty());
        QCOMPARE(grid.size(), isReplaced ? 3 : 2);
        QCOMPARE(on.tab.grid(), grid);
    }

    void theRowThatIsShownSelectedIsTheOneThatGoes_data() { buttons(); }
    void theRowThatIsShownSelectedIsTheOneThatGoes()
    {
        QFETCH(QString, button);
        QFETCH(QByteArray, command);
        ThreePlayers on;
        on.tab.select(1);
        on.tab.sortOn(4); // Cem 20, Ann 9, Ben 4
        QCOMPARE(on.tab.selected(), QStringList{u"5"_s});
        on.tab.program.click(button);
        QCOMPARE(on.tab.column(1), (QStringList{u"9"_s, u"3"_s}));
        on.tab.select(0);
        on.tab.program.click(button);
        QCOMPARE(on.tab.server.commands(), (QList<QByteArray>{command + '5', command + '9'}));
        QCOMPARE(on.tab.grid(), QList<QStringList>{cells(ann)});
    }

    void theNoteNamesThePlayerAsShown_data()
    {
        QTest::addColumn<bool>("removes");
        QTest::addColumn<QString>("note");
        QTest::newRow("cleaned") << true << u"Player Kicked ><b>Bob</b>&amp;<"_s;
        QTest::newRow("as received") << false << u"Player Kicked >^1<b>Bob</b>&amp;^7<"_s;
    }

    void theNoteNamesThePlayerAsShown()
    {
        QFETCH(bool, removes);
        QFETCH(QString, note);
        PlayersTab tab;
        tab.put({somebody(4, u"^1<b>Bob</b>&amp;"_s)});
        tab.tickBox(u"chkremcol"_s, removes);
        tab.populate();
        tab.select(0);
        tab.tickBox(u"chkremcol"_s, !removes); // without effect on what is listed
        tab.program.click(u"cmdplykick"_s);
        QCOMPARE(tab.program.messages().constLast(), note);
    }

    void whatTheServerSaysIsNotLookedAt()
    {
        ThreePlayers on;
        on.tab.server.game().players().remove(5);
        on.tab.select(1);
        on.tab.program.click(u"cmdplykick"_s);
        QCOMPARE(on.newMessages(), QStringList{u"Player Kicked >Ben<"_s});
        QCOMPARE(on.tab.grid(), (QList<QStringList>{cells(ann), cells(cem)}));
    }

    void aSilentServerIsToldOfByTheExchange()
    {
        ThreePlayers on;
        on.tab.server.setSilent(true);
        on.tab.select(1);
        on.tab.program.click(u"cmdplyban"_s);
        QCOMPARE(on.tab.program.prompts.takeBoxes(), QList<Box>{noResponseBox()});
        QCOMPARE(on.tab.grid(), (QList<QStringList>{cells(ann), cells(cem)}));
    }
};

WINDOW_TEST(PlayerActionsTest)
#include "tst_player_actions.moc"
