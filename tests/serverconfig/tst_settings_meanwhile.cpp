// SPDX-License-Identifier: MIT
#include "settings_tab.h"

#include <QPushButton>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

const QList<QByteArray> threeGroups{"dvarlist sv_*", "dvarlist scr_*", "dvarlist cl_free*"};

void tick(const SettingsTab &tab)
{
    QMetaObject::invokeMethod(tab.program.find<QTimer>(u"tmrplayer"_s), "timeout");
}

/// Starts the refresh of the players, whose timer then rests but for `tick`.
void startRefresh(SettingsTab &tab)
{
    tab.program.click(u"chkautoupdate"_s);
    tab.program.find<QTimer>(u"tmrplayer"_s)->stop();
    tab.forget();
}

#define VERIFY_RESTING(tab)                                                                                            \
    do {                                                                                                               \
        QVERIFY(tab.program.progress()->isHidden());                                                                   \
        QVERIFY(tab.showsReplies());                                                                                   \
        QVERIFY(tab.isRefreshing());                                                                                   \
    } while (false)

} // namespace

/// What else may happen while the settings are read or sent: the program yields all the time.
class SettingsMeanwhileTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theRefreshSkipsItsTickWhileSettingsAreReadOrSent_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QByteArray>("command");
        QTest::newRow("reading the Server tab") << u"cmdservpop"_s << QByteArray("dvarlist scr_*");
        QTest::newRow("sending the Server tab") << u"cmdservsetbasics"_s << QByteArray("scr_motd\"x\"");
        QTest::newRow("reading the COD2 other tab") << u"cmdCodOther_1"_s << QByteArray("dvarlist scr_allow_*");
        QTest::newRow("sending the COD2 other tab") << u"cmdCodOther_0"_s << QByteArray("scr_allow_smokegrenades\"1\"");
        QTest::newRow("reading the maps") << u"cmdpopmaps"_s << QByteArray("dir maps/mp d3dbsp");
    }

    void theRefreshSkipsItsTickWhileSettingsAreReadOrSent()
    {
        QFETCH(QString, button);
        QFETCH(QByteArray, command);
        SettingsTab tab;
        startRefresh(tab);
        tab.program.setText(u"txtservermotd"_s, u"x"_s);
        tab.program.click(u"chkCodOther_0"_s);
        atRequest(tab.server, command, [&] { tick(tab); });
        tab.program.click(button);
        (void)tab.boxes(); // the question of the sends
        QVERIFY(tab.commands().contains(command));
        QVERIFY(!tab.commands().contains("status"));
        tick(tab);
        QCOMPARE(tab.commands().constLast(), "status");
    }

    void theRefreshRestsBehindAMapListThatDidNotCome()
    {
        SettingsTab tab;
        startRefresh(tab);
        tab.server.answer("dir maps/mp d3dbsp", {"nothing\n"});
        tab.program.click(u"cmdpopmaps"_s);
        QCOMPARE(tab.boxes().size(), 1);
        tab.forget();
        tick(tab);
        QCOMPARE(tab.commands(), QList<QByteArray>());
        tab.program.click(u"cmdservsetbasics"_s); // nothing to send, but it ends the reading
        QCOMPARE(tab.boxes().size(), 1);
        tick(tab);
        QCOMPARE(tab.commands(), QList<QByteArray>{"status"});
    }

    void anotherTabCanBeReadMeanwhile()
    {
        SettingsTab tab;
        atRequest(tab.server, "dvarlist scr_*", [&] { tab.program.click(u"cmdCodOther_1"_s); });
        tab.program.click(u"cmdservpop"_s);
        QCOMPARE(tab.commands(),
                 (QList<QByteArray>{"dvarlist sv_*", "dvarlist scr_*", "dvarlist scr_allow_*", "dvarlist cl_free*"}));
        QVERIFY(tab.check(u"chkCodOther_0"_s)->isChecked());
        VERIFY_RESTING(tab);
    }

    void aSecondClickOfTheSameButtonIsIgnored()
    {
        SettingsTab tab;
        atRequest(tab.server, "dvarlist scr_*", [&] { tab.program.click(u"cmdservpop"_s); });
        tab.program.click(u"cmdservpop"_s);
        QCOMPARE(tab.commands(), threeGroups);
        tab.forget();
        atRequest(tab.server, "dvarlist scr_allow_*", [&] { tab.program.click(u"cmdCodOther_1"_s); });
        tab.program.click(u"cmdCodOther_1"_s);
        QCOMPARE(tab.commands(), QList<QByteArray>{"dvarlist scr_allow_*"});
        tab.forget();
        tab.program.click(u"cmdservpop"_s); // and works again
        QCOMPARE(tab.commands(), threeGroups);
    }

    // The reply comes to a closed socket, so the command's next copy is refused as well.
    void disconnectingDuringAReadingIsTold()
    {
        SettingsTab tab;
        atRequest(tab.server, "dvarlist scr_*", [&] { tab.program.click(u"cmdconnect"_s); });
        tab.program.click(u"cmdservpop"_s);
        QCOMPARE(tab.boxes(), QList<Box>(2, notConnectedBox())); // of the second and the third group
        QCOMPARE(tab.server.commands(), threeGroups.first(2));
        QVERIFY(!tab.program.session.rconcollect);
        QVERIFY(tab.program.progress()->isHidden());
        tab.program.connectTo(tab.server);
        QVERIFY(tab.isRefreshing());
    }

    void disconnectingDuringASendIsToldForEachCommandThatIsLeft()
    {
        SettingsTab tab;
        for (const QString &box : {u"txtservername"_s, u"txtmaxping"_s, u"txtbantime"_s})
            tab.program.setText(box, u"1"_s);
        atRequest(tab.server, "sv_hostname\"1\"", [&] { tab.program.click(u"cmdconnect"_s); });
        tab.program.click(u"cmdservsetbasics"_s);
        const QList<Box> boxes = tab.boxes();
        QCOMPARE(boxes.sliced(1), QList<Box>(3, notConnectedBox()));
        QCOMPARE(tab.server.commands(), QList<QByteArray>{"sv_hostname\"1\""});
        tab.program.connectTo(tab.server);
        QVERIFY(tab.isRefreshing());
    }

    void closingTheWindowEndsWhatIsUnderWay_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QByteArray>("command");
        QTest::newRow("reading the Server tab") << u"cmdservpop"_s << QByteArray("dvarlist scr_*");
        QTest::newRow("reading the COD2 other tab") << u"cmdCodOther_1"_s << QByteArray("dvarlist scr_allow_*");
        QTest::newRow("reading the maps") << u"cmdpopmaps"_s << QByteArray("dir maps/mp d3dbsp");
        QTest::newRow("sending") << u"cmdservsetbasics"_s << QByteArray("sv_hostname\"1\"");
        QTest::newRow("setting a mode") << u"cmdsetdm"_s << QByteArray("scr_dm_scorelimit 50");
        QTest::newRow("setting search and destroy") << u"cmdsetsd"_s << QByteArray("scr_sd_graceperiod 15");
        QTest::newRow("setting the password") << u"cmdservsetpass"_s << QByteArray("g_password \"x\"");
        QTest::newRow("switching the game type") << u"cmdcod_0"_s << QByteArray("set g_gametype sd");
    }

    void closingTheWindowEndsWhatIsUnderWay()
    {
        QFETCH(QString, button);
        QFETCH(QByteArray, command);
        SettingsTab tab;
        tab.program.setText(u"txtservername"_s, u"1"_s);
        tab.program.setText(u"txtservermotd"_s, u"1"_s);
        tab.program.setText(u"txtservpass"_s, u"x"_s);
        bool closed = false;
        atRequest(tab.server, command, [&] { closed = tab.program.window.close(); });
        tab.program.click(button);
        (void)tab.boxes(); // the question at the beginning
        QVERIFY(closed);
        QCOMPARE(tab.server.commands().constLast(), command);
    }
};

WINDOW_TEST(SettingsMeanwhileTest)
#include "tst_settings_meanwhile.moc"
