// SPDX-License-Identifier: MIT
#include "link.h"
#include "recording_lines.h"
#include "window_test.h"

#include <QLabel>
#include <QTableView>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// The program beside a server that is as real ones are, without anything that a test teaches it.
Beginning against(const PracticeOptions &options)
{
    return {.practice = options, .prepare = {}};
}

PracticeOptions withPlayers(int count)
{
    PracticeOptions options = PracticeOptions::cod2();
    options.players = count;
    return options;
}

} // namespace

class PracticeCod2ProgramTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void connectingWorks()
    {
        const ConnectedProgram on(against(withPlayers(12)));
        QVERIFY(on.program.isConnected());
        QVERIFY2(on.program.pane().endsWith(u"Server running game mode [tdm] on map [mp_toujane]"_s),
                 qPrintable(on.program.pane()));
        QVERIFY(on.program.rows(u"lstcfgs"_s).contains(u"server.cfg"_s));
    }

    void theSecondOfTwoQuickLinesIsDroppedInSilence()
    {
        ConnectedProgram on(against(withPlayers(12)));
        on.program.clock.speed = 0;
        on.program.clock.set(on.program.clock.now().addSecs(1));
        const auto enter = [&on](const QString &line) {
            const qsizetype before = on.server.requests().size();
            on.program.setText(u"comdirect"_s, line);
            on.program.click(u"cmdsend"_s);
            QTRY_COMPARE(on.server.requests().size(), before + 1);
        };
        enter(u"set first 1"_s);
        enter(u"set second 1"_s);
        QVERIFY(on.server.game().dvars().find(u"first"_s) != nullptr);
        QVERIFY(on.server.game().dvars().find(u"second"_s) == nullptr);
        on.program.clock.set(on.program.clock.now().addMSecs(500));
        enter(u"set second 1"_s);
        QVERIFY(on.server.game().dvars().find(u"second"_s) != nullptr);
    }

    void everyPageIsRead()
    {
        ConnectedProgram on(against(withPlayers(12)));
        const GameServer &game = on.server.game();
        on.program.click(u"cmdservpop"_s);
        QCOMPARE(on.program.text(u"txtservername"_s), game.dvars().value(u"sv_hostname"_s));
        QCOMPARE(on.program.text(u"txtmaxclients"_s), game.dvars().value(u"sv_maxclients"_s));
        on.program.click(u"cmdpopmaps"_s);
        QVERIFY(on.program.rows(u"lstmaps"_s).contains(u"mp_toujane"_s));
        on.program.click(u"cmdplypop"_s);
        const QAbstractItemModel *players = on.program.find<QTableView>(u"msfplayers"_s)->model();
        QCOMPARE(players->rowCount(), 12);
        QCOMPARE(players->index(0, 2).data().toString(), QString(game.players().all().constFirst().guid));
        on.program.click(u"cmdpopwep"_s);
        on.program.click(u"cmdCodOther_1"_s);
        for (const QString &label : {u"lblread_cmdservpop"_s, u"lblread_cmdpopmaps"_s, u"lblread_cmdplypop"_s,
                                     u"lblread_cmdpopwep"_s, u"lblread_cmdCodOther_1"_s})
            QVERIFY2(on.program.find<QLabel>(label)->text().startsWith(u"read "), qPrintable(label));
    }

    void changedSettingsReachTheServer()
    {
        ConnectedProgram on(against(withPlayers(12)));
        on.program.click(u"cmdservpop"_s);
        on.program.setText(u"txtservermotd"_s, u"Mind the snipers"_s);
        on.program.setText(u"txtmaxping"_s, u"250"_s);
        on.program.click(u"cmdservsetbasics"_s);
        QCOMPARE(on.program.prompts.takeBoxes().size(), 1); // the question
        QCOMPARE(on.server.game().dvars().value(u"scr_motd"_s), u"Mind the snipers"_s);
        QCOMPARE(on.server.game().dvars().value(u"sv_maxping"_s), u"250"_s);
    }

    void aMessageIsSaid()
    {
        ConnectedProgram on(against(withPlayers(12)));
        on.program.prompts.lines = {u"Good evening"_s};
        on.program.click(u"cmdmessage"_s);
        QCOMPARE(on.lines(), QStringList{u"Message to server>> RemoteUser Good evening"_s});
        QVERIFY(!on.server.commands().isEmpty());
        QVERIFY(on.server.commands().constFirst().startsWith("say"));
    }

    void aWrongPasswordIsToldInTheServersWords()
    {
        Beginning beginning = against(withPlayers(12));
        beginning.connects = false;
        ConnectedProgram on(beginning);
        on.program.connectTo(on.server, u"wrong"_s);
        QVERIFY2(on.program.pane().contains(u"Invalid password."_s), qPrintable(on.program.pane()));
        on.program.prompts.takeBoxes();
    }

    // The first copy got nothing, and the second its answer late.
    void aRecordingIsAServer()
    {
        using recording::in;
        using recording::out;
        const QByteArray status = request("status", "********");
        const QByteArray getStatus("\xFF\xFF\xFF\xFFgetstatus");
        const QByteArray recording =
            out(0s, status) + out(3s, status) + in(5s, printed("map: mp_decoy\nnum ")) +
            in(5001ms, printed("score\n\n")) + out(7s, getStatus) +
            in(7001ms, statusResponse("\\g_gametype\\sd\\mapname\\mp_decoy")) +
            out(9s, request("dvarlist sv_maprotation", "********")) + in(9001ms, printed("0 total dvars\n")) +
            out(11s, request("fdir *.cfg", "********")) + in(11001ms, printed("-\n/a.cfg\n1 files listed\n"));
        ConnectedProgram on({.prepare = {}, .recording = recording});
        QVERIFY(on.program.isConnected());
        QCOMPARE(on.connecting,
                 QByteArrayList({"status", "status", "getstatus", "dvarlist sv_maprotation", "fdir *.cfg"}));
        QCOMPARE(on.program.pane(),
                 u"map: mp_decoy\r\nnum score\r\n\r\nServer running game mode [sd] on map [mp_decoy]"_s);
        QCOMPARE(on.program.rows(u"lstcfgs"_s), QStringList{u"a.cfg"_s});
    }

    // The answer to each question's first copy comes when the second has been sent.
    void aLateServerIsHeardAfterACopy()
    {
        PracticeOptions options;
        options.late = true;
        const ConnectedProgram on(against(options));
        QVERIFY(on.program.isConnected());
        QVERIFY(on.connecting.startsWith("status"));
        QVERIFY(on.connecting.count("status") > 1);
        QVERIFY(on.program.pane().contains(u"map: mp_toujane"_s));
    }
};

WINDOW_TEST(PracticeCod2ProgramTest)
#include "tst_practice_cod2_program.moc"
