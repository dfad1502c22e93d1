// SPDX-License-Identifier: MIT
#include "at_request.h"
#include "game_replies.h"
#include "program.h"
#include "window_test.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

const Box notConnected{u"Not connected"_s, u"Please connect to a server first!"_s, BoxIcon::Exclamation,
                       BoxButtons::Ok};

void verifyDisconnected(const Program &program)
{
    QCOMPARE(program.find<QPushButton>(u"cmdconnect"_s)->property("Tag").toString(), u"NO"_s);
    QCOMPARE(program.text(u"cmdconnect"_s), u"Connect"_s);
    QVERIFY(!program.find<QComboBox>(u"comserver"_s)->lineEdit()->isReadOnly());
    QVERIFY(!program.find<QComboBox>(u"comport"_s)->lineEdit()->isReadOnly());
    QVERIFY(!program.find<QLineEdit>(u"txtPWD"_s)->isReadOnly());
    QCOMPARE(program.udpclient.State(), UDPClient::Closed);
    QCOMPARE(program.text(u"txtcurmaprot_0"_s), u""_s);
    QVERIFY(program.rows(u"lstcfgs"_s).isEmpty());
    QVERIFY(!program.find<QPushButton>(u"cmdcfgexec"_s)->isEnabled());
}

} // namespace

class ConnectLeavingTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void disconnectingTakesBackWhatConnectingShowed()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        answerBriefly(server);
        Program program;
        program.start();
        program.connectTo(server);
        server.forgetRequests();
        const QString pane = program.pane();
        program.click(u"cmdconnect"_s);

        verifyDisconnected(program);
        QCOMPARE(program.pane(), pane);
        QCOMPARE(program.messages(), QStringList{u"Connected to server 127.0.0.1:%1"_s.arg(server.port())});
        program.click(u"cmdstatus"_s);
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{notConnected});
        QVERIFY2(server.requests().isEmpty(), "nothing is sent for it");
    }

    void anotherConnectionAsksEverythingAgain()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        answerBriefly(server);
        Program program(keepsOutput);
        program.start();
        program.connectTo(server);
        program.click(u"cmdconnect"_s);
        server.forgetRequests();
        program.click(u"cmdconnect"_s);
        QCOMPARE(server.commands(),
                 QList<QByteArray>({"status", "getstatus", "dvarlist sv_maprotation", "fdir *.cfg"}));
        QCOMPARE(program.text(u"cmdconnect"_s), u"Disconnect"_s);
        QCOMPARE(program.rows(u"lstcfgs"_s), QStringList({u"server.cfg"_s, u"match.cfg"_s}));
        QCOMPARE(program.text(u"txtcurmaprot_0"_s), u"gametype sd map mp_decoy"_s);
        const QString connected = u"Connected to server 127.0.0.1:%1"_s.arg(server.port());
        QCOMPARE(program.messages(), QStringList({connected, connected}));
    }

    void disconnectingStopsARunningCycler()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program;
        program.start();
        program.connectTo(server);
        program.find<QPushButton>(u"cmdmessstart"_s)->setEnabled(false);
        program.find<QPushButton>(u"cmdmessstop"_s)->setEnabled(true);
        program.find<QTimer>(u"tmrmessage"_s)->start(60'000);
        program.click(u"cmdconnect"_s);
        QVERIFY(!program.find<QTimer>(u"tmrmessage"_s)->isActive());
        QVERIFY(program.find<QPushButton>(u"cmdmessstart"_s)->isEnabled());
        QVERIFY(!program.find<QPushButton>(u"cmdmessstop"_s)->isEnabled());
    }

    void aCyclerThatRestsIsLeftAlone()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program;
        program.start();
        program.connectTo(server);
        // The start button alone says whether it runs.
        program.find<QPushButton>(u"cmdmessstop"_s)->setEnabled(true);
        program.click(u"cmdconnect"_s);
        QVERIFY(program.find<QPushButton>(u"cmdmessstart"_s)->isEnabled());
        QVERIFY(program.find<QPushButton>(u"cmdmessstop"_s)->isEnabled());
    }

    void disconnectingDuringAWaitEndsTheSequence_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<QList<Box>>("boxes");
        QTest::addColumn<int>("requests");
        // The next copy of a console command is refused, once; the public query has no copies.
        QTest::newRow("public status") << QByteArray("getstatus") << QList<Box>() << 2;
        QTest::newRow("rotation") << QByteArray("dvarlist sv_maprotation") << QList<Box>{notConnected} << 3;
        QTest::newRow("files") << QByteArray("fdir *.cfg") << QList<Box>{notConnected} << 4;
    }

    void disconnectingDuringAWaitEndsTheSequence()
    {
        QFETCH(QByteArray, command);
        PracticeServer server;
        QVERIFY(server.listen());
        answerBriefly(server);
        server.answerRaw(command, {});
        Program program("[options]\r\nautoqplayer=1\r\n");
        program.start();
        atRequest(server, command, [&] { QTimer::singleShot(0, &server, [&] { program.click(u"cmdconnect"_s); }); });
        program.connectTo(server);

        QTEST(program.prompts.takeBoxes(), "boxes");
        QTEST(static_cast<int>(server.requests().size()), "requests");
        QCOMPARE(server.commands().constLast(), command);
        verifyDisconnected(program);
        QVERIFY(program.progress()->isHidden());
        QVERIFY(!program.session.rconcollect);
        QVERIFY(!program.find<QAbstractButton>(u"chkautoupdate"_s)->isChecked());
    }

    void disconnectingAfterTheReplyEndsTheSequence_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<int>("requests");
        QTest::newRow("public status") << QByteArray("getstatus") << 2;
        QTest::newRow("rotation") << QByteArray("dvarlist sv_maprotation") << 3;
        QTest::newRow("files") << QByteArray("fdir *.cfg") << 4;
    }

    void disconnectingAfterTheReplyEndsTheSequence()
    {
        QFETCH(QByteArray, command);
        PracticeServer server;
        QVERIFY(server.listen());
        answerBriefly(server);
        Program program;
        program.start();
        asSoonAs(
            &server,
            [&] {
                const QList<QByteArray> commands = server.commands();
                return !commands.isEmpty() && commands.constLast() == command && program.session.rconarrived;
            },
            [&] { program.click(u"cmdconnect"_s); });
        program.connectTo(server);

        QTEST(static_cast<int>(server.requests().size()), "requests");
        verifyDisconnected(program);
        QVERIFY(program.progress()->isHidden());
        QVERIFY(!program.session.rconcollect);
    }

    void aSecondClickWhileThePasswordIsProvedStartsNothing()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        server.answer("status", {});
        Program program;
        program.start();
        atRequest(server, "status", [&] {
            QTimer::singleShot(0, &server, [&] { program.click(u"cmdconnect"_s); });
            // Answered only now, so that the clicks surely fall into the wait.
            QTimer::singleShot(0, &server, [&] {
                program.click(u"cmdconnect"_s);
                QVERIFY(server.sendRaw(QByteArray(4, '\xFF') + "print\nmap: mp_decoy\n"));
            });
        });
        program.connectTo(server);
        QCOMPARE(server.commands(),
                 QList<QByteArray>({"status", "getstatus", "dvarlist sv_maprotation", "fdir *.cfg"}));
        QCOMPARE(program.text(u"cmdconnect"_s), u"Disconnect"_s);
        QCOMPARE(program.messages().size(), 1);
    }

    void connectingAgainDuringAWaitOfTheOldConnectionIsANewOne()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        answerBriefly(server);
        server.answerRaw("getstatus", {});
        Program program(keepsOutput);
        program.start();
        atRequest(server, "getstatus", [&] {
            QTimer::singleShot(0, &server, [&] {
                program.click(u"cmdconnect"_s);
                verifyDisconnected(program);
                answerBriefly(server);
                program.click(u"cmdconnect"_s);
            });
        });
        program.connectTo(server);
        QCOMPARE(server.commands(), QList<QByteArray>({"status", "getstatus", "status", "getstatus",
                                                       "dvarlist sv_maprotation", "fdir *.cfg"}));
        QCOMPARE(program.text(u"cmdconnect"_s), u"Disconnect"_s);
        QCOMPARE(program.rows(u"lstcfgs"_s), QStringList({u"server.cfg"_s, u"match.cfg"_s}));
        QCOMPARE(program.pane().count(u"Server running game mode"), 1);
        QVERIFY(program.progress()->isHidden());
        QVERIFY(program.showsRepliesOf(server));
    }
};

WINDOW_TEST(ConnectLeavingTest)
#include "tst_connect_leaving.moc"
