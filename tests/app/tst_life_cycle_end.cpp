// SPDX-License-Identifier: MIT
#include "game_replies.h"
#include "program.h"
#include "saved_entries.h"
#include "window_test.h"

#include <QCloseEvent>
#include <QPushButton>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

const Box unsavedSets{u"Unsaved Messages Sets"_s,
                      u"Message changes not saved\rClick OK if you wish to go back to save them"_s,
                      BoxIcon::Exclamation, BoxButtons::OkCancel};

} // namespace

class LifeCycleEndTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theExitButtonAndTheExitItemClose()
    {
        for (const bool byButton : {true, false}) {
            Program program(twoServers);
            program.start();
            addServer(program);
            const QSignalSpy closed(&program.window, &MainWindow::closed);
            if (byButton)
                program.click(u"cmdexit"_s);
            else
                program.trigger(u"Exit"_s);
            QCOMPARE(closed.size(), 1);
            QVERIFY(!program.window.isVisible());
            QCOMPARE(saved(program, 3), u"three 3 c"_s);
        }
    }

    void okInTheQuestionAboutUnsavedSetsKeepsTheProgramRunning()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        const QByteArray settings = twoServers + keepsOutput;
        Program program(settings);
        program.start();
        program.connectTo(server);
        addServer(program);
        program.setText(u"txtPWD"_s, u"practice"_s);
        program.find<QPushButton>(u"cmdsetsave"_s)->setEnabled(true);
        const QSignalSpy closed(&program.window, &MainWindow::closed);
        program.prompts.answers = {Answer::Ok};
        QVERIFY(!program.window.close());

        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{unsavedSets});
        QVERIFY(program.window.isVisible());
        QVERIFY(closed.isEmpty());
        QCOMPARE(program.file(settingsFile), settings);
        QVERIFY(!QFile::exists(rconLog));
        QCOMPARE(program.udpclient.State(), UDPClient::Open);
        server.forgetRequests();
        program.click(u"cmdstatus"_s);
        QCOMPARE(server.commands(), QList<QByteArray>{"Status"});
    }

    void cancelInItClosesWithoutSavingTheSets()
    {
        Program program(twoServers + "[set0]\r\nname=old\r\n");
        program.start();
        addServer(program);
        program.find<QPushButton>(u"cmdsetsave"_s)->setEnabled(true);
        program.prompts.answers = {Answer::Cancel};
        QVERIFY(program.window.close());
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{unsavedSets});
        QVERIFY(!program.window.isVisible());
        QCOMPARE(saved(program, 3), u"three 3 c"_s);
        QVERIFY(program.file(settingsFile).contains("[set0]\r\nname=old\r\n"));
        QVERIFY(!program.file(settingsFile).contains("mess0"));
    }

    void withoutUnsavedSetsNothingIsAsked()
    {
        Program program(twoServers);
        program.start();
        QVERIFY(program.window.close());
        QVERIFY(program.prompts.takeBoxes().isEmpty());
    }

    void closingClosesTheSocketButDoesNotDisconnect()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program;
        program.start();
        program.connectTo(server);
        server.forgetRequests();
        program.window.close();
        QCOMPARE(program.udpclient.State(), UDPClient::Closed);
        QCOMPARE(program.text(u"cmdconnect"_s), u"Disconnect"_s);
        QVERIFY(!program.text(u"txtcurmaprot_0"_s).isEmpty());
        QVERIFY(server.requests().isEmpty());
    }

    void theLogsAreSavedAsPreferred_data()
    {
        QTest::addColumn<bool>("pane");
        QTest::addColumn<bool>("list");
        for (const bool pane : {true, false}) {
            for (const bool list : {true, false})
                QTest::addRow("pane %d, list %d", pane, list) << pane << list;
        }
    }

    void theLogsAreSavedAsPreferred()
    {
        QFETCH(bool, pane);
        QFETCH(bool, list);
        Program program(QByteArray("[options]\r\nsavercon=") + (pane ? "1" : "0") +
                        "\r\nsavemessages=" + (list ? "1" : "0") + "\r\n");
        program.start();
        program.output.addrcon(u"an answer\r\n"_s);
        program.output.addmessage(u"a message"_s);
        program.window.close();
        QCOMPARE(program.file(rconLog), pane ? "an answer\r\n\r\n" : "");
        QCOMPARE(program.file(messageLog).endsWith(" a message\r\n"), list);
        QCOMPARE(QFile::exists(messageLog), list);
        QVERIFY(program.prompts.asked.isEmpty());
        QVERIFY(program.progress()->isHidden());
        QCOMPARE(program.note(), u""_s);
    }

    void aWindowThatIsClosedAgainDoesNothingMore()
    {
        Program program(twoServers);
        program.start();
        const QSignalSpy closed(&program.window, &MainWindow::closed);
        program.output.addrcon(u"an answer\r\n"_s);
        program.window.close();
        QCloseEvent again; // as the system sends it to every window when the program quits
        QApplication::sendEvent(&program.window, &again);
        QCOMPARE(closed.size(), 1);
        QCOMPARE(program.file(rconLog), "an answer\r\n\r\n");
    }

    void afterClosingNobodyIsAskedOrToldAnything()
    {
        Program program;
        program.start();
        program.window.close();
        program.click(u"cmdmessage"_s);
        program.click(u"cmdconnect"_s);
        program.trigger(u"clearrcon"_s);
        QVERIFY(program.prompts.asked.isEmpty());
        QVERIFY(program.prompts.takeBoxes().isEmpty());
    }
};

WINDOW_TEST(LifeCycleEndTest)
#include "tst_life_cycle_end.moc"
