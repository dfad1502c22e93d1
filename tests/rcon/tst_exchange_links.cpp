// SPDX-License-Identifier: MIT
#include "program.h"
#include "window_test.h"

using namespace Qt::StringLiterals;

namespace {

const Box truncated{u"Truncated data"_s,
                    u"Data returned is to large for buffers\rTruncated after 8192 bytes\rI bet you did dvarlist ;)"_s,
                    BoxIcon::Information, BoxButtons::Ok};

} // namespace

class ExchangeLinksTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void aCommandForOneServerIsNotSentToTheNext()
    {
        PracticeServer first;
        PracticeServer second;
        QVERIFY(first.listen());
        QVERIFY(second.listen());
        Program program;
        program.start();
        program.connectTo(first);
        first.setSilent(true);
        first.forgetRequests();
        QObject::connect(&first, &PracticeServer::requested, &second, [&] {
            if (first.requests().size() == 1)
                QTimer::singleShot(0, &second, [&] {
                    program.click(u"cmdconnect"_s);
                    program.connectTo(second);
                });
        });
        program.exchange.sendinfo(u"sv_maprotationcurrent \"map mp_secret\""_s);

        QCOMPARE(first.requests().size(), 1);
        QCOMPARE(second.commands(),
                 QList<QByteArray>({"status", "getstatus", "dvarlist sv_maprotation", "fdir *.cfg"}));
        QVERIFY(!program.pane().contains(u"mp_secret"));
    }

    void datagramsThatAreTooLargeGetOneBoxForEachCommand()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program;
        program.start();
        program.connectTo(server);
        const QByteArray large(9000, 'x');
        server.answer("first", {large, large, large});
        server.answer("second", {large});
        program.exchange.sendinfo(u"first"_s, true);
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{truncated});
        program.exchange.sendinfo(u"second"_s, true);
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{truncated});
    }

    void aFloodOfEmptyLinesLeavesTheWindowItsTurn()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program;
        program.start();
        program.connectTo(server);
        const QByteArray lines = "\xFF\xFF\xFF\xFFprint\n" + QByteArray(7000, '\n');
        int sent = 0;
        int turns = 0;
        QTimer flood;
        connect(&flood, &QTimer::timeout, &server, [&] { sent += server.sendRaw(lines) ? 1 : 0; });
        QTimer window;
        connect(&window, &QTimer::timeout, &server, [&] { ++turns; });
        flood.start(0);
        window.start(0);
        QTRY_VERIFY(sent >= 100);
        flood.stop();
        // As many turns as datagrams: reading never locks the window out for the whole flood.
        QVERIFY2(turns >= sent / 2, qPrintable(QString::number(turns)));
    }
};

WINDOW_TEST(ExchangeLinksTest)
#include "tst_exchange_links.moc"
