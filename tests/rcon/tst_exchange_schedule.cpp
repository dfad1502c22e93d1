// SPDX-License-Identifier: MIT
#include "bench.h"
#include "link.h"
#include "window_test.h"

#include <QTimer>

using namespace Qt::StringLiterals;

/// When the copies of an unanswered request go out, and how the waiting ends.
class ExchangeScheduleTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void aSilentServerGetsFiveEqualDatagramsAndThenTheBox()
    {
        Link link;
        link.server.setSilent(true);
        link.program.clock.set(QDateTime(QDate(2006, 3, 5), QTime(12, 0)));
        QList<QDateTime> times;
        connect(&link.server, &PracticeServer::requested, this, [&] { times.append(link.program.clock.now()); });
        link.exchange.sendinfo(u"status"_s);
        times.append(link.program.clock.now());

        QCOMPARE(link.server.requests(), QList<QByteArray>(5, request("status")));
        for (qsizetype copy = 1; copy < times.size(); ++copy) {
            const qint64 distance = times.at(copy - 1).msecsTo(times.at(copy));
            QVERIFY2(distance >= 2500 && distance <= 4000,
                     qPrintable(u"%1 ms before copy %2"_s.arg(distance).arg(copy)));
        }
        QVERIFY(qAbs(times.first().msecsTo(times.last()) - 15000) <= 1000);
        QCOMPARE(link.program.prompts.takeBoxes(), QList<Box>{noResponseBox()});
        QVERIFY(!link.session.rconarrived);
        QVERIFY(link.session.rconreply.isEmpty());
        QVERIFY(link.program.pane().isEmpty());
    }

    void onlyTheFirstSlotDependsOnTheFractionOfTheSecond_data()
    {
        QTest::addColumn<QTime>("start");
        QTest::addColumn<int>("firstDistance");
        QTest::addColumn<QTime>("end");
        QTest::newRow("a whole second") << QTime(12, 0, 0, 0) << 3000 << QTime(12, 0, 15);
        QTest::newRow("rounded down") << QTime(12, 0, 0, 300) << 2700 << QTime(12, 0, 15);
        QTest::newRow("rounded up") << QTime(12, 0, 0, 700) << 3300 << QTime(12, 0, 16);
        QTest::newRow("a half above an even second") << QTime(12, 0, 0, 500) << 2500 << QTime(12, 0, 15);
        QTest::newRow("a half above an odd second") << QTime(12, 0, 1, 500) << 3500 << QTime(12, 0, 17);
    }

    void onlyTheFirstSlotDependsOnTheFractionOfTheSecond()
    {
        QFETCH(QTime, start);
        QFETCH(int, firstDistance);
        QFETCH(QTime, end);
        PracticeServer server;
        QVERIFY(server.listen());
        server.setSilent(true);
        Bench bench(start);
        bench.open(server.port());
        QList<QTime> times;
        bench.udpclient.beforeSend = [&] { times.append(bench.clock.last.time()); };
        bench.prompts.whileOpen = [&] { times.append(bench.clock.last.time()); };
        bench.exchange.sendinfo(u"status"_s);

        const QTime second = start.addMSecs(firstDistance);
        QCOMPARE(times, QList<QTime>({start, second, second.addSecs(3), second.addSecs(6), second.addSecs(9), end}));
        QCOMPARE(bench.prompts.takeBoxes(), QList<Box>{noResponseBox()});
    }

    void aReplyToALaterCopyEndsTheSchedule_data()
    {
        QTest::addColumn<int>("copies");
        for (int copies = 2; copies <= 5; ++copies)
            QTest::addRow("%d copies", copies) << copies;
    }

    void aReplyToALaterCopyEndsTheSchedule()
    {
        QFETCH(int, copies);
        Link link;
        link.server.answer("status", {"at last\n"});
        link.server.setSilent(true);
        connect(&link.server, &PracticeServer::requested, this,
                [&] { link.server.setSilent(link.server.requests().size() < copies); });
        link.exchange.sendinfo(u"status"_s, true);
        QCOMPARE(link.server.requests(), QList<QByteArray>(copies, request("status")));
        QCOMPARE(link.session.rconreply, u"at last\r\n"_s);
        QCOMPARE(link.program.pane(), u"at last\r\n"_s);
    }

    void aReplyIsNoticedAtTheEndOfItsSlotWithAllThatCameMeanwhile()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        server.answer("status", {});
        Bench bench(QTime(12, 0, 0, 0));
        bench.open(server.port());
        // One datagram early in the second slot and one late in it.
        QTimer watch;
        connect(&watch, &QTimer::timeout, this, [&, sent = 0]() mutable {
            const QTime now = bench.clock.last.time();
            if ((sent == 0 && now > QTime(12, 0, 1, 100)) || (sent == 1 && now > QTime(12, 0, 1, 400)))
                server.sendRaw(printed(sent++ == 0 ? "early, " : "late"));
        });
        watch.start(0);
        bench.exchange.sendinfo(u"status"_s, true);
        QCOMPARE(bench.clock.last.time(), QTime(12, 0, 2));
        QCOMPARE(bench.session.rconreply, u"early, late"_s);
        QCOMPARE(server.requests().size(), 1);
    }

    void aPasswordChangedMeanwhileIsInTheNextCopy()
    {
        Link link;
        link.server.setSilent(true);
        link.onNextRequest([&] { link.program.setText(u"txtPWD"_s, u"changed"_s); });
        link.exchange.sendinfo(u"status"_s);
        QCOMPARE(link.server.requests(),
                 QList<QByteArray>({request("status"), request("status", "changed"), request("status", "changed"),
                                    request("status", "changed"), request("status", "changed")}));
        QCOMPARE(link.program.prompts.takeBoxes(), QList<Box>{noResponseBox()});
    }

    void aClosedFarPortIsSilence()
    {
        Link link;
        link.server.close();
        link.exchange.sendinfo(u"status"_s);
        QCOMPARE(link.program.prompts.takeBoxes(), QList<Box>{noResponseBox()});
        QCOMPARE(link.session.rconnoroute, 0);
        QCOMPARE(link.program.udpclient.State(), UDPClient::Open);
    }

    void aMinimisedProgramSaysNothingOfTheSilence()
    {
        Link link;
        link.server.setSilent(true);
        link.program.window.showMinimized();
        QTRY_VERIFY(link.program.window.isMinimized());
        link.exchange.sendinfo(u"status"_s);
        QCOMPARE(link.server.requests().size(), 5);
        QVERIFY(!link.session.rconarrived);
        QCOMPARE(link.program.prompts.takeBoxes(), QList<Box>());
    }

    void aProgramWithoutAnActiveWindowTellsOfTheSilence()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        server.setSilent(true);
        Bench bench;
        bench.open(server.port());
        QVERIFY(!QApplication::activeWindow());
        bench.exchange.sendinfo(u"status"_s);
        QCOMPARE(bench.prompts.takeBoxes(), QList<Box>{noResponseBox()});
    }

    void afterDisconnectingTheNextCopyIsRefusedOnce()
    {
        Link link;
        link.server.setSilent(true);
        link.onNextRequest([&] { link.program.udpclient.Close(); });
        link.exchange.sendinfo(u"status"_s);
        QCOMPARE(link.server.requests().size(), 1);
        QCOMPARE(link.program.prompts.takeBoxes(), QList<Box>{notConnectedBox()});
        QVERIFY(link.session.rconnotconnected);
    }

    // A socket that has been told of a datagram that was not there must hear the next one all the same.
    void fiveHundredQuickExchangesAreAnsweredByOneDatagramEach()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        server.answer("ping", {"pong"});
        Bench bench(QTime(1, 0), 4);
        bench.open(server.port());
        bench.session.rconcollect = true;
        for (int count = 1; count <= 500; ++count) {
            bench.exchange.sendinfo(u"ping"_s, true);
            QCOMPARE(bench.session.rconreply, u"pong"_s);
            QCOMPARE(server.requests().size(), count);
        }
    }
};

WINDOW_TEST(ExchangeScheduleTest)
#include "tst_exchange_schedule.moc"
