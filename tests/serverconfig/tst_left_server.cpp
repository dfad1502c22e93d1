// SPDX-License-Identifier: MIT
#include "two_servers.h"
#include "window_test.h"

#include <QLineEdit>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;

/// What is done on one server stays there, and what is done at once is done as it was asked for.
class LeftServerTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void whatWasNotSentKeepsItsMarkForTheNextSending()
    {
        TwoServers servers;
        Program &program = servers.program;
        program.setText(u"txtmaxping"_s, u"1"_s);
        program.setText(u"txtmaxrate"_s, u"2"_s);
        servers.leaveAt("sv_maxping 1");
        program.click(u"cmdservsetbasics"_s);
        QCOMPARE(program.prompts.takeBoxes().size(), 1);
        QCOMPARE(servers.second.commands(), QList<QByteArray>());
        QVERIFY(!program.find<QLineEdit>(u"txtmaxping"_s)->property("DataChanged").toBool());
        QVERIFY(program.find<QLineEdit>(u"txtmaxrate"_s)->property("DataChanged").toBool());

        program.click(u"cmdservsetbasics"_s);
        QCOMPARE(program.prompts.takeBoxes().size(), 1);
        QCOMPARE(servers.second.commands(), QList<QByteArray>{"sv_maxrate 2"});
    }

    void theNextServersMapIsNotRestarted_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QByteArray>("command");
        QTest::newRow("game type") << u"cmdcod_0"_s << QByteArray("set g_gametype sd");
        QTest::newRow("password") << u"cmdservsetpass"_s << QByteArray("g_password \"x\"");
    }

    void theNextServersMapIsNotRestarted()
    {
        QFETCH(QString, button);
        QFETCH(QByteArray, command);
        TwoServers servers;
        servers.program.setText(u"txtservpass"_s, u"x"_s);
        servers.leaveAt(command);
        const qsizetype lines = servers.program.messages().size();
        servers.program.click(button);
        QCOMPARE(servers.first.commands().first(), command);
        QCOMPARE(servers.second.commands(), QList<QByteArray>());
        QVERIFY(servers.program.messages().size() > lines); // that of the new connection
        QVERIFY(!servers.program.messages().constLast().contains(u"changed"));
    }

    void theNextServerIsNotToldToHaveDoneIt_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QByteArray>("command");
        QTest::newRow("configuration file") << u"cmdcfgexec"_s << QByteArray("exec server.cfg");
        QTest::newRow("rotation") << u"cmdsetservedit"_s << QByteArray("sv_maprotationcurrent \"map x\"");
        QTest::newRow("status") << u"cmdstatus"_s << QByteArray("Status");
        QTest::newRow("information") << u"cmsserverinfo"_s << QByteArray("serverinfo");
        QTest::newRow("join password removed") << u"cmdservrempass"_s << QByteArray("g_password \"\"");
        QTest::newRow("chat message") << u"cmdmessage"_s << QByteArray("say ^3Molvark ^5(1.0)> ^7RemoteUser hello");
    }

    void theNextServerIsNotToldToHaveDoneIt()
    {
        QFETCH(QString, button);
        QFETCH(QByteArray, command);
        TwoServers servers;
        servers.program.find<QPlainTextEdit>(u"txtcurmaprot_1"_s)->setPlainText(u"map x"_s);
        servers.program.prompts.lines = {u"hello"_s};
        servers.leaveAt(command);
        servers.program.click(button);
        servers.program.prompts.takeBoxes();
        QCOMPARE(servers.first.commands().first(), command);
        QCOMPARE(servers.second.commands(), QList<QByteArray>());
        QCOMPARE(servers.messagesOfSecond(), QStringList());
    }

    void mapsAreNotAskedOfTheNextServer()
    {
        TwoServers servers;
        servers.first.answer("dir maps/mp d3dbsp", {"too short\n"});
        servers.leaveAt("dir maps/mp d3dbsp");
        servers.program.click(u"cmdpopmaps"_s);
        servers.program.prompts.takeBoxes();
        QCOMPARE(servers.second.commands(), QList<QByteArray>());
        QVERIFY(servers.program.rows(u"lstmaps"_s).isEmpty());
    }

    void theOtherServersReplyFillsNothing()
    {
        TwoServers servers;
        servers.first.answer("dvarlist sv_*", {"S sv_hostname \"First\"\nS sv_maxclients \"8\"\n"});
        servers.second.answer("dvarlist scr_*", {"S scr_motd \"Second\"\n"});
        servers.leaveAt("dvarlist sv_*");
        servers.program.click(u"cmdservpop"_s);
        QCOMPARE(servers.second.commands(), QList<QByteArray>());
        QCOMPARE(servers.program.text(u"txtservermotd"_s), QString());
        QVERIFY(!servers.program.progress()->isVisible());
        QVERIFY(servers.program.showsRepliesOf(servers.second));
        servers.second.answerAsUsual("status");
        QVERIFY(servers.program.isRefreshingFrom(servers.second));
    }

    void twoClicksRestartTheMapTwiceAndWaitForNothing()
    {
        TwoServers servers;
        servers.first.answer("map_restart", {});
        QTimer::singleShot(0, &servers.first, [&] { servers.program.click(u"cmdrestartmap"_s); });
        servers.program.click(u"cmdrestartmap"_s);
        QCOMPARE(servers.program.messages().last(2), QStringList(2, u"Map Restart"_s));
        servers.program.exchange.waitseconds(20);
        QCOMPARE(servers.first.commands(), QList<QByteArray>(2, "map_restart"));
    }

    void aSilentServerLeavesTheStockMaps()
    {
        TwoServers servers;
        servers.first.setSilent(true);
        atRequest(servers.first, "dir maps/mp d3dbsp", [&] { servers.program.click(u"cmddefmaps"_s); });
        servers.program.click(u"cmdpopmaps"_s);
        QCOMPARE(servers.program.prompts.takeBoxes().size(), 1);
        QCOMPARE(servers.program.rows(u"lstmaps"_s).size(), 12);
    }

    void aLimitIsSentAsItWasChecked()
    {
        TwoServers servers;
        servers.program.setText(u"txtdmtimelim"_s, u"45"_s);
        atRequest(servers.first, "scr_dm_scorelimit 50", [&] { servers.program.setText(u"txtdmtimelim"_s, u"abc"_s); });
        servers.program.click(u"cmdsetdm"_s);
        QCOMPARE(servers.first.commands(), QList<QByteArray>({"scr_dm_scorelimit 50", "scr_dm_timelimit 45"}));
        QCOMPARE(servers.program.messages().constLast(), u"DM time limit updated to 45"_s);
    }
};

WINDOW_TEST(LeftServerTest)
#include "tst_left_server.moc"
