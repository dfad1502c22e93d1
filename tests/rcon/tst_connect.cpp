// SPDX-License-Identifier: MIT
#include "game_replies.h"
#include "program.h"
#include "window_test.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

const Box badPassword{u"No connection"_s, u"Invalid Rcon password, no connection established"_s, BoxIcon::Exclamation,
                      BoxButtons::Ok};

QString tag(const Program &program)
{
    return program.find<QPushButton>(u"cmdconnect"_s)->property("Tag").toString();
}

bool isLocked(const Program &program)
{
    const bool server = program.find<QComboBox>(u"comserver"_s)->lineEdit()->isReadOnly();
    const bool port = program.find<QComboBox>(u"comport"_s)->lineEdit()->isReadOnly();
    const bool password = program.find<QLineEdit>(u"txtPWD"_s)->isReadOnly();
    return server && port && password;
}

QString enabledState(const Program &program, const QString &button)
{
    return button + (program.find<QPushButton>(button)->isEnabled() ? u" on"_s : u" off"_s);
}

} // namespace

class ConnectTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void fourQuestionsAreSentInOrder()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program;
        program.start();
        program.connectTo(server);

        const QByteArray header(4, '\xFF');
        const QList<QByteArray> expected{header + "rcon practice status", header + "getstatus",
                                         header + "rcon practice dvarlist sv_maprotation",
                                         header + "rcon practice fdir *.cfg"};
        QCOMPARE(server.requests(), expected);
    }

    void theAnswersFillTheWindow()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        answerBriefly(server);
        Program program;
        program.start();
        program.connectTo(server);

        QCOMPARE(program.pane(), u"map: mp_carentan\r\nnum score\r\n\r\n"
                                 "Server running game mode [sd] on map [mp_carentan]"_s);
        QCOMPARE(program.messages(), QStringList{u"Connected to server 127.0.0.1:%1"_s.arg(server.port())});
        QCOMPARE(program.text(u"txtcurmaprot_0"_s), u"gametype sd map mp_decoy"_s);
        QVERIFY(!program.find<QPlainTextEdit>(u"txtcurmaprot_0"_s)->font().bold());
        QCOMPARE(program.rows(u"lstcfgs"_s), QStringList({u"server.cfg"_s, u"match.cfg"_s}));
        QCOMPARE(program.find<QComboBox>(u"lstcfgs"_s)->currentIndex(), 0);
        QCOMPARE(enabledState(program, u"cmdcfgexec"_s), u"cmdcfgexec on"_s);
        QCOMPARE(enabledState(program, u"cmdsmrpaste_0"_s), u"cmdsmrpaste_0 on"_s);
        QCOMPARE(enabledState(program, u"cmdsmrpaste_1"_s), u"cmdsmrpaste_1 on"_s);
        QVERIFY(program.showsRepliesOf(server));
    }

    void theNoteTellsEachStep()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program(keepsOutput);
        program.start();
        program.output.showprogress(u"an old note"_s, Progress::Replace);
        QStringList notes;
        connect(&server, &PracticeServer::requested, this, [&] {
            const QString seen = program.progress()->isVisible() ? u" shows "_s : u" hides "_s;
            notes.append(QString::fromLatin1(server.commands().constLast()) + seen + program.note());
        });
        program.connectTo(server);

        const QString first = u"Asking server for status"_s;
        const QString second = first + u"\nAsking server for Map rotation"_s;
        const QString third = second + u"\nAsking server for cfg files"_s;
        QCOMPARE(notes, QStringList({u"status hides "_s, u"getstatus shows "_s + first,
                                     u"dvarlist sv_maprotation shows "_s + second, u"fdir *.cfg shows "_s + third}));
        QVERIFY(program.progress()->isHidden());
        QCOMPARE(program.note(), u""_s);
    }

    void whatIsSavedFirstIsToldBelowAnEmptyLine()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program;
        program.start();
        QStringList notes;
        connect(&server, &PracticeServer::requested, this, [&] { notes.append(program.note()); });
        program.connectTo(server);
        QCOMPARE(notes.value(0), u"\nSaving RCON output...\nSaving Message output..."_s);
        QCOMPARE(notes.value(1), u"Asking server for status"_s);
    }

    void thePasswordIsProvedBeforeAnythingChanges()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program(keepsOutput);
        program.start();
        QStringList before;
        connect(&server, &PracticeServer::requested, this, [&] {
            if (before.isEmpty())
                before = QStringList{tag(program), program.text(u"cmdconnect"_s),
                                     isLocked(program) ? u"locked"_s : u"free"_s, program.text(u"txtcurmaprot_0"_s)} +
                         program.rows(u"lstcfgs"_s) + program.messages();
        });
        program.connectTo(server);
        QCOMPARE(before, QStringList({u"NO"_s, u"Connect"_s, u"free"_s, u""_s}));
        QCOMPARE(tag(program), u"YES"_s);
        QCOMPARE(program.text(u"cmdconnect"_s), u"Disconnect"_s);
        QVERIFY(isLocked(program));
    }

    void placeholdersStandUntilTheServerHasAnswered()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program;
        program.start();
        QStringList seen;
        connect(&server, &PracticeServer::requested, this, [&] {
            if (server.commands().constLast() != "getstatus")
                return;
            const bool bold = program.find<QPlainTextEdit>(u"txtcurmaprot_0"_s)->font().bold();
            seen = QStringList{tag(program),
                               isLocked(program) ? u"locked"_s : u"free"_s,
                               program.text(u"txtcurmaprot_0"_s),
                               bold ? u"bold"_s : u"normal"_s,
                               enabledState(program, u"cmdsmrpaste_0"_s),
                               enabledState(program, u"cmdsmrpaste_1"_s),
                               enabledState(program, u"cmdcfgexec"_s)} +
                   program.rows(u"lstcfgs"_s) + program.messages();
        });
        program.connectTo(server);
        QCOMPARE(seen, QStringList({u"YES"_s, u"locked"_s, u"Server did not give rotation."_s, u"bold"_s,
                                    u"cmdsmrpaste_0 off"_s, u"cmdsmrpaste_1 off"_s, u"cmdcfgexec off"_s,
                                    u"No CFGs on server"_s, u"Connected to server 127.0.0.1:%1"_s.arg(server.port())}));
    }

    void onlyTheStatusIsEchoed()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        answerBriefly(server);
        Program program;
        program.start();
        QStringList panes;
        connect(&server, &PracticeServer::requested, this, [&] { panes.append(program.pane()); });
        program.connectTo(server);
        const QString status = u"map: mp_carentan\r\nnum score\r\n\r\n"_s;
        const QString game = status + u"Server running game mode [sd] on map [mp_carentan]"_s;
        QCOMPARE(panes, QStringList({u""_s, status, game, game}));
        QCOMPARE(program.pane(), game);
    }

    void aWrongPasswordIsRefused()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program;
        program.start();
        QStringList whileTold;
        program.prompts.whileOpen = [&] {
            const bool open = program.udpclient.State() == UDPClient::Open;
            whileTold = {open ? u"open"_s : u"closed"_s, program.progress()->isVisible() ? u"shown"_s : u"hidden"_s};
        };
        program.connectTo(server, u"guess"_s);

        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{badPassword});
        QCOMPARE(whileTold, QStringList({u"open"_s, u"shown"_s}));
        QCOMPARE(server.commands(), QList<QByteArray>{"status"});
        QCOMPARE(tag(program), u"NO"_s);
        QCOMPARE(program.text(u"cmdconnect"_s), u"Connect"_s);
        QVERIFY(!isLocked(program));
        QCOMPARE(program.udpclient.State(), UDPClient::Closed);
        QVERIFY(program.progress()->isHidden());
        QCOMPARE(program.note(), u""_s);
        QVERIFY(program.messages().isEmpty());
        QVERIFY(program.rows(u"lstcfgs"_s).isEmpty());
        QCOMPARE(program.pane(), u"Bad rconpassword.\r\n"_s);
    }

    void anyLetterCaseRefuses_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<bool>("refused");
        QTest::newRow("capitals, sixteen characters") << QByteArray("BAD RCONPASSWORD") << true;
        QTest::newRow("small letters and more") << QByteArray("bad rconpasswords\n") << true;
        QTest::newRow("fifteen characters") << QByteArray("Bad rconpasswor") << false;
        QTest::newRow("a blank before it") << QByteArray(" Bad rconpassword.\n") << false;
    }

    void anyLetterCaseRefuses()
    {
        QFETCH(QByteArray, reply);
        QFETCH(bool, refused);
        PracticeServer server;
        QVERIFY(server.listen());
        server.answer("status", {reply});
        Program program;
        program.start();
        program.connectTo(server);
        QCOMPARE(program.prompts.takeBoxes(), refused ? QList<Box>{badPassword} : QList<Box>());
        QCOMPARE(tag(program), refused ? u"NO"_s : u"YES"_s);
        QCOMPARE(server.commands().size(), refused ? 1 : 4);
    }

    void aRefusedPasswordCanBeCorrected()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program;
        program.start();
        program.connectTo(server, u"guess"_s);
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{badPassword});
        server.forgetRequests();
        program.connectTo(server);
        QCOMPARE(tag(program), u"YES"_s);
        QCOMPARE(server.commands().size(), 4);
    }
};

WINDOW_TEST(ConnectTest)
#include "tst_connect.moc"
