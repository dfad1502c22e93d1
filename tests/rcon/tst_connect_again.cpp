// SPDX-License-Identifier: MIT
#include "program.h"
#include "window_test.h"

using namespace Qt::StringLiterals;

namespace {

/// Runs `action` once, when the server gets `command`.
template <typename Action>
void onCommand(PracticeServer &server, const QByteArray &command, Action action)
{
    auto done = std::make_shared<bool>(false);
    QObject::connect(&server, &PracticeServer::requested, &server, [=, &server] {
        if (server.commands().last() == command && !std::exchange(*done, true))
            QTimer::singleShot(0, &server, action);
    });
}

} // namespace

class ConnectAgainTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void whatIsTypedWhileTheServerIsAskedDoesNotChangeWhatIsConnected()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program;
        program.start();
        onCommand(server, "status", [&] { program.setText(u"comserver"_s, u"other.example"_s); });
        program.connectTo(server);
        QCOMPARE(program.messages(), QStringList{u"Connected to server 127.0.0.1:%1"_s.arg(server.port())});
        QCOMPARE(program.text(u"comserver"_s), u"127.0.0.1"_s);
    }

    void connectingAtOnceAfterDisconnectingInTheMiddleConnectsAnew()
    {
        PracticeServer first;
        PracticeServer second;
        QVERIFY(first.listen());
        QVERIFY(second.listen());
        Program program;
        program.start();
        onCommand(first, "dvarlist sv_maprotation", [&] {
            program.click(u"cmdconnect"_s);
            program.connectTo(second);
        });
        program.connectTo(first);

        QCOMPARE(program.text(u"cmdconnect"_s), u"Disconnect"_s);
        const QList<QByteArray> all{"status", "getstatus", "dvarlist sv_maprotation", "fdir *.cfg"};
        QCOMPARE(second.commands().first(4), all);
        QVERIFY(!first.commands().contains("fdir *.cfg"));
        QCOMPARE(second.commands().count("fdir *.cfg"), 1);
        QVERIFY(program.showsRepliesOf(second));
    }

    void afterAPortThatIsNoNumberTheProgressWindowIsClosed()
    {
        Program program;
        program.start();
        program.setText(u"comport"_s, u"abc"_s);
        program.setText(u"txtPWD"_s, u"practice"_s);
        program.click(u"cmdconnect"_s);
        const Box fault{u"Molvark"_s, u"Error code 13 Descr: Type mismatch"_s, BoxIcon::Exclamation, BoxButtons::Ok};
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{fault});
        QVERIFY(!program.progress()->isVisible());
    }
};

WINDOW_TEST(ConnectAgainTest)
#include "tst_connect_again.moc"
