// SPDX-License-Identifier: MIT
#include "other_windows.h"
#include "player_grid.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int hanging = 999;
const QByteArray onAtThree = "autokick999=1\r\nautokick999int=3\r\n";

QString kickNote(const QString &name)
{
    return u"Player Auto Kicked for 999 ping ["_s + name + u']';
}

/// The commands that one tick sends.
QList<QByteArray> tickCommands(PlayersTab &tab)
{
    tab.server.forgetRequests();
    tab.tick();
    return tab.server.commands();
}

const QList<QByteArray> noKick{"status"};

/// Switches the kick in the preferences window, and saves that.
void switchKick(Program &program, bool on)
{
    program.trigger(u"mpref"_s);
    const QWidget *preferences = otherWindow(u"frmpref"_s);
    QVERIFY(preferences);
    preferences->findChild<QAbstractButton *>(u"chkauto999"_s)->setChecked(on);
    preferences->findChild<QAbstractButton *>(u"cmdsave"_s)->click();
    QCOMPARE(program.prompts.takeBoxes().size(), 2); // the question, and that it is done
}

} // namespace

/// The kick of players who stay at ping 999.
class RefreshKickTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    // The populate of the ticked box is number one.
    void theThirdPopulateKicks()
    {
        PlayersTab tab(onAtThree);
        tab.put({somebody(3, u"Ann"_s), somebody(5, u"^1Ben"_s, hanging), somebody(9, u"Cem"_s)});
        tab.tickBox(u"chkremcol"_s, false);
        tab.tickBox(u"chkautoupdate"_s);
        QCOMPARE(tab.server.commands(), noKick);
        QCOMPARE(tickCommands(tab), noKick);
        const QStringList messages = tab.program.messages();
        const QString pane = tab.program.pane();
        QCOMPARE(tickCommands(tab), (QList<QByteArray>{"status", "clientkick 5"}));
        QCOMPARE(tab.program.messages(), messages + QStringList{kickNote(u"Ben"_s)});
        QCOMPARE(tab.grid(), (QList<QStringList>{cells(somebody(3, u"Ann^7"_s)), cells(somebody(9, u"Cem^7"_s))}));
        QVERIFY(!tab.server.game().players().at(5));
        QCOMPARE(tickCommands(tab), noKick);
    }

    // Whoever sits in that slot by then.
    void switchedOffItKicksNobody()
    {
        PlayersTab tab("autokick999=1\r\nautokick999int=2\r\n");
        tab.put({somebody(5, u"Ben"_s, hanging)});
        for (int populate = 0; populate < 3; ++populate)
            tab.populate(); // counts, and does not kick
        switchKick(tab.program, false);
        tab.server.game().players().remove(5);
        tab.put({somebody(5, u"Innocent"_s)});
        tab.tickBox(u"chkautoupdate"_s);
        for (int tick = 0; tick < 3; ++tick)
            QCOMPARE(tickCommands(tab), noKick);
        QVERIFY(tab.server.game().players().at(5));
    }

    void switchedOffWhileOneKickWaitsItEndsTheRest()
    {
        PlayersTab tab("autokick999=1\r\nautokick999int=2\r\n");
        tab.put({somebody(5, u"Ben"_s, hanging), somebody(6, u"Cem"_s, hanging)});
        tab.tickBox(u"chkautoupdate"_s);
        atRequest(tab.server, "clientkick 5", [&] { switchKick(tab.program, false); });
        QCOMPARE(tickCommands(tab), (QList<QByteArray>{"status", "clientkick 5"}));
        QVERIFY(tab.server.game().players().at(6));
    }

    // Ben has left; Ann, who is well again, has the slot number that his record would take from hers.
    void switchedOnAgainItKicksNobodyForWhatWasCountedBefore()
    {
        PlayersTab tab(onAtThree);
        tab.put({somebody(3, u"Ann"_s, hanging), somebody(5, u"Ben"_s, hanging)});
        for (int populate = 0; populate < 3; ++populate)
            tab.populate();
        switchKick(tab.program, false);
        switchKick(tab.program, true);
        tab.server.game().players().remove(5);
        tab.server.game().players().remove(3);
        tab.put({somebody(3, u"Ann"_s)});
        tab.tickBox(u"chkautoupdate"_s);
        for (int tick = 0; tick < 2; ++tick)
            QCOMPARE(tickCommands(tab), noKick);
        QVERIFY(tab.server.game().players().at(3));

        tab.put({somebody(5, u"Ben"_s, hanging)}); // who comes back hanging is counted anew
        QCOMPARE(tickCommands(tab), noKick);
        QCOMPARE(tickCommands(tab), noKick);
        QCOMPARE(tickCommands(tab), (QList<QByteArray>{"status", "clientkick 5"}));
    }

    void theCountIsAPreference_data()
    {
        QTest::addColumn<QByteArray>("preferences");
        QTest::addColumn<int>("kickingTick"); ///< 0 for none of the first six
        QTest::newRow("1") << QByteArray("autokick999=1\r\nautokick999int=1\r\n") << 1;
        QTest::newRow("2") << QByteArray("autokick999=1\r\nautokick999int=2\r\n") << 1;
        QTest::newRow("6") << QByteArray("autokick999=1\r\nautokick999int=6\r\n") << 5;
        QTest::newRow("not said") << QByteArray("autokick999=1\r\n") << 2;
        QTest::newRow("on in another word") << QByteArray("autokick999=x\r\nautokick999int=2\r\n") << 1;
        QTest::newRow("off") << QByteArray("autokick999=0\r\nautokick999int=1\r\n") << 0;
        QTest::newRow("nothing said") << QByteArray() << 0;
    }

    void theCountIsAPreference()
    {
        QFETCH(QByteArray, preferences);
        QFETCH(int, kickingTick);
        PlayersTab tab(preferences);
        tab.put({somebody(5, u"Ben"_s, hanging)});
        tab.tickBox(u"chkautoupdate"_s);
        QCOMPARE(tab.server.commands(), noKick);
        for (int number = 1; number <= 6; ++number) {
            QList<QByteArray> wanted = noKick;
            if (number == kickingTick)
                wanted.append("clientkick 5");
            QCOMPARE(tickCommands(tab), wanted);
            QCOMPARE(tab.grid().isEmpty(), kickingTick > 0 && number >= kickingTick);
        }
    }

    void populatesByHandCountToo()
    {
        PlayersTab tab(onAtThree);
        tab.put({somebody(5, u"Ben"_s, hanging)});
        for (int number = 0; number < 4; ++number)
            tab.populate();
        tab.tickBox(u"chkautoupdate"_s);
        QCOMPARE(tab.server.commands(), QList<QByteArray>(5, "status"));
        QCOMPARE(tickCommands(tab), (QList<QByteArray>{"status", "clientkick 5"}));
    }

    void aPingThatIsBackToNormalStartsTheCountAnew()
    {
        PlayersTab tab(onAtThree);
        tab.put({somebody(5, u"Ben"_s, hanging)});
        tab.tickBox(u"chkautoupdate"_s);
        QCOMPARE(tickCommands(tab), noKick);
        tab.put({somebody(5, u"Ben"_s, 50)});
        QCOMPARE(tickCommands(tab), noKick);
        tab.put({somebody(5, u"Ben"_s, hanging)});
        QCOMPARE(tickCommands(tab), noKick);
        QCOMPARE(tickCommands(tab), noKick);
        QCOMPARE(tickCommands(tab), (QList<QByteArray>{"status", "clientkick 5"}));
    }

    void inQueryModeNobodyIsKicked()
    {
        PlayersTab tab("autokick999=1\r\nautokick999int=1\r\nusequery=1\r\n");
        tab.put({somebody(5, u"Ben"_s, hanging)});
        tab.tickBox(u"chkautoupdate"_s);
        for (int number = 0; number < 3; ++number)
            QCOMPARE(tickCommands(tab), QList<QByteArray>{"getstatus"});
    }

    void severalAreKickedInTheOrderTheyWereFound()
    {
        PlayersTab tab(onAtThree);
        tab.sortOn(4);
        tab.put({somebody(3, u"Ann"_s, hanging, 1), somebody(5, u"Ben"_s, 50, 2), somebody(9, u"Cem"_s, hanging, 3)});
        tab.tickBox(u"chkautoupdate"_s);
        tab.tick();
        QCOMPARE(tickCommands(tab), (QList<QByteArray>{"status", "clientkick 3", "clientkick 9"}));
        QCOMPARE(tab.grid(), QList<QStringList>{cells(somebody(5, u"Ben"_s, 50, 2))});
    }

    void disconnectingDuringTheKicksSendsNothingMore()
    {
        PlayersTab tab(onAtThree);
        tab.put({somebody(3, u"Ann"_s, hanging), somebody(5, u"Ben"_s, hanging)});
        tab.tickBox(u"chkautoupdate"_s);
        tab.tick();
        asSoonAs(
            &tab.server,
            [&] { return tab.server.commands().contains("clientkick 3") && tab.program.session.rconarrived; },
            [&] { tab.program.click(u"cmdconnect"_s); });
        QCOMPARE(tickCommands(tab), (QList<QByteArray>{"status", "clientkick 3"}));
        QVERIFY(!tab.program.messages().contains(kickNote(u"Ben"_s)));
        QVERIFY(tab.program.prompts.takeBoxes().isEmpty());
    }

    void closingTheWindowDuringTheKicksSendsNothingMore()
    {
        PlayersTab tab(onAtThree);
        tab.put({somebody(3, u"Ann"_s, hanging), somebody(5, u"Ben"_s, hanging)});
        tab.tickBox(u"chkautoupdate"_s);
        tab.tick();
        atRequest(tab.server, "clientkick 3", [&] { tab.program.window.close(); });
        QCOMPARE(tickCommands(tab), (QList<QByteArray>{"status", "clientkick 3"}));
    }

    void playersOfTheSameNameShareACount()
    {
        PlayersTab tab(onAtThree);
        tab.put({somebody(3, u"^1Bob"_s, hanging), somebody(5, u"Bob"_s, hanging)});
        tab.tickBox(u"chkautoupdate"_s);
        QCOMPARE(tickCommands(tab), (QList<QByteArray>{"status", "clientkick 3"}));
        QCOMPARE(tab.column(1), QStringList{u"5"_s});
    }

    void whoLeavesIsForgottenAtTheNextTick()
    {
        PlayersTab tab(onAtThree);
        const Player ann = somebody(3, u"Ann"_s, hanging);
        tab.put({ann, somebody(5, u"Ben"_s, hanging)});
        tab.tickBox(u"chkautoupdate"_s);
        QCOMPARE(tickCommands(tab), noKick);
        tab.server.game().players().remove(3);
        QCOMPARE(tickCommands(tab), (QList<QByteArray>{"status", "clientkick 5"}));
        tab.put({ann});
        QCOMPARE(tickCommands(tab), noKick);
        QCOMPARE(tickCommands(tab), noKick);
        QCOMPARE(tickCommands(tab), (QList<QByteArray>{"status", "clientkick 3"}));
    }

    // The last record is never swept.
    void whoWasFoundLastIsRememberedWhenHeLeaves()
    {
        PlayersTab tab(onAtThree);
        const Player ann = somebody(3, u"Ann"_s, hanging);
        tab.put({ann});
        tab.tickBox(u"chkautoupdate"_s);
        QCOMPARE(tickCommands(tab), noKick);
        tab.server.game().players().remove(3);
        for (int number = 0; number < 3; ++number)
            QCOMPARE(tickCommands(tab), noKick);
        tab.put({ann});
        QCOMPARE(tickCommands(tab), (QList<QByteArray>{"status", "clientkick 3"}));
    }

    // A record that moves up keeps the slot number of the place.
    void whoMovesUpInTheListIsKickedByTheOtherNumber()
    {
        PlayersTab tab(onAtThree);
        tab.put({somebody(3, u"Ann"_s, hanging), somebody(5, u"Ben"_s, hanging)});
        tab.tickBox(u"chkautoupdate"_s);
        QCOMPARE(tickCommands(tab), noKick);
        tab.put({somebody(3, u"Ann"_s, 50)});
        QCOMPARE(tickCommands(tab), (QList<QByteArray>{"status", "clientkick 3"}));
        QCOMPARE(tab.program.messages().constLast(), kickNote(u"Ben"_s));
        QCOMPARE(tab.column(1), QStringList{u"5"_s});
    }

    void aKickedNumberThatIsNotListedLeavesTheList()
    {
        PlayersTab tab(onAtThree);
        const auto ann = somebody(3, u"Ann"_s, hanging);
        tab.put({ann});
        tab.tickBox(u"chkautoupdate"_s);
        tab.tick();
        tab.server.game().players().remove(3);
        tab.put({somebody(8, u"Ann"_s, hanging)}); // the same name in another slot
        QCOMPARE(tickCommands(tab), (QList<QByteArray>{"status", "clientkick 3"}));
        QCOMPARE(tab.column(1), QStringList{u"8"_s});
    }

    // Trying a cut table again does not count anybody twice.
    void aCutTableCountsOnce()
    {
        PlayersTab tab(onAtThree);
        const QByteArray line = "  3     7  999 123456 Ann                  50 10.0.0.1:28960        1234 25000\n";
        tab.server.answer("status", {statusHeading + line + "  5     0   5"});
        tab.tickBox(u"chkautoupdate"_s);
        QCOMPARE(tickCommands(tab), noKick);
        QCOMPARE(tickCommands(tab), (QList<QByteArray>{"status", "clientkick 3"}));
    }

    void nobodyIsSelectedAfterAKick()
    {
        PlayersTab tab(onAtThree);
        tab.put({somebody(3, u"Ann"_s), somebody(5, u"Ben"_s, hanging), somebody(9, u"Cem"_s)});
        tab.tickBox(u"chkautoupdate"_s);
        tab.tick();
        atRequest(tab.server, "clientkick 5", [&] { tab.select(1); });
        tab.tick();
        QCOMPARE(tab.column(1), (QStringList{u"3"_s, u"9"_s}));
        QCOMPARE(tab.selected(), QStringList());
    }
};

WINDOW_TEST(RefreshKickTest)
#include "tst_refresh_kick.moc"
