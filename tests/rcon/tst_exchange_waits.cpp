// SPDX-License-Identifier: MIT
#include "bench.h"
#include "link.h"
#include "window_test.h"

#include <QTimer>

using namespace Qt::StringLiterals;

/// How long a wait lasts, what happens inside it, and what ends it early.
class ExchangeWaitsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void aWaitEndsAtAWholeSecond_data()
    {
        QTest::addColumn<QTime>("start");
        QTest::addColumn<qint16>("seconds");
        QTest::addColumn<QTime>("end");
        const auto row = [](const char *name, const QTime &start, qint16 seconds, const QTime &end) {
            QTest::newRow(name) << start << seconds << end;
        };
        row("from a whole second", QTime(12, 0, 0), 1, QTime(12, 0, 1));
        row("rounded down", QTime(12, 0, 0, 490), 1, QTime(12, 0, 1));
        row("rounded up", QTime(12, 0, 0, 510), 1, QTime(12, 0, 2));
        row("a half goes down to the even second", QTime(12, 0, 0, 500), 1, QTime(12, 0, 1));
        row("a half goes up to the even second", QTime(12, 0, 1, 500), 1, QTime(12, 0, 3));
        row("five seconds, the shortest", QTime(12, 0, 2, 500), 5, QTime(12, 0, 7));
        row("five seconds, the longest", QTime(12, 0, 3, 500), 5, QTime(12, 0, 9));
        row("no seconds in the first half", QTime(12, 0, 0, 300), 0, QTime(12, 0, 0, 310));
        row("no seconds in the second half", QTime(12, 0, 0, 700), 0, QTime(12, 0, 1));
        row("less than none", QTime(12, 0, 0, 700), -1, QTime(12, 0, 0, 710));
        row("up to the last second of the day", QTime(23, 59, 57), 2, QTime(23, 59, 59));
        row("the longest", QTime(1, 0), 32767, QTime(1, 0).addSecs(32767));
    }

    void aWaitEndsAtAWholeSecond()
    {
        QFETCH(QTime, start);
        QFETCH(qint16, seconds);
        QFETCH(QTime, end);
        Bench bench(start, seconds > 1000 ? 500 : 10);
        bench.exchange.waitseconds(seconds);
        QCOMPARE(bench.clock.last.time(), end);
    }

    void aWaitLastsHalfASecondLessOrMoreAtMost()
    {
        Link link;
        for (qint16 seconds = 1; seconds <= 5; ++seconds) {
            const QDateTime start = link.program.clock.now();
            link.exchange.waitseconds(seconds);
            const double lasted = static_cast<double>(start.msecsTo(link.program.clock.now())) / 1000;
            // Two readings of the clock lie outside the wait, and one step too many in it; each is a fiftieth of a
            // second.
            QVERIFY2(lasted >= seconds - 0.5 && lasted <= seconds + 0.6, qPrintable(QString::number(lasted)));
        }
    }

    void theEventLoopRunsInsideAWait()
    {
        Bench bench;
        int turns = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] { ++turns; });
        timer.start(0);
        bench.exchange.waitseconds(1);
        QVERIFY(turns > 10);
    }

    void aWaitAcrossMidnightLastsUntilTheWindowCloses()
    {
        Link link;
        link.program.clock.set(QDateTime(QDate(2006, 3, 5), QTime(23, 59, 58)));
        const QDateTime longAfter(QDate(2006, 3, 6), QTime(0, 0, 30));
        bool closed = false;
        QTimer watch;
        connect(&watch, &QTimer::timeout, this, [&] {
            if (!closed && link.program.clock.now() > longAfter)
                closed = link.program.window.close();
        });
        watch.start(0);
        link.exchange.waitseconds(3);
        QVERIFY(closed);
    }

    void aWaitShortOfMidnightEnds()
    {
        Link link;
        link.program.clock.set(QDateTime(QDate(2006, 3, 5), QTime(23, 59, 55)));
        link.exchange.waitseconds(3);
        QCOMPARE(link.program.clock.now().date(), QDate(2006, 3, 5));
    }

    void closingTheWindowEndsAWaitAtOnce()
    {
        Link link;
        QTimer::singleShot(0, &link.program.window, &QWidget::close);
        const QDateTime start = link.program.clock.now();
        link.exchange.waitseconds(30000);
        QVERIFY(start.secsTo(link.program.clock.now()) < 5);
    }

    void closingTheWindowEndsAnExchangeWithoutABox()
    {
        Link link;
        link.server.setSilent(true);
        link.onNextRequest([&] { link.program.window.close(); });
        const QDateTime start = link.program.clock.now();
        link.exchange.sendinfo(u"status"_s);
        QVERIFY(start.secsTo(link.program.clock.now()) < 5);
        QCOMPARE(link.server.requests().size(), 1);
        QCOMPARE(link.program.prompts.takeBoxes(), QList<Box>());
        QVERIFY(link.program.pane().isEmpty());
    }

    void closingTheWindowEndsNestedExchangesTogether()
    {
        Link link;
        link.server.setSilent(true);
        link.onNextRequest([&] {
            link.onNextRequest([&] {
                QTimer::singleShot(0, &link.program.window, &QWidget::close);
                link.exchange.waitseconds(30000);
            });
            link.exchange.sendinfo(u"inner"_s);
        });
        const QDateTime start = link.program.clock.now();
        link.exchange.sendinfo(u"outer"_s);
        QVERIFY(start.secsTo(link.program.clock.now()) < 10);
        QCOMPARE(link.server.commands(), QList<QByteArray>({"outer", "inner"}));
        QCOMPARE(link.program.prompts.takeBoxes(), QList<Box>());
    }

    // The flag is up before the window is gone: while the logs are saved a box could still open.
    void anExchangeEndedByClosingSaysNothing_data()
    {
        QTest::addColumn<int>("copies");
        for (int copies = 1; copies <= 5; ++copies)
            QTest::addRow("during copy %d", copies) << copies;
    }

    void anExchangeEndedByClosingSaysNothing()
    {
        QFETCH(int, copies);
        PracticeServer server;
        QVERIFY(server.listen());
        server.setSilent(true);
        Bench bench;
        bench.open(server.port());
        bench.udpclient.beforeSend = [&] { bench.session.closing = bench.udpclient.sent.size() == copies; };
        bench.exchange.sendinfo(u"status"_s);
        QCOMPARE(bench.udpclient.sent.size(), copies);
        QCOMPARE(bench.prompts.takeBoxes(), QList<Box>());
        QCOMPARE(bench.pane(), QString());
    }

    void nothingIsSentOnceTheWindowIsClosing_data()
    {
        QTest::addColumn<bool>("isOpen");
        QTest::newRow("socket still open") << true;
        QTest::newRow("socket closed") << false;
    }

    void nothingIsSentOnceTheWindowIsClosing()
    {
        QFETCH(bool, isOpen);
        Bench bench;
        if (isOpen)
            bench.open(28960);
        bench.session.closing = true;
        bench.exchange.sendinfo(u"status"_s);
        QCOMPARE(bench.udpclient.sent, QList<QByteArray>());
        QCOMPARE(bench.prompts.takeBoxes(), QList<Box>());
    }
};

WINDOW_TEST(ExchangeWaitsTest)
#include "tst_exchange_waits.moc"
