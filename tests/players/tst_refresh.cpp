// SPDX-License-Identifier: MIT
#include "player_grid.h"

using namespace Qt::StringLiterals;

namespace {

/// The six buttons that the refresh disables, in the order of the tab, as "on" or "off".
QStringList buttons(const Program &program)
{
    QStringList states;
    for (const QString &button :
         {u"cmdplypop"_s, u"cmdsavenames"_s, u"cmdplykick"_s, u"cmdplymessage"_s, u"cmdplyban"_s, u"cmdtempban"_s})
        states.append(program.find<QWidget>(button)->isEnabled() ? u"on"_s : u"off"_s);
    return states;
}

const QStringList allOn(6, u"on"_s);
const QStringList allOff(6, u"off"_s);

} // namespace

class RefreshTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void tickingTheBoxDisablesTheButtonsAndPopulatesOnce()
    {
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s)});
        QCOMPARE(buttons(tab.program), allOn);
        tab.program.click(u"chkautoupdate"_s);
        QCOMPARE(buttons(tab.program), allOff);
        QVERIFY(tab.timer()->isActive());
        QCOMPARE(tab.timer()->interval(), 10'000);
        QCOMPARE(tab.server.commands(), QList<QByteArray>{"status"});
        QCOMPARE(tab.grid(), QList<QStringList>{cells(somebody(3, u"Ann"_s))});
        // What does not act on a row stays.
        for (const QString &control : {u"chkremcol"_s, u"chkplyq"_s, u"chkautoupdate"_s, u"complayersort"_s})
            QVERIFY2(tab.program.find<QWidget>(control)->isEnabled(), qPrintable(control));

        tab.program.click(u"chkautoupdate"_s);
        QCOMPARE(buttons(tab.program), allOn);
        QVERIFY(!tab.timer()->isActive());
        QCOMPARE(tab.server.commands().size(), 1);
        QCOMPARE(tab.grid().size(), 1);
    }

    void disconnectedTheBoxClearsItselfAndTheButtonsStay()
    {
        Program program;
        program.start();
        program.click(u"chkautoupdate"_s);
        QVERIFY(!program.find<QAbstractButton>(u"chkautoupdate"_s)->isChecked());
        QCOMPARE(buttons(program), allOn);
        QVERIFY(!program.find<QTimer>(u"tmrplayer"_s)->isActive());
    }

    void disconnectingEnablesTheButtonsAgain()
    {
        PlayersTab tab;
        tab.tickBox(u"chkautoupdate"_s);
        tab.program.click(u"cmdconnect"_s);
        QCOMPARE(buttons(tab.program), allOn);
        QVERIFY(!tab.program.find<QAbstractButton>(u"chkautoupdate"_s)->isChecked());
        QVERIFY(!tab.timer()->isActive());
    }

    void eachTickReadsTheListAnew()
    {
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s)});
        tab.tickBox(u"chkautoupdate"_s);
        tab.put({somebody(5, u"Ben"_s)});
        tab.tick();
        QCOMPARE(tab.column(1), (QStringList{u"3"_s, u"5"_s}));
        tab.server.game().players().remove(3);
        tab.tick();
        QCOMPARE(tab.column(1), QStringList{u"5"_s});
        QCOMPARE(tab.server.commands(), QList<QByteArray>(3, "status"));
    }

    void theTimerTicksByItself()
    {
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s)});
        tab.tickBox(u"chkautoupdate"_s);
        tab.timer()->setInterval(0);
        QTRY_VERIFY(tab.server.commands().size() >= 3);
        tab.tickBox(u"chkautoupdate"_s, false);
        const qsizetype sent = tab.server.commands().size();
        for (int turn = 0; turn < 50; ++turn)
            tab.program.exchange.yield();
        QCOMPARE(tab.server.commands().size(), sent);
    }

    void inQueryModeATickQueries()
    {
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s)});
        tab.tickBox(u"chkautoupdate"_s);
        tab.tickBox(u"chkplyq"_s);
        tab.server.forgetRequests();
        tab.tick();
        QCOMPARE(tab.server.commands(), QList<QByteArray>{"getstatus"});
        QCOMPARE(tab.column(1), QStringList{u""_s});
    }

    // Also the kicks: Ann has been at ping 999 often enough.
    void aTickDuringASettingsExchangeIsSkipped()
    {
        PlayersTab tab("autokick999=1\r\nautokick999int=1\r\n");
        tab.put({somebody(3, u"Ann"_s, 999)});
        tab.tickBox(u"chkautoupdate"_s);
        tab.server.forgetRequests();
        atRequest(tab.server, "dvarlist scr_*", [&] { tab.tick(); });
        tab.program.click(u"cmdservpop"_s);
        QCOMPARE(tab.server.commands(), (QList<QByteArray>{"dvarlist sv_*", "dvarlist scr_*", "dvarlist cl_free*"}));
        QCOMPARE(tab.grid().size(), 1);
        tab.server.forgetRequests();
        tab.tick();
        QCOMPARE(tab.server.commands(), (QList<QByteArray>{"status", "clientkick 3"}));
    }

    void aTickDuringAPopulateIsSkipped()
    {
        PlayersTab tab("autokick999=1\r\nautokick999int=1\r\n");
        tab.put({somebody(3, u"Ann"_s, 999), somebody(5, u"Ben"_s)});
        atRequest(tab.server, "status", [&] { tab.tick(); });
        tab.tickBox(u"chkautoupdate"_s);
        QCOMPARE(tab.server.commands(), QList<QByteArray>{"status"});
        QCOMPARE(tab.column(1), (QStringList{u"3"_s, u"5"_s}));
    }

    void aTickDuringTheKicksIsSkipped()
    {
        PlayersTab tab("autokick999=1\r\nautokick999int=1\r\n");
        tab.put({somebody(3, u"Ann"_s, 999), somebody(5, u"Ben"_s)});
        tab.tickBox(u"chkautoupdate"_s);
        tab.server.forgetRequests();
        atRequest(tab.server, "clientkick 3", [&] { tab.tick(); });
        tab.tick();
        QCOMPARE(tab.server.commands(), (QList<QByteArray>{"status", "clientkick 3"}));
        QCOMPARE(tab.column(1), QStringList{u"5"_s});
    }

    void aTickMayComeWhileABoxIsOpen()
    {
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s)});
        tab.tickBox(u"chkautoupdate"_s);
        tab.put({somebody(5, u"Ben"_s)});
        tab.program.prompts.whileOpen = [&] { tab.tick(); };
        tab.program.trigger(u"clearrcon"_s);
        QCOMPARE(tab.program.prompts.takeBoxes().size(), 1);
        QCOMPARE(tab.column(1), (QStringList{u"3"_s, u"5"_s}));
    }

    void aSilentServerStillBringsTheBoxOfTheExchange()
    {
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s)});
        tab.tickBox(u"chkautoupdate"_s);
        tab.server.setSilent(true);
        tab.tick();
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{noResponseBox()});
        QVERIFY(tab.grid().isEmpty());
        tab.server.setSilent(false);
        tab.tick();
        QCOMPARE(tab.grid().size(), 1);
    }
};

WINDOW_TEST(RefreshTest)
#include "tst_refresh.moc"
