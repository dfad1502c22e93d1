// SPDX-License-Identifier: MIT
#include "program.h"
#include "window_test.h"

#include <QPushButton>

#include <sched.h>

using namespace Qt::StringLiterals;

namespace {

bool isolated = false;

/// A network of one's own without any interface that is up: from here there is no route to anywhere.
bool enterEmptyNetwork()
{
    return unshare(CLONE_NEWNET) == 0 || unshare(CLONE_NEWUSER | CLONE_NEWNET) == 0;
}

} // namespace

class ConnectNoRouteTest final : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        failOnWarnings();
        if (!isolated)
            QSKIP("network namespaces are not permitted here");
    }

    void withoutARouteTheProgramStaysDisconnected()
    {
        Program program;
        program.start();
        program.setText(u"comserver"_s, u"192.0.2.1"_s);
        program.setText(u"txtPWD"_s, u"practice"_s);
        program.click(u"cmdconnect"_s);

        const Box noRoute{u"No Route"_s, u"No route to server, are you sure your connected to the Internet!"_s,
                          BoxIcon::Exclamation, BoxButtons::Ok};
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{noRoute});
        QCOMPARE(program.session.rconnoroute, -1);
        QCOMPARE(program.udpclient.State(), UDPClient::Closed);
        QCOMPARE(program.text(u"cmdconnect"_s), u"Connect"_s);
        QCOMPARE(program.find<QPushButton>(u"cmdconnect"_s)->property("Tag").toString(), u"NO"_s);
        QVERIFY(program.progress()->isHidden());
        QCOMPARE(program.note(), u""_s);
        QVERIFY(program.messages().isEmpty());
    }
};

static int runWithoutANetwork(int argc, char *argv[])
{
    isolated = enterEmptyNetwork(); // before there are threads
    return runTests<WindowApplication, ConnectNoRouteTest>(argc, argv);
}

static const TestClass testClass(__FILE__, runWithoutANetwork);

#include "tst_connect_no_route.moc"
