// SPDX-License-Identifier: MIT
#include "faulty_click.h"
#include "game_replies.h"
#include "program.h"
#include "window_test.h"

#include <QCheckBox>

using namespace Qt::StringLiterals;

namespace {

const Box overflow{u"Molvark"_s, u"Error code 6 Descr: Overflow"_s, BoxIcon::Exclamation, BoxButtons::Ok};

QString refresh(const Program &program)
{
    const bool ticked = program.find<QCheckBox>(u"chkautoupdate"_s)->isChecked();
    const bool runs = program.find<QTimer>(u"tmrplayer"_s)->isActive();
    return (ticked ? u"ticked, "_s : u"clear, "_s) + (runs ? u"runs"_s : u"rests"_s);
}

} // namespace

class ConnectRefreshTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void connectingStartsThePreferredRefreshAtItsEnd()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program("[options]\r\nautoqplayer=1\r\n");
        program.start();
        QStringList before;
        connect(&server, &PracticeServer::requested, this, [&] { before.append(refresh(program)); });
        program.connectTo(server);
        QCOMPARE(before.first(4), QStringList(4, u"clear, rests"_s));
        QCOMPARE(refresh(program), u"ticked, runs"_s);
        QCOMPARE(program.find<QTimer>(u"tmrplayer"_s)->interval(), 10'000);
    }

    void connectingStartsNoRefreshThatNobodyPrefers()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program;
        program.start();
        program.connectTo(server);
        QCOMPARE(refresh(program), u"clear, rests"_s);
    }

    void tickingWhileDisconnectedClearsItself()
    {
        Program program("[options]\r\nautoqplayer=1\r\n");
        program.start();
        QCOMPARE(refresh(program), u"clear, rests"_s);
        program.click(u"chkautoupdate"_s);
        QCOMPARE(refresh(program), u"clear, rests"_s);
        PracticeServer server;
        QVERIFY(server.listen());
        program.connectTo(server);
        QVERIFY2(refresh(program) == u"ticked, runs", "the preference is not the box");
    }

    void disconnectingEndsTheRefreshForTheRestOfTheRun()
    {
        const QByteArray settings = "[options]\r\nautoqplayer=1\r\n";
        PracticeServer server;
        QVERIFY(server.listen());
        Program program(settings);
        program.start();
        program.connectTo(server);
        QCOMPARE(refresh(program), u"ticked, runs"_s);
        program.click(u"cmdconnect"_s);
        QCOMPARE(refresh(program), u"clear, rests"_s);

        program.click(u"cmdconnect"_s);
        QCOMPARE(program.text(u"cmdconnect"_s), u"Disconnect"_s);
        QCOMPARE(refresh(program), u"clear, rests"_s);
        QCOMPARE(program.file(u"molvark.ini"_s), settings);
    }

    void disconnectingKeepsThePreferenceWhenTheRefreshWasEndedByHand()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program("[options]\r\nautoqplayer=1\r\n");
        program.start();
        program.connectTo(server);
        program.click(u"chkautoupdate"_s);
        QCOMPARE(refresh(program), u"clear, rests"_s);
        program.click(u"cmdconnect"_s);
        program.click(u"cmdconnect"_s);
        QCOMPARE(refresh(program), u"ticked, runs"_s);
    }

    void anIntervalOutsideItsRangeBecomesThirtySeconds_data()
    {
        QTest::addColumn<int>("preferred");
        QTest::addColumn<int>("used");
        QTest::newRow("4") << 4 << 30;
        QTest::newRow("5") << 5 << 5;
        QTest::newRow("32") << 32 << 32;
        QTest::newRow("41") << 41 << 30;
    }

    void anIntervalOutsideItsRangeBecomesThirtySeconds()
    {
        QFETCH(int, preferred);
        QFETCH(int, used);
        PracticeServer server;
        QVERIFY(server.listen());
        Program program;
        program.start();
        program.connectTo(server);
        program.session.options.autoqplayerint = static_cast<qint16>(preferred);
        program.click(u"chkautoupdate"_s);
        QCOMPARE(program.find<QTimer>(u"tmrplayer"_s)->interval(), used * 1000);
        QCOMPARE(program.session.options.autoqplayerint, used);
    }

    void thirtyThreeSecondsOverflowAndTheProgramGoesOn_data()
    {
        QTest::addColumn<int>("interval");
        QTest::newRow("33") << 33;
        QTest::newRow("40") << 40;
    }

    void thirtyThreeSecondsOverflowAndTheProgramGoesOn()
    {
        QFETCH(int, interval);
        PracticeServer server;
        QVERIFY(server.listen());
        Program program("[options]\r\nautoqplayer=1\r\n");
        program.start();
        program.session.options.autoqplayerint = static_cast<qint16>(interval);
        program.setText(u"comport"_s, QString::number(server.port()));
        program.setText(u"txtPWD"_s, u"practice"_s);
        clickIntoAFault(program.find<QPushButton>(u"cmdconnect"_s));
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{overflow});
        QVERIFY(!program.find<QTimer>(u"tmrplayer"_s)->isActive());

        server.forgetRequests();
        program.click(u"cmdstatus"_s);
        QCOMPARE(server.commands(), QList<QByteArray>{"Status"});
        program.click(u"cmdconnect"_s);
        QCOMPARE(program.text(u"cmdconnect"_s), u"Connect"_s);
        program.session.options.autoqplayerint = 10;
        program.click(u"cmdconnect"_s);
        QCOMPARE(program.text(u"cmdconnect"_s), u"Disconnect"_s);
    }
};

WINDOW_TEST(ConnectRefreshTest)
#include "tst_connect_refresh.moc"
