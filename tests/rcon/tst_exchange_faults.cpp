// SPDX-License-Identifier: MIT
#include "bench.h"
#include "faulty_click.h"
#include "link.h"
#include "window_test.h"

#include "base/fault.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

/// Sends that fail, and servers that cannot be named.
class ExchangeFaultsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void aMissingRouteIsTold()
    {
        Bench bench;
        bench.open(28960);
        bench.udpclient.beforeSend = [] { throw Fault(Fault::NoRoute); };
        bench.exchange.sendinfo(u"status"_s);
        QCOMPARE(bench.session.rconnoroute, -1);
        QCOMPARE(bench.prompts.takeBoxes(), QList<Box>{noRouteBox()});
        QCOMPARE(bench.udpclient.sent, QList<QByteArray>{request("status")});
        QVERIFY(!bench.session.rconnotconnected);
        QCOMPARE(bench.clock.readings, 0);
    }

    void aRouteFoundAgainClearsTheFlag()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Bench bench;
        bench.open(server.port());
        bench.udpclient.beforeSend = [] { throw Fault(Fault::NoRoute); };
        bench.exchange.sendinfo(u"status"_s);
        QCOMPARE(bench.prompts.takeBoxes(), QList<Box>{noRouteBox()});
        bench.udpclient.beforeSend = nullptr;
        bench.exchange.sendinfo(u"status"_s);
        QCOMPARE(bench.session.rconnoroute, 0);
        QVERIFY(bench.session.rconarrived);
    }

    void aMissingRouteIsNotToldWhenItIsToBeQuiet()
    {
        Bench bench;
        bench.open(28960);
        bench.udpclient.beforeSend = [] { throw Fault(Fault::NoRoute); };
        const auto anything = [](const QString &) { return true; };
        QVERIFY(!bench.exchange.sendonce(u"status"_s, anything, true));
        QCOMPARE(bench.prompts.takeBoxes(), QList<Box>());
        QVERIFY(!bench.exchange.sendonce(u"status"_s, anything));
        QCOMPARE(bench.prompts.takeBoxes(), QList<Box>{noRouteBox()});
    }

    void aRouteLostOnTheWayEndsTheSchedule()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        server.setSilent(true);
        Bench bench;
        bench.open(server.port());
        bench.udpclient.beforeSend = [&] {
            if (bench.udpclient.sent.size() == 3)
                throw Fault(Fault::NoRoute);
        };
        bench.exchange.sendinfo(u"status"_s);
        QCOMPARE(bench.udpclient.sent.size(), 3);
        QCOMPARE(bench.session.rconnoroute, -1);
        QCOMPARE(bench.prompts.takeBoxes(), QList<Box>{noRouteBox()});
    }

    void anyOtherSendErrorEndsInSilence_data()
    {
        QTest::addColumn<int>("number");
        for (const int number : {5, 10040, 10049, 10055, 10057, 10064, 10066})
            QTest::addRow("%d", number) << number;
    }

    void anyOtherSendErrorEndsInSilence()
    {
        QFETCH(int, number);
        Bench bench;
        bench.open(28960);
        bench.udpclient.beforeSend = [&] { throw Fault(number, u"no good"_s); };
        bench.exchange.sendinfo(u"status"_s);
        QCOMPARE(bench.udpclient.sent.size(), 1);
        QCOMPARE(bench.session.rconnoroute, 0);
        QVERIFY(!bench.session.rconarrived);
        QCOMPARE(bench.prompts.takeBoxes(), QList<Box>());
        QCOMPARE(bench.pane(), QString());
    }

    void aCommandTooLongForADatagramEndsInSilence()
    {
        Link link;
        const QDateTime start = link.program.clock.now();
        link.exchange.sendinfo(QString(70000, u'x'));
        QVERIFY(start.msecsTo(link.program.clock.now()) < 500);
        QCOMPARE(link.session.rconnoroute, 0);

        link.exchange.sendinfo(u"status"_s);
        QCOMPARE(link.server.commands(), QList<QByteArray>{"status"});
    }

    void aServerThatCannotBeNamedIsToldAndTheProgramGoesOn_data()
    {
        QTest::addColumn<QString>("host");
        QTest::addColumn<QString>("port");
        QTest::addColumn<int>("number");
        const QString local = u"127.0.0.1"_s;
        QTest::newRow("port 0") << local << u"0"_s << 10049;
        QTest::newRow("port 65536") << local << u"65536"_s << 10049;
        QTest::newRow("a negative port") << local << u"-28960"_s << 10049;
        QTest::newRow("a port of letters") << local << u"abc"_s << 13;
        QTest::newRow("a port beyond 32 bits") << local << u"99999999999"_s << 6;
        QTest::newRow("an unknown host") << u"no-such-server.invalid"_s << u"28960"_s << 11001;
    }

    void aServerThatCannotBeNamedIsToldAndTheProgramGoesOn()
    {
        QFETCH(QString, host);
        QFETCH(QString, port);
        QFETCH(int, number);
        PracticeServer server;
        QVERIFY(server.listen());
        Program program;
        program.start();
        program.setText(u"comserver"_s, host);
        program.setText(u"comport"_s, port);
        program.setText(u"txtPWD"_s, u"practice"_s);
        auto *button = program.find<QPushButton>(u"cmdconnect"_s);
        clickIntoAFault(button);

        const QList<Box> boxes = program.prompts.takeBoxes();
        QCOMPARE(boxes.size(), 1);
        const Box &box = boxes.first();
        const QString start = u"Error code %1 Descr: "_s.arg(number);
        QCOMPARE(box, Box({u"Molvark"_s, box.text, BoxIcon::Exclamation, BoxButtons::Ok}));
        QVERIFY2(box.text.startsWith(start) && box.text.size() > start.size(), qPrintable(box.text));
        QCOMPARE(button->property("Tag").toString(), u"NO"_s);
        QCOMPARE(program.text(u"cmdconnect"_s), u"Connect"_s);
        QCOMPARE(program.udpclient.State(), UDPClient::Closed);

        program.connectTo(server);
        QCOMPARE(button->property("Tag").toString(), u"YES"_s);
    }
};

WINDOW_TEST(ExchangeFaultsTest)
#include "tst_exchange_faults.moc"
