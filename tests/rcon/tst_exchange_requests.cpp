// SPDX-License-Identifier: MIT
#include "bench.h"
#include "link.h"
#include "window_test.h"

#include <QStringConverter>

using namespace Qt::StringLiterals;

/// What goes out for one command, what the caller finds afterwards, and what the RCON pane shows of it.
class ExchangeRequestsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void aRequestIsHeaderRconPasswordBlankAndCommand()
    {
        Link link;
        link.server.answer("map mp_toujane", {"loading\n"});
        link.exchange.sendinfo(u"map mp_toujane"_s);
        QCOMPARE(link.server.requests(), QList<QByteArray>{"\xFF\xFF\xFF\xFFrcon practice map mp_toujane"});
    }

    void anEmptyPasswordLeavesTwoBlanks()
    {
        Link link;
        link.program.setText(u"txtPWD"_s, {});
        link.exchange.sendinfo(u"status"_s);
        QCOMPARE(link.server.requests(), QList<QByteArray>{"\xFF\xFF\xFF\xFFrcon  status"});
    }

    void passwordAndCommandGoOutUntrimmed()
    {
        Link link;
        link.program.setText(u"txtPWD"_s, u"  two words "_s);
        link.exchange.sendinfo(u" say  \"a\"  "_s);
        QCOMPARE(link.server.requests(), QList<QByteArray>{"\xFF\xFF\xFF\xFFrcon   two words   say  \"a\"  "});
    }

    void charactersGoOutAsWindows1252AndTheRestAsQuestionMarks()
    {
        Link link;
        link.exchange.sendinfo(u"say \u20AC \u00E9 \u2122 \u00FF \u0142 \u4E2D"_s);
        QCOMPARE(link.server.commands(), QList<QByteArray>{"say \x80 \xE9 \x99 \xFF ? ?"});
    }

    void headerCommandAndReplySurviveInEveryCodePage_data()
    {
        QTest::addColumn<QByteArray>("page");
        QTest::addColumn<QString>("text");
        QTest::newRow("western") << "windows-1252"_ba << u"Gr\u00FC\u00DFe \u00FF\u00FF\u00FF\u00FF"_s;
        QTest::newRow("cyrillic") << "windows-1251"_ba << u"\u043C\u0438\u0440 \u044F\u044F"_s;
        QTest::newRow("japanese") << "windows-932"_ba << u"\u65E5\u672C\u8A9E \uFF76"_s;
        QTest::newRow("for every language") << "UTF-8"_ba << u"\u00FF \u044F \u65E5 \U0001F600"_s;
    }

    // On Windows a person may have chosen any of them, also for the whole system.
    void headerCommandAndReplySurviveInEveryCodePage()
    {
        QFETCH(QByteArray, page);
        QFETCH(QString, text);
        if (!QStringEncoder(page.constData()).isValid())
            QSKIP("the Qt of this system does not have that code page");
        const auto toBytes = [page](const QString &all) { return QByteArray(QStringEncoder(page.constData())(all)); };
        const auto toText = [page](const QByteArray &all) { return QString(QStringDecoder(page.constData())(all)); };
        const QByteArray bytes = toBytes(text);
        QCOMPARE(toText(bytes), text);

        PracticeServer server;
        QVERIFY(server.listen());
        server.answerRaw("say " + bytes, {printed(bytes) + printed(bytes)});
        Bench bench(QTime(12, 0), 10, {toBytes, toText});
        bench.open(server.port());
        for (const bool collects : {false, true}) {
            bench.session.rconcollect = collects;
            server.forgetRequests();
            bench.exchange.sendinfo(u"say "_s + text, true);
            QCOMPARE(server.requests(), QList<QByteArray>{request("say " + bytes)});
            QCOMPARE(bench.session.rconreply, text + text);
        }
        QCOMPARE(bench.pane(), text + text);

        // In some code pages these bytes become the same characters as the header's; they are no header all the same.
        const QByteArray noHeader = "\xFE\xFE\xFE\xFEprint\n";
        server.answerRaw("players", {printed(noHeader)});
        bench.exchange.sendinfo(u"players"_s, true);
        QCOMPARE(bench.session.rconreply, toText(noHeader));

        server.forgetRequests();
        bench.exchange.sendquery(u"getstatus"_s);
        QTRY_COMPARE(server.requests(), QList<QByteArray>{"\xFF\xFF\xFF\xFFgetstatus"});
    }

    void aServerThatAnswersAtOnceGetsOneDatagram()
    {
        Link link;
        link.server.answer("status", {"map: mp_toujane\n"});
        const QDateTime start = link.program.clock.now();
        link.exchange.sendinfo(u"status"_s);
        // One slot of at most a second and a half, and a few readings of the clock around it.
        QVERIFY(start.msecsTo(link.program.clock.now()) < 1700);
        QCOMPARE(link.server.requests().size(), 1);
        QVERIFY(link.session.rconarrived);
        QCOMPARE(link.session.rconreply, u"map: mp_toujane\r\n"_s);
    }

    void everySendStartsFromScratch()
    {
        Link link;
        link.server.answer("first", {"one\n"});
        link.server.answer("second", {"two\n"});
        link.exchange.sendinfo(u"first"_s);
        link.session.rconnoroute = -1;
        link.exchange.sendinfo(u"second"_s);
        QCOMPARE(link.session.rconreply, u"two\r\n"_s);
        QCOMPARE(link.session.rconnoroute, 0);
    }

    void theEchoLineStandsBelowItsReply()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        server.answer("kick all", {"done\n"});
        Bench bench;
        bench.open(server.port());
        bench.exchange.sendinfo(u"kick all"_s);
        const QString time = QLocale::system().toString(bench.clock.last.time(), QLocale::ShortFormat);
        QCOMPARE(bench.pane(), u"done\r\n>>RCON sent ["_s + time + u"] \x18"_s + u"kick all\x18\r\n"_s);
    }

    void inQuietModeTheReplyIsShownWithoutTheEchoLine()
    {
        Link link;
        link.server.answer("status", {"players: 3\n"});
        link.exchange.sendinfo(u"status"_s, true);
        QCOMPARE(link.program.pane(), u"players: 3\r\n"_s);
    }

    void collectingHidesTheReplyButNotTheEchoLine()
    {
        Link link;
        link.server.answer("dvarlist", {"secret listing\n"});
        link.session.rconcollect = true;
        link.exchange.sendinfo(u"dvarlist"_s);
        const QString pane = link.program.pane();
        QVERIFY2(pane.startsWith(u">>RCON sent ["_s), qPrintable(pane));
        QVERIFY2(pane.endsWith(u"] \x18"_s + u"dvarlist\x18\r\n"_s), qPrintable(pane));
        QCOMPARE(pane.count(u'\n'), 1);
    }

    void withoutWaitingOneDatagramGoesOutAndNothingIsSaid()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Bench bench;
        bench.open(server.port());
        bench.session.rconnowait = true;
        bench.exchange.sendinfo(u"say hello"_s);
        QCOMPARE(bench.clock.readings, 0);
        QCOMPARE(bench.udpclient.sent.size(), 1);
        QVERIFY(!bench.session.rconnowait);
        QTRY_COMPARE(server.commands(), QList<QByteArray>{"say hello"});
        QVERIFY(!bench.pane().contains(u">>RCON sent"_s));
        QCOMPARE(bench.prompts.takeBoxes(), QList<Box>());
    }

    void withoutWaitingASilentServerIsAskedOnce()
    {
        Link link;
        link.server.setSilent(true);
        link.session.rconnowait = true;
        link.exchange.sendinfo(u"once"_s);
        // The flag is used up: this one waits, and asks five times.
        link.exchange.sendinfo(u"waits"_s);
        QCOMPARE(link.server.commands(), QList<QByteArray>({"once", "waits", "waits", "waits", "waits", "waits"}));
        QCOMPARE(link.program.prompts.takeBoxes(), QList<Box>{noResponseBox()});
    }

    void aClosedSocketIsToldOnce()
    {
        Link link;
        link.program.udpclient.Close();
        link.session.rconreply = u"old"_s;
        link.session.rconarrived = true;
        link.session.rconnoroute = -1;
        link.exchange.sendinfo(u"status"_s);
        QCOMPARE(link.program.prompts.takeBoxes(), QList<Box>{notConnectedBox()});
        QVERIFY(link.session.rconnotconnected);
        QVERIFY(!link.session.rconarrived);
        QVERIFY(link.session.rconreply.isEmpty());
        QCOMPARE(link.session.rconnoroute, 0);

        link.open();
        link.exchange.sendinfo(u"serverinfo"_s);
        QVERIFY(!link.session.rconnotconnected);
        QCOMPARE(link.server.commands(), QList<QByteArray>{"serverinfo"});
    }

    void aButtonPressedWhileDisconnectedTellsItOnce()
    {
        Program program;
        program.start();
        program.click(u"cmdstatus"_s);
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{notConnectedBox()});
    }

    void notWaitingIsCarriedOverARefusedSend()
    {
        Link link;
        link.server.setSilent(true);
        link.program.udpclient.Close();
        link.session.rconnowait = true;
        link.exchange.sendinfo(u"refused"_s);
        QVERIFY(link.session.rconnowait);
        QCOMPARE(link.program.prompts.takeBoxes(), QList<Box>{notConnectedBox()});

        link.open();
        link.exchange.sendinfo(u"sent once"_s);
        QVERIFY(!link.session.rconnowait);
        QTRY_COMPARE(link.server.commands(), QList<QByteArray>{"sent once"});
    }

    void notWaitingIsCarriedOverAFailedSend()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Bench bench;
        bench.open(server.port());
        bench.udpclient.beforeSend = [] { throw Fault(10055, u"No buffer space"_s); };
        bench.session.rconnowait = true;
        bench.exchange.sendinfo(u"fails"_s);
        QVERIFY(bench.session.rconnowait);

        bench.udpclient.beforeSend = nullptr;
        bench.exchange.sendinfo(u"sent once"_s);
        QVERIFY(!bench.session.rconnowait);
        QCOMPARE(bench.clock.readings, 0);
        QTRY_COMPARE(server.commands(), QList<QByteArray>{"sent once"});
    }
};

WINDOW_TEST(ExchangeRequestsTest)
#include "tst_exchange_requests.moc"
