// SPDX-License-Identifier: MIT
#include "link.h"
#include "window_test.h"

#include <QNetworkDatagram>
#include <QPlainTextEdit>
#include <QThread>
#include <QTimer>
#include <QUdpSocket>

#include <atomic>
#include <memory>

using namespace Qt::StringLiterals;

/// Commands given while another one waits, and datagrams that keep coming while the program is busy with others.
class ExchangeNestedTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void aButtonPressedDuringAWaitGetsItsOwnReply()
    {
        Link link;
        link.server.answer("outer", {});
        link.server.answer("Status", {"the status\n"});
        QString inner;
        link.onNextRequest([&] {
            QTimer::singleShot(0, &link.program.window, [&] {
                link.program.click(u"cmdstatus"_s);
                inner = link.session.rconreply;
            });
        });
        link.exchange.sendinfo(u"outer"_s);
        QCOMPARE(inner, u"the status\r\n"_s);
        QCOMPARE(link.program.messages(), QStringList{u"Server Status requested"_s});
        // What the inner one got ends the outer one too: nothing is queued, and nothing is asked again.
        QCOMPARE(link.server.commands(), QList<QByteArray>({"outer", "Status"}));
        QCOMPARE(link.session.rconreply, u"the status\r\n"_s);
        QVERIFY(link.session.rconarrived);
    }

    void aCommandGivenBeforeTheReplyTakesTheOuterReplyLate()
    {
        Link link;
        link.server.answer("outer", {"of the outer\n"});
        link.server.answer("inner", {"of the inner\n"});
        QString inner;
        link.onNextRequest([&] {
            link.exchange.sendinfo(u"inner"_s, true);
            inner = link.session.rconreply;
        });
        link.exchange.sendinfo(u"outer"_s, true);
        QCOMPARE(inner, u"of the inner\r\n"_s);
        QCOMPARE(link.server.commands(), QList<QByteArray>({"outer", "inner"}));
        QTRY_COMPARE(link.session.rconreply, u"of the inner\r\nof the outer\r\n"_s);
        QCOMPARE(link.program.pane(), u"of the inner\r\nof the outer\r\n"_s);
    }

    void aCommandGivenAfterTheReplyEmptiesIt()
    {
        Link link;
        link.server.answer("outer", {"of the outer\n"});
        link.server.answer("inner", {});
        auto *pane = link.program.find<QPlainTextEdit>(u"txtoutput"_s);
        connect(
            pane, &QPlainTextEdit::textChanged, this,
            [&] { QTimer::singleShot(0, &link.program.window, [&] { link.exchange.sendinfo(u"inner"_s); }); },
            Qt::SingleShotConnection);
        link.exchange.sendinfo(u"outer"_s);
        QCOMPARE(link.server.commands(), QList<QByteArray>({"outer", "inner", "inner", "inner", "inner", "inner"}));
        QCOMPARE(link.program.prompts.takeBoxes(), QList<Box>{noResponseBox()});
        QVERIFY(link.session.rconreply.isEmpty());
    }

    void aCommandGivenInsideAnArrivalGetsItsReply()
    {
        Link link;
        link.server.answer("outer", {"of the outer\n"});
        link.server.answer("inner", {"of the ", "inner\n"});
        auto *pane = link.program.find<QPlainTextEdit>(u"txtoutput"_s);
        bool insideArrival = false;
        QString inner;
        connect(
            pane, &QPlainTextEdit::textChanged, this,
            [&] {
                // The arrival yields once after it has shown its text, and only then says that something arrived.
                QTimer::singleShot(0, &link.program.window, [&] {
                    insideArrival = !link.session.rconarrived && link.session.rconreply == u"of the outer\r\n"_s;
                    link.exchange.sendinfo(u"inner"_s, true);
                    inner = link.session.rconreply;
                });
            },
            Qt::SingleShotConnection);
        link.exchange.sendinfo(u"outer"_s, true);
        QVERIFY(insideArrival);
        QCOMPARE(inner, u"of the inner\r\n"_s);
        QCOMPARE(link.server.commands(), QList<QByteArray>({"outer", "inner"}));
    }

    void bothOfTwoUnansweredCommandsRunTheirWholeSchedule()
    {
        Link link;
        link.server.setSilent(true);
        link.onNextRequest(
            [&] { QTimer::singleShot(0, &link.program.window, [&] { link.exchange.sendinfo(u"inner"_s); }); });
        link.exchange.sendinfo(u"outer"_s);
        QCOMPARE(link.server.commands(), QList<QByteArray>({"outer", "inner", "inner", "inner", "inner", "inner",
                                                            "outer", "outer", "outer", "outer"}));
        QCOMPARE(link.program.prompts.takeBoxes(), QList<Box>({noResponseBox(), noResponseBox()}));
    }

    void aConsoleLineDuringAWaitGoesOutOnceAndTheOuterOneGoesOn()
    {
        Link link;
        link.server.setSilent(true);
        link.program.setText(u"comdirect"_s, u"say hello"_s);
        link.onNextRequest([&] {
            QTimer::singleShot(0, &link.program.window, [&] {
                link.program.find<QWidget>(u"comdirect"_s)->setFocus();
                link.program.click(u"cmdsend"_s);
            });
        });
        link.exchange.sendinfo(u"outer"_s);
        QCOMPARE(link.server.commands(), QList<QByteArray>({"outer", "say hello", "outer", "outer", "outer", "outer"}));
        QCOMPARE(link.program.prompts.takeBoxes(), QList<Box>{noResponseBox()});
        QCOMPARE(link.program.messages(), QStringList{u"say hello"_s});
    }

    void aFloodDoesNotPileUpAndTheWindowStillAnswers()
    {
        Link link;
        link.server.answer("flood me", {});
        link.session.rconcollect = true;
        link.session.rconnowait = true;
        link.exchange.sendinfo(u"flood me"_s);
        QTRY_COMPARE(link.server.requests().size(), 1);
        int arrivals = 0;
        connect(&link.program.udpclient, &UDPClient::DataArrival, this, [&] { ++arrivals; });

        // The timer also fires inside the yield of every arrival, so that there is always more to take in.
        constexpr int flood = 20000;
        int sent = 0;
        QTimer sender;
        connect(&sender, &QTimer::timeout, this, [&] {
            for (int burst = 0; burst < 20 && sent < flood; ++burst, ++sent)
                QVERIFY(link.server.sendRaw("x"));
            if (sent == flood / 2)
                QTimer::singleShot(0, &link.program.window, [&] { link.program.click(u"cmdstatus"_s); });
        });
        sender.start(0);
        QTRY_COMPARE_WITH_TIMEOUT(sent, flood, 60000);
        sender.stop();
        QTRY_COMPARE(link.program.messages(), QStringList{u"Server Status requested"_s});
        QVERIFY2(arrivals > flood / 2, qPrintable(QString::number(arrivals)));

        link.server.answer("afterwards", {"dry again"});
        link.exchange.sendinfo(u"afterwards"_s, true);
        QVERIFY(link.session.rconreply.endsWith(u"dry again"_s));
    }

    void aFloodThatNeverPausesLetsWaitsEndAndButtonsWork()
    {
        QUdpSocket far;
        QVERIFY(far.bind(QHostAddress::LocalHost, 0));
        const quint16 farPort = far.localPort();
        Link link;
        link.program.udpclient.setRemotePort(farPort);
        link.program.udpclient.Bind();
        link.session.rconcollect = true;
        link.session.rconnowait = true;
        link.exchange.sendinfo(u"flood me"_s);
        QTRY_VERIFY(far.hasPendingDatagrams());
        const quint16 nearPort = static_cast<quint16>(far.receiveDatagram().senderPort());
        far.close();

        std::atomic_bool stop = false;
        const std::unique_ptr<QThread> flood(QThread::create([&] {
            QUdpSocket socket;
            socket.bind(QHostAddress::LocalHost, farPort);
            while (!stop)
                socket.writeDatagram("x", 1, QHostAddress::LocalHost, nearPort);
        }));
        flood->start();
        QTRY_VERIFY(!link.session.rconreply.isEmpty());
        bool pressed = false;
        QTimer::singleShot(0, &link.program.window, [&] {
            link.program.click(u"cmsserverinfo"_s);
            pressed = true;
        });
        link.exchange.waitseconds(2);
        stop = true;
        flood->wait();
        QVERIFY(pressed);
        QCOMPARE(link.program.messages(), QStringList{u"Server Info requested"_s});
    }
};

WINDOW_TEST(ExchangeNestedTest)
#include "tst_exchange_nested.moc"
