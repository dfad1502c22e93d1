// SPDX-License-Identifier: MIT
#include "at_request.h"
#include "game_replies.h"
#include "program.h"
#include "window_test.h"

#include <QComboBox>
#include <QPlainTextEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

const Box noResponse{u"No response"_s,
                     u"No response from server in 15 seconds\nCould be server loading map! or \n"
                     "Fragmented UDP packets which routers do not pass onTry again..."_s,
                     BoxIcon::Exclamation, BoxButtons::Ok};
const Box notConnected{u"Not connected"_s, u"Please connect to a server first!"_s, BoxIcon::Exclamation,
                       BoxButtons::Ok};

/// What the tab "Misc" shows of the server.
QStringList told(const Program &program)
{
    const auto *rotation = program.find<QPlainTextEdit>(u"txtcurmaprot_0"_s);
    const bool paste = program.find<QPushButton>(u"cmdsmrpaste_0"_s)->isEnabled() &&
                       program.find<QPushButton>(u"cmdsmrpaste_1"_s)->isEnabled();
    return QStringList{rotation->toPlainText(), rotation->font().bold() ? u"bold"_s : u"normal"_s,
                       paste ? u"paste"_s : u"no paste"_s,
                       program.find<QPushButton>(u"cmdcfgexec"_s)->isEnabled() ? u"exec"_s : u"no exec"_s} +
           program.rows(u"lstcfgs"_s);
}

const QStringList placeholders{u"Server did not give rotation."_s, u"bold"_s, u"no paste"_s, u"no exec"_s,
                               u"No CFGs on server"_s};

bool isConnected(const Program &program)
{
    return program.find<QPushButton>(u"cmdconnect"_s)->property("Tag").toString() == u"YES";
}

double seconds(const Program &program)
{
    return program.clock.secondsSinceMidnight();
}

} // namespace

class ConnectSilenceTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void aSilentServerCountsAsConnected()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        server.setSilent(true);
        Program program;
        program.start();
        program.connectTo(server);
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{noResponse});
        QCOMPARE(server.commands(), QList<QByteArray>({"status", "status", "status", "status", "status", "getstatus"}));
        QVERIFY(isConnected(program));
        QCOMPARE(program.text(u"cmdconnect"_s), u"Disconnect"_s);
        QCOMPARE(program.udpclient.State(), UDPClient::Open);
        QCOMPARE(program.messages(), QStringList{u"Connected to server 127.0.0.1:%1"_s.arg(server.port())});
        QCOMPARE(told(program), placeholders);
        QCOMPARE(program.pane(), u""_s);
        QVERIFY(program.progress()->isHidden());
        QCOMPARE(program.note(), u""_s);
    }

    void withoutAPublicStatusThePlaceholdersStay()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        answerBriefly(server);
        server.answerRaw("getstatus", {});
        Program program("[options]\r\nautoqplayer=1\r\n");
        program.start();
        program.connectTo(server);
        QVERIFY(program.prompts.takeBoxes().isEmpty());
        QCOMPARE(server.commands(), QList<QByteArray>({"status", "getstatus"}));
        QVERIFY(isConnected(program));
        QCOMPARE(told(program), placeholders);
        QCOMPARE(program.pane(), u"map: mp_carentan\r\nnum score\r\n\r\n"_s);
        QVERIFY(program.progress()->isHidden());
        QVERIFY(program.showsRepliesOf(server));
        QVERIFY2(!program.find<QAbstractButton>(u"chkautoupdate"_s)->isChecked(), "step 16 is not reached");
    }

    void thePublicStatusIsAwaitedForFiveSlots()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        server.answerRaw("getstatus", {});
        Program program;
        program.start();
        double asked = 0;
        atRequest(server, "getstatus", [&] { asked = seconds(program); });
        program.connectTo(server);
        const double waited = seconds(program) - asked;
        // Five slots, the first of which is up to half a second shorter or longer.
        QVERIFY2(waited > 4.3 && waited < 5.7, qPrintable(QString::number(waited)));
    }

    void aLatePublicStatusIsStillTaken()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        answerBriefly(server);
        server.answerRaw("getstatus", {});
        Program program;
        program.start();
        double asked = 0;
        atRequest(server, "getstatus", [&] { asked = seconds(program); });
        asSoonAs(
            &server, [&] { return asked > 0 && seconds(program) > asked + 2.5; },
            [&] { server.sendRaw(statusResponse("\\g_gametype\\hq\\mapname\\mp_decoy\\x\\y")); });
        program.connectTo(server);
        QCOMPARE(server.commands().size(), 4);
        QVERIFY(program.pane().endsWith(u"Server running game mode [hq] on map [mp_decoy]"));
    }

    void withoutARotationItsPlaceholderStays()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        answerBriefly(server);
        server.answer("dvarlist sv_maprotation", {});
        Program program;
        program.start();
        program.connectTo(server);
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{noResponse});
        QCOMPARE(server.commands().count("dvarlist sv_maprotation"), 5);
        QCOMPARE(server.commands().constLast(), "fdir *.cfg");
        QCOMPARE(told(program), QStringList({u"Server did not give rotation."_s, u"bold"_s, u"no paste"_s, u"exec"_s,
                                             u"server.cfg"_s, u"match.cfg"_s}));
    }

    void withoutAListingItsPlaceholderStays()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        answerBriefly(server);
        server.answer("fdir *.cfg", {});
        Program program("[options]\r\nautoqplayer=1\r\n");
        program.start();
        program.connectTo(server);
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{noResponse});
        QCOMPARE(server.commands().count("fdir *.cfg"), 5);
        QCOMPARE(told(program), QStringList({u"gametype sd map mp_decoy"_s, u"normal"_s, u"paste"_s, u"no exec"_s,
                                             u"No CFGs on server"_s}));
        QVERIFY2(program.find<QAbstractButton>(u"chkautoupdate"_s)->isChecked(), "the refresh starts all the same");
        QVERIFY(program.progress()->isHidden());
        QVERIFY(program.showsRepliesOf(server));
    }

    void theGameIsShownInBracketsEvenWhenItIsNotTold()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        server.answerRaw("getstatus", {statusResponse("\\g_gametype\\\\mapname\\\\protocol\\118")});
        Program program;
        program.start();
        program.connectTo(server);
        QVERIFY(program.pane().endsWith(u"\r\nServer running game mode [] on map [\\protocol]"));
    }

    void aPlayersNameInTheStatusCanPassForTheMap()
    {
        // The public status is added to the text of the status table, where the first map name is looked for.
        PracticeServer server;
        QVERIFY(server.listen());
        answerBriefly(server);
        server.answer("status", {"  0 \\mapname\\mp_fake\\\n"});
        Program program;
        program.start();
        program.connectTo(server);
        QVERIFY(program.pane().endsWith(u"Server running game mode [sd] on map [mp_fake]"));
    }

    void afterARefusedConsoleCommandTheStatusIsSentOnce()
    {
        // A refused command leaves the wish not to wait behind, and the next one sent uses it up.
        PracticeServer server;
        QVERIFY(server.listen());
        server.setSilent(true);
        Program program;
        program.start();
        program.setText(u"comdirect"_s, u"serverinfo"_s);
        program.click(u"cmdsend"_s);
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{notConnected});
        program.connectTo(server);
        QCOMPARE(server.commands(), QList<QByteArray>({"status", "getstatus"}));
        QVERIFY(isConnected(program));
    }

    void afterARefusedConsoleCommandAWrongPasswordIsStillSeen()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program;
        program.start();
        program.setText(u"comdirect"_s, u"serverinfo"_s);
        program.click(u"cmdsend"_s);
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{notConnected});
        program.connectTo(server, u"guess"_s);
        QCOMPARE(program.prompts.takeBoxes().value(0).title, u"No connection"_s);
        QVERIFY(!isConnected(program));
    }
};

WINDOW_TEST(ConnectSilenceTest)
#include "tst_connect_silence.moc"
