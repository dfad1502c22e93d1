// SPDX-License-Identifier: MIT
#include "base/fault.h"
#include "link.h"
#include "window_test.h"

#include <QAction>
#include <QPushButton>
#include <QTimer>

#ifdef Q_OS_LINUX
#include <sched.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace {

// Moves the program into a network of its own in which no interface is up. Must come before the first thread.
bool leaveTheNetwork()
{
#ifdef Q_OS_LINUX
    return (geteuid() == 0 && unshare(CLONE_NEWNET) == 0) || unshare(CLONE_NEWUSER | CLONE_NEWNET) == 0;
#else
    return false;
#endif
}

const bool isOffTheNetwork = leaveTheNetwork();
const QString unreachable = u"192.0.2.1"_s;

} // namespace

/// What the system says, and what the person is told, when there is no way to the server.
class NoRouteTest final : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (!isOffTheNetwork)
            QSKIP("this system does not let a test enter a network namespace of its own");
    }

    void init() { failOnWarnings(); }

    void sendingIsFault10065()
    {
        UDPClient client;
        client.setRemoteHost(unreachable);
        client.setRemotePort(28960);
        client.Bind();
        int number = 0;
        try {
            client.SendData("hello");
        } catch (const Fault &fault) {
            number = fault.number();
        }
        QCOMPARE(number, 10065);
        QCOMPARE(client.State(), UDPClient::Open);
    }

    void aCommandIsToldOnceAndNotRepeated()
    {
        Program program;
        program.start();
        program.udpclient.setRemoteHost(unreachable);
        program.udpclient.setRemotePort(28960);
        program.udpclient.Bind();
        const QDateTime start = program.clock.now();
        program.exchange.sendinfo(u"status"_s);
        QVERIFY(start.msecsTo(program.clock.now()) < 500);
        QCOMPARE(program.session.rconnoroute, -1);
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{noRouteBox()});
    }

    void learningEndsWithoutABox()
    {
        Program program;
        program.start();
        program.udpclient.setRemoteHost(unreachable);
        program.udpclient.setRemotePort(28960);
        program.udpclient.Bind();
        program.session.connected = true; // as when the way is lost later
        auto *item = program.find<QAction>(u"mlearn"_s);
        item->setEnabled(true);
        item->trigger();
        program.clock.set(program.clock.now().addSecs(2));
        QMetaObject::invokeMethod(program.find<QTimer>(u"tmrlearn"_s), "timeout");
        QVERIFY2(program.messages().constLast().startsWith(u"The server cannot be reached, learning stopped: 0 words"),
                 qPrintable(program.messages().join(u'\n')));
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>());
    }

    void connectingEndsDisconnected()
    {
        Program program;
        program.start();
        program.setText(u"comserver"_s, unreachable);
        program.setText(u"comport"_s, u"28960"_s);
        program.setText(u"txtPWD"_s, u"practice"_s);
        program.click(u"cmdconnect"_s);
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{noRouteBox()});
        QCOMPARE(program.find<QPushButton>(u"cmdconnect"_s)->property("Tag").toString(), u"NO"_s);
        QCOMPARE(program.udpclient.State(), UDPClient::Closed);
    }
};

WINDOW_TEST(NoRouteTest)
#include "tst_no_route.moc"
