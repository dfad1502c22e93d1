// SPDX-License-Identifier: MIT
#include "practice/game_server.h"
#include "test_class.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

PracticeOptions emptyServer()
{
    PracticeOptions options;
    options.players = 0;
    return options;
}

} // namespace

class PracticeMapsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aMapIsLoaded()
    {
        GameServer game(emptyServer());
        Player player;
        player.slot = 3;
        player.score = 12;
        game.players().put(player);
        const CommandResult result = game.execute(u"map MP_Decoy"_s);
        QVERIFY(result.loads);
        QCOMPARE(result.event, u"loading map mp_decoy, game type tdm"_s);
        QCOMPARE(game.dvars().value(u"mapname"_s), u"mp_decoy"_s);
        QCOMPARE(game.players().at(3)->score, 0);
        QVERIFY(!game.execute(u"map mp_nowhere"_s).loads);
        QCOMPARE(game.dvars().value(u"mapname"_s), u"mp_decoy"_s);
    }

    void aRestartKeepsTheMap()
    {
        GameServer game(emptyServer());
        game.execute(u"set g_gametype ctf"_s);
        const CommandResult result = game.execute(u"map_restart"_s);
        QVERIFY(result.loads);
        QCOMPARE(result.event, u"loading map mp_toujane, game type ctf"_s);
    }

    void aLatchedVariableIsTakenUpWithTheMap_data()
    {
        QTest::addColumn<QString>("command");
        QTest::newRow("map") << u"map mp_decoy"_s;
        QTest::newRow("restart") << u"map_restart"_s;
        QTest::newRow("rotation without game types") << u"map_rotate"_s;
    }
    void aLatchedVariableIsTakenUpWithTheMap()
    {
        QFETCH(QString, command);
        GameServer game(emptyServer());
        game.execute(u"sv_maprotationcurrent \"map mp_decoy\""_s);
        const CommandResult assignment = game.execute(u"g_gametype sd"_s);
        QCOMPARE(assignment.reply, u"g_gametype will be changed upon restarting.\n"_s);
        QCOMPARE(assignment.event, u"g_gametype is \"sd\" from the next map on"_s);
        QCOMPARE(game.execute(u"set sv_maxclients 32"_s).reply, u"sv_maxclients will be changed upon restarting.\n"_s);
        QVERIFY(game.statusResponse().contains(u"\\g_gametype\\tdm\\"_s));
        QVERIFY(game.statusResponse().contains(u"\\sv_maxclients\\20\\"_s));
        QVERIFY(game.execute(u"serverinfo"_s).reply.contains(u"\ng_gametype          tdm\n"_s));
        QCOMPARE(game.execute(u"g_gametype"_s).reply,
                 u"\"g_gametype\" is: \"tdm^7\" default: \"dm^7\"\nlatched: \"sd^7\"\n  Domain is any text\n"_s);

        QVERIFY(!game.execute(u"map mp_nowhere"_s).loads);
        QVERIFY(game.statusResponse().contains(u"\\g_gametype\\tdm\\"_s));

        QVERIFY(game.execute(command).event.endsWith(u", game type sd"_s));
        QVERIFY(game.statusResponse().contains(u"\\g_gametype\\sd\\"_s));
        QVERIFY(game.statusResponse().contains(u"\\sv_maxclients\\32\\"_s));
    }

    void aRotationOverrulesTheLatchedGameType()
    {
        GameServer game(emptyServer());
        game.execute(u"g_gametype sd"_s);
        game.execute(u"sv_maprotationcurrent \"gametype tdm map mp_decoy\""_s);
        QCOMPARE(game.execute(u"map_rotate"_s).event, u"loading map mp_decoy, game type tdm"_s);
    }

    void anUnknownGameTypeBecomesDeathmatch()
    {
        GameServer game(emptyServer());
        game.execute(u"set g_gametype hob"_s);
        QCOMPARE(game.dvars().value(u"g_gametype"_s), u"tdm"_s);
        QVERIFY(game.execute(u"map_restart"_s)
                    .reply.contains(u"g_gametype hob is not a valid gametype, defaulting to dm\n"_s));
        QCOMPARE(game.dvars().value(u"g_gametype"_s), u"dm"_s);
    }

    void theModKnowsItsGameType()
    {
        PracticeOptions options = emptyServer();
        options.mod = u"hob"_s;
        GameServer game(options);
        game.execute(u"set g_gametype hob"_s);
        QCOMPARE(game.execute(u"map_restart"_s).event, u"loading map mp_toujane, game type hob"_s);
        QVERIFY(
            game.execute(u"dvarlist scr_hob_*"_s).reply.startsWith(u"    A   scr_hob_announceSpawnCampers \"1\"\n"_s));
    }

    void theRotationIsUsedUpAndRefilled()
    {
        GameServer game(emptyServer());
        game.execute(u"sv_maprotation \"gametype hq map mp_decoy gametype dm map mp_breakout\""_s);
        game.execute(u"sv_maprotationcurrent \"gametype sd map mp_carentan\""_s);
        const auto rotate = [&game] {
            const bool loads = game.execute(u"map_rotate"_s).loads;
            return QStringList{game.dvars().value(u"g_gametype"_s), game.dvars().value(u"mapname"_s),
                               game.dvars().value(u"sv_mapRotationCurrent"_s), loads ? u"loads"_s : u"stays"_s};
        };
        QCOMPARE(rotate(), QStringList({u"sd"_s, u"mp_carentan"_s, QString(), u"loads"_s}));
        QCOMPARE(rotate(), QStringList({u"hq"_s, u"mp_decoy"_s, u"gametype dm map mp_breakout"_s, u"loads"_s}));
        QCOMPARE(rotate(), QStringList({u"dm"_s, u"mp_breakout"_s, QString(), u"loads"_s}));
        QCOMPARE(rotate(), QStringList({u"hq"_s, u"mp_decoy"_s, u"gametype dm map mp_breakout"_s, u"loads"_s}));
    }

    void anEmptyRotationRestartsTheMap()
    {
        GameServer game(emptyServer());
        game.execute(u"sv_maprotation \"\""_s);
        game.execute(u"sv_maprotationcurrent \"\""_s);
        const CommandResult result = game.execute(u"map_rotate"_s);
        QVERIFY(result.loads);
        QVERIFY(result.reply.contains(u"No map specified in sv_mapRotation - forcing map_restart.\n"_s));
        QCOMPARE(game.dvars().value(u"mapname"_s), u"mp_toujane"_s);
    }

    void aRotationToNowhereStays()
    {
        GameServer game(emptyServer());
        game.execute(u"sv_maprotationcurrent \"gametype sd map mp_nowhere map mp_decoy\""_s);
        QVERIFY(!game.execute(u"map_rotate"_s).loads);
        QCOMPARE(game.dvars().value(u"mapname"_s), u"mp_toujane"_s);
        QCOMPARE(game.dvars().value(u"g_gametype"_s), u"tdm"_s);
        QCOMPARE(game.dvars().value(u"sv_mapRotationCurrent"_s), u"map mp_decoy"_s);
    }
};

GUILESS_TEST(PracticeMapsTest)
#include "tst_practice_maps.moc"
