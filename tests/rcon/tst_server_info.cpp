// SPDX-License-Identifier: MIT
#include "rcon/server_info.h"
#include "test_class.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

class ServerInfoTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void theGameTypeRunsToTheNextBackslash_data()
    {
        QTest::addColumn<QString>("reply");
        QTest::addColumn<QString>("expected");
        QTest::newRow("in the middle") << u"statusResponse\n\\fs_game\\\\g_gametype\\tdm\\mapname\\mp_decoy\n"_s
                                       << u"tdm"_s;
        QTest::newRow("any letter case") << u"\\G_GameType\\SD\\x\\y\n"_s << u"SD"_s;
        QTest::newRow("empty") << u"\\g_gametype\\\\mapname\\mp_decoy\n"_s << u""_s;
        QTest::newRow("the first of two") << u"\\g_gametype\\hq\\g_gametype\\dm\\x\n"_s << u"hq"_s;
        QTest::newRow("also inside another value") << u"\\a\\my g_gametype is\\g_gametype\\dm\\x\n"_s << u"is"_s;
        QTest::newRow("last on its line") << u"\\mapname\\mp_decoy\\g_gametype\\ctf\n3 40 \"a\\b\"\n"_s << u"ctf"_s;
        QTest::newRow("last of all") << u"\\g_gametype\\ctf"_s << u"ctf"_s;
        QTest::newRow("nothing behind the name") << u"\\g_gametype"_s << u""_s;
        QTest::newRow("only the backslash behind it") << u"\\g_gametype\\"_s << u""_s;
        QTest::newRow("missing") << u"statusResponse\n\\mapname\\mp_decoy\\x\\y\n"_s << u""_s;
        QTest::newRow("no reply") << u""_s << u""_s;
    }

    void theGameTypeRunsToTheNextBackslash()
    {
        QFETCH(QString, reply);
        QTEST(gameType(reply), "expected");
    }

    void theMapNameRunsToABackslashOneCharacterOn_data()
    {
        QTest::addColumn<QString>("reply");
        QTest::addColumn<QString>("expected");
        QTest::newRow("in the middle") << u"\\g_gametype\\tdm\\mapname\\mp_decoy\\protocol\\118\n"_s << u"mp_decoy"_s;
        QTest::newRow("any letter case") << u"\\MapName\\MP_Decoy\\x\\y\n"_s << u"MP_Decoy"_s;
        QTest::newRow("an empty name takes the next key along") << u"\\mapname\\\\protocol\\118\n"_s << u"\\protocol"_s;
        QTest::newRow("one letter") << u"\\mapname\\a\\protocol\\118\n"_s << u"a"_s;
        QTest::newRow("the first of two") << u"\\mapname\\mp_a\\mapname\\mp_b\\x\n"_s << u"mp_a"_s;
        QTest::newRow("also inside another value") << u"\\a\\my mapname is\\mapname\\mp_b\\x\n"_s << u"is"_s;
        QTest::newRow("last on its line") << u"\\x\\y\\mapname\\mp_decoy\n3 40 \"a\\b\"\n"_s << u"mp_decoy"_s;
        QTest::newRow("last and empty") << u"\\x\\y\\mapname\\\n3 40 \"a\\b\"\n"_s << u""_s;
        QTest::newRow("last of all") << u"\\mapname\\mp_decoy"_s << u"mp_decoy"_s;
        QTest::newRow("nothing behind the name") << u"\\mapname"_s << u""_s;
        QTest::newRow("only the backslash behind it") << u"\\mapname\\"_s << u""_s;
        QTest::newRow("missing") << u"\\g_gametype\\tdm\\x\\y\n"_s << u""_s;
        QTest::newRow("no reply") << u""_s << u""_s;
    }

    void theMapNameRunsToABackslashOneCharacterOn()
    {
        QFETCH(QString, reply);
        QTEST(mapName(reply), "expected");
    }

    void theFirstSixteenCharactersRefuseThePassword_data()
    {
        QTest::addColumn<QString>("reply");
        QTest::addColumn<bool>("expected");
        QTest::newRow("the server's own line") << u"Bad rconpassword.\r\n"_s << true;
        QTest::newRow("sixteen characters") << u"bad rconpassword"_s << true;
        QTest::newRow("capitals") << u"BAD RCONPASSWORD"_s << true;
        QTest::newRow("mixed letters") << u"bAd RcOnPaSsWoRd"_s << true;
        QTest::newRow("anything may follow") << u"Bad rconpasswords are no fun"_s << true;
        QTest::newRow("fifteen characters") << u"Bad rconpasswor"_s << false;
        QTest::newRow("not at the beginning") << u" Bad rconpassword."_s << false;
        QTest::newRow("two blanks") << u"Bad  rconpassword"_s << false;
        QTest::newRow("another line") << u"No rconpassword set on the server.\r\n"_s << false;
        QTest::newRow("no reply") << u""_s << false;
    }

    void theFirstSixteenCharactersRefuseThePassword()
    {
        QFETCH(QString, reply);
        QTEST(refusesPassword(reply), "expected");
    }
};

GUILESS_TEST(ServerInfoTest)
#include "tst_server_info.moc"
