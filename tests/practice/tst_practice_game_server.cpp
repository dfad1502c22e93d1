// SPDX-License-Identifier: MIT
#include "practice/game_server.h"
#include "test_class.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

Player bob()
{
    Player player;
    player.slot = 3;
    player.score = 12;
    player.guid = u"4711"_s;
    player.name = u"^1Bob"_s;
    player.address = u"10.0.0.7:28960"_s;
    return player;
}

PracticeOptions emptyServer()
{
    PracticeOptions options;
    options.players = 0;
    return options;
}

} // namespace

class PracticeGameServerTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aCommandIsAnsweredInTheGamesWords_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("reply");
        const auto row = [](const QString &line, const QString &reply) {
            QTest::newRow(line.toLatin1().constData()) << line << reply;
        };
        row(u""_s, u""_s);
        row(u"foo"_s, u"Unknown command \"foo\"\n"_s);
        row(u"foo 1"_s, u"Unknown command \"foo\"\n"_s);
        row(u"setfriendlyfire 1"_s, u"Unknown command \"setfriendlyfire\"\n"_s);
        row(u"scr_hob_ riflePercentage\"50\""_s, u"Unknown command \"scr_hob_\"\n"_s);
        row(u"sv_hostname"_s, u"\"sv_hostname\" is: \"CoD2Host^7\" default: \"CoD2Host^7\"\n  Domain is any text\n"_s);
        row(u"G_ALLOWVOTE "_s,
            u"\"g_allowVote\" is: \"1^7\" default: \"1^7\"\n  Domain is any integer from 0 to 1\n"_s);
        row(u"set"_s, u"USAGE: set <variable> <value>\n"_s);
        row(u"set x"_s, u"USAGE: set <variable> <value>\n"_s);
        row(u"say hello"_s, u""_s);
        row(u"tell 3 hello"_s, u""_s);
        row(u"tell 4 hello"_s, u"Client 4 is not active\n"_s);
        row(u"tell 3"_s, u"Usage: tell <client number> <text>\n"_s);
        row(u"clientkick 3"_s, u"3:^1Bob kicked\n"_s);
        row(u"ClientKick 3"_s, u"3:^1Bob kicked\n"_s);
        row(u"banclient 3"_s, u"3:^1Bob banned\n"_s);
        row(u"tempbanclient 3"_s, u"3:^1Bob tempbanned\n"_s);
        row(u"clientkick 4"_s, u"Client 4 is not active\n"_s);
        row(u"clientkick 20"_s, u"Bad client slot: 20\n"_s);
        row(u"banclient -1"_s, u"Bad client slot: -1\n"_s);
        row(u"tempbanclient Bob"_s, u"Bad slot number: Bob\n"_s);
        row(u"banclient"_s, u"Usage: banclient <client number>\n"_s);
        row(u"clientkick 3 4"_s, u"Usage: clientkick <client number>\n"_s);
        row(u"exec server.cfg"_s, u"execing server.cfg\n"_s);
        row(u"exec nothing.cfg"_s, u"couldn't exec nothing.cfg\n"_s);
        row(u"map mp_nowhere"_s, u"Can't find map maps/mp/mp_nowhere.d3dbsp\n"_s);
        row(u"map"_s, u"USAGE: map <map name>\n"_s);
        row(u"dir"_s, u"usage: dir <directory> [extension]\n"_s);
        row(u"dvarlist sv_kick*"_s, u"    A   sv_kickBanTime \"300\"\n\n<all> total dvars\n<all> dvar indexes\n"_s);
        row(u"dvarlist sv_maprotationcurrent"_s,
            u"    A   sv_mapRotationCurrent \"gametype sd map mp_carentan gametype ctf map mp_dawnville gametype hq "
            u"map "
            "mp_burgundy gametype dm map mp_matmata\"\n\n<all> total dvars\n<all> dvar indexes\n"_s);
    }
    void aCommandIsAnsweredInTheGamesWords()
    {
        QFETCH(QString, line);
        QFETCH(QString, reply);
        GameServer game(emptyServer());
        game.players().put(bob());
        reply.replace(u"<all>"_s, QString::number(game.dvars().count()));
        QCOMPARE(game.execute(line).reply, reply);
    }

    void aVariableIsSetInEveryForm_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("value");
        const auto row = [](const QString &line, const QString &name, const QString &value) {
            QTest::newRow(line.toLatin1().constData()) << line << name << value;
        };
        row(u"sv_maxrate 25000"_s, u"sv_maxRate"_s, u"25000"_s);
        row(u"sv_hostname\"My server\""_s, u"sv_hostname"_s, u"My server"_s);
        row(u"sv_hostname\"\""_s, u"sv_hostname"_s, u""_s);
        row(u"SCR_ALLOW_MP40\"0\""_s, u"scr_allow_mp40"_s, u"0"_s);
        row(u"g_password \"come in\""_s, u"g_password"_s, u"come in"_s);
        row(u"set sv_maxping 200"_s, u"sv_maxPing"_s, u"200"_s);
        row(u"Set scr_motd \"Hello you\""_s, u"scr_motd"_s, u"Hello you"_s);
        row(u"scr_motd Hello   you"_s, u"scr_motd"_s, u"Hello you"_s);
        row(u"seta my_own 5"_s, u"my_own"_s, u"5"_s);
        row(u"set my_own \"\""_s, u"my_own"_s, u""_s);
        row(u"sv_maprotationcurrent \"gametype dm map mp_decoy\""_s, u"sv_mapRotationCurrent"_s,
            u"gametype dm map mp_decoy"_s);
        row(u"scr_sd_timelimit 12.5"_s, u"scr_sd_timelimit"_s, u"12.5"_s);
    }
    void aVariableIsSetInEveryForm()
    {
        QFETCH(QString, line);
        QFETCH(QString, name);
        QFETCH(QString, value);
        GameServer game(emptyServer());
        const CommandResult result = game.execute(line);
        QCOMPARE(result.reply, QString());
        QVERIFY(!result.event.isEmpty());
        QVERIFY(!result.loads);
        QVERIFY(game.dvars().find(name) != nullptr);
        QCOMPARE(game.dvars().value(name), value);
    }

    void aNewPasswordIsNotTold()
    {
        GameServer game(emptyServer());
        QCOMPARE(game.execute(u"g_password \"secret\""_s).event, u"g_password was changed"_s);
        QCOMPARE(game.execute(u"set sv_privatePassword secret"_s).event, u"sv_privatePassword was changed"_s);
        QCOMPARE(game.execute(u"sv_hostname X"_s).event, u"sv_hostname is now \"X\""_s);
    }

    void whoeverIsSentAwayIsGone_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<int>("bans");
        QTest::newRow("kick") << u"clientkick"_s << 0;
        QTest::newRow("ban") << u"banclient"_s << 1;
        QTest::newRow("temporary ban") << u"tempbanclient"_s << 1;
    }
    void whoeverIsSentAwayIsGone()
    {
        QFETCH(QString, command);
        QFETCH(int, bans);
        GameServer game(emptyServer());
        game.players().put(bob());
        QVERIFY(game.execute(command + u" 3"_s).event.contains(u"Bob"_s));
        QCOMPARE(game.players().count(), 0);
        QCOMPARE(game.bans().count(), bans);
        QCOMPARE(game.execute(command + u" 3"_s).reply, u"Client 3 is not active\n"_s);
        QCOMPARE(game.bans().count(), bans);
    }

    void statusShowsTheMapAndThePlayers()
    {
        GameServer game(emptyServer());
        game.players().put(bob());
        const QStringList lines = game.execute(u"Status"_s).reply.split(u'\n');
        QCOMPARE(lines.size(), 6);
        QCOMPARE(lines.at(0), u"map: mp_toujane"_s);
        QVERIFY(lines.at(3).startsWith(u"  3    12   50   4711 ^1Bob^7     "_s));
        QCOMPARE(lines.at(4), QString());
    }

    void theListOfMapsHasThreeLinesOfHeading()
    {
        GameServer game(emptyServer());
        QStringList lines = game.execute(u"dir maps/mp d3dbsp"_s).reply.split(u'\n');
        QCOMPARE(lines.takeLast(), QString());
        QCOMPARE(lines.first(), u"Directory of maps/mp d3dbsp"_s);
        QStringList maps = lines.sliced(3);
        maps.sort();
        QCOMPARE(maps, QStringList({u"mp_breakout.d3dbsp"_s, u"mp_brecourt.d3dbsp"_s, u"mp_burgundy.d3dbsp"_s,
                                    u"mp_carentan.d3dbsp"_s, u"mp_dawnville.d3dbsp"_s, u"mp_decoy.d3dbsp"_s,
                                    u"mp_downtown.d3dbsp"_s, u"mp_farmhouse.d3dbsp"_s, u"mp_leningrad.d3dbsp"_s,
                                    u"mp_matmata.d3dbsp"_s, u"mp_toujane.d3dbsp"_s, u"mp_trainstation.d3dbsp"_s}));
        QCOMPARE(game.execute(u"dir elsewhere x"_s).reply.count(u'\n'), 3);
    }

    void aShorterHeadingLacksTheEmptyLine()
    {
        PracticeOptions options = emptyServer();
        options.headLines = 2;
        GameServer game(options);
        GameServer usual(emptyServer());
        const QStringList lines = game.execute(u"dir maps/mp d3dbsp"_s).reply.split(u'\n');
        QStringList usualLines = usual.execute(u"dir maps/mp d3dbsp"_s).reply.split(u'\n');
        QCOMPARE(usualLines.takeAt(2), QString());
        QCOMPARE(lines, usualLines);
        QCOMPARE(lines.at(2), u"mp_toujane.d3dbsp"_s);
        QCOMPARE(game.execute(u"dir elsewhere x"_s).reply.count(u'\n'), 2);
        QCOMPARE(game.execute(u"fdir *.cfg"_s).reply, usual.execute(u"fdir *.cfg"_s).reply);
    }

    void theListOfFilesEndsWithItsCount()
    {
        GameServer game(emptyServer());
        QStringList lines = game.execute(u"fdir *.cfg"_s).reply.split(u'\n');
        QCOMPARE(lines.takeLast(), QString());
        QCOMPARE(lines.takeFirst(), u"---------------"_s);
        const QString total = lines.takeLast();
        QCOMPARE(total, u"%1 files listed"_s.arg(lines.size()));
        QVERIFY(lines.contains(u"/server.cfg"_s));
        QVERIFY(lines.contains(u"/old.cfg.bak"_s));
        QVERIFY(lines.contains(u"default_mp.cfg"_s));
        QCOMPARE(game.execute(u"fdir *.txt"_s).reply, u"---------------\n0 files listed\n"_s);
    }

    void everyListedFileCanBeExecuted()
    {
        GameServer game(emptyServer());
        const QStringList lines = game.execute(u"fdir *.cfg"_s).reply.split(u'\n');
        for (const QString &line : lines.sliced(1, lines.size() - 3)) {
            const QString name = line.startsWith(u'/') ? line.sliced(1) : line;
            QCOMPARE(game.execute(u"exec \""_s + name + u'"').reply, u"execing %1\n"_s.arg(name));
        }
    }

    void executingAFileSetsItsVariables()
    {
        GameServer game(emptyServer());
        const CommandResult result = game.execute(u"exec match"_s);
        QCOMPARE(result.reply, u"execing match\n"_s);
        QCOMPARE(game.dvars().value(u"scr_sd_scorelimit"_s), u"13"_s);
        QVERIFY(result.event.contains(u"g_gametype is \"sd\" from the next map on"_s));
        QVERIFY(result.event.contains(u"scr_sd_scorelimit is now \"13\""_s));
    }

    void thePublicAnswerHasTheLiveValues()
    {
        GameServer game(emptyServer());
        game.players().put(bob());
        game.execute(u"sv_hostname\"^1My ^7Server\""_s);
        game.execute(u"set g_gametype sd"_s);
        game.execute(u"map mp_decoy"_s);
        const QString text = game.statusResponse();
        QVERIFY(text.startsWith(u"statusResponse\n\\"_s));
        for (const auto &pair : {u"\\g_gametype\\sd\\"_s, u"\\gamename\\Call of Duty 2\\"_s, u"\\mapname\\mp_decoy\\"_s,
                                 u"\\protocol\\118\\"_s, u"\\pswrd\\0\\"_s, u"\\sv_hostname\\^1My ^7Server\\"_s,
                                 u"\\sv_maxclients\\20\\"_s})
            QVERIFY2(text.contains(pair), qPrintable(pair));
        QVERIFY(text.endsWith(u"\n0 50 \"^1Bob\"\n"_s));
    }

    void moreThanTheStockSlotsAreMadeForManyPlayers()
    {
        PracticeOptions options;
        options.players = 40;
        GameServer game(options);
        QCOMPARE(game.dvars().value(u"sv_maxclients"_s), u"40"_s);
        QCOMPARE(game.players().count(), 40);
    }

    void moreThanTheLargestServerHoldsAreTurnedAway()
    {
        PracticeOptions options;
        options.players = 65;
        GameServer game(options);
        QCOMPARE(game.dvars().value(u"sv_maxclients"_s), u"64"_s);
        QCOMPARE(game.players().count(), 64);
    }

    void whoeverIsStillJoiningHasNoScoreAndNoPing()
    {
        PracticeOptions options;
        options.players = 20;
        options.quirks = true;
        GameServer game(options);
        const QStringList rows = game.execute(u"status"_s).reply.split(u'\n').sliced(3, 20);
        QCOMPARE(rows.filter(u" CNCT "_s).size(), 2);
        int joining = 0;
        for (const Player &player : game.players().all()) {
            if (player.state != Player::State::Connecting)
                continue;
            ++joining;
            QVERIFY2(rows.at(player.slot).startsWith(u"%1     0 CNCT "_s.arg(player.slot, 3)),
                     qPrintable(rows.at(player.slot)));
            QVERIFY(game.statusResponse().contains(u"\n0 999 \""_s + player.name + u"\"\n"_s));
        }
        QCOMPARE(joining, 2);
    }
};

GUILESS_TEST(PracticeGameServerTest)
#include "tst_practice_game_server.moc"
