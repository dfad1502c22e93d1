// SPDX-License-Identifier: MIT
#include "practice/status_table.h"
#include "test_class.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

const QString head = u"map: mp_villa\n"
                     "num score ping guid   name            lastmsg address               qport rate\n"
                     "--- ----- ---- ------ --------------- ------- --------------------- ----- -----\n"_s;

Player bandAid()
{
    Player player;
    player.slot = 1;
    player.score = 0;
    player.ping = 55;
    player.guid = u"63281996"_s;
    player.name = u"BandAid"_s;
    player.lastmsg = 50;
    player.address = u"11.11.11.11:524"_s;
    player.qport = 8045;
    return player;
}

QString row(const Player &player)
{
    return statusTable(u"mp_villa"_s, {player}).sliced(head.size());
}

Dvars smallServer()
{
    Dvars dvars;
    dvars.add({u"sv_hostname"_s, u"SA"_s, u"^1My ^7Server"_s, {}});
    dvars.add({u"g_gametype"_s, u"S"_s, u"tdm"_s, {}});
    dvars.add({u"mapname"_s, u"SR"_s, u"mp_toujane"_s, {}});
    dvars.add({u"g_password"_s, u"A"_s, {}, {}});
    return dvars;
}

} // namespace

class PracticeStatusTableTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void anEmptyServerHasOnlyItsHead() { QCOMPARE(statusTable(u"mp_villa"_s, {}), head + u'\n'); }

    void theRowsAreThoseOfAPublicServer()
    {
        Player second = bandAid();
        second.slot = 4;
        second.ping = 999;
        second.guid = u"68003079"_s;
        second.name = u"Ashhole"_s;
        second.lastmsg = 750;
        second.address = u"11.11.11.11:19978"_s;
        second.qport = 19033;
        QCOMPARE(statusTable(u"mp_villa"_s, {bandAid(), second}),
                 head + u"  1     0   55 63281996 BandAid^7              50 11.11.11.11:524        8045 25000\n"
                        "  4     0  999 68003079 Ashhole^7             750 11.11.11.11:19978     19033 25000\n"
                        "\n"_s);
    }

    void colourCodesTakeNoRoom()
    {
        Player player = bandAid();
        player.name = u"^1Ban^7dAid"_s;
        QCOMPARE(row(player),
                 u"  1     0   55 63281996 ^1Ban^7dAid^7              50 11.11.11.11:524        8045 25000\n\n"_s);
    }

    void aLongNamePushesTheRowOut()
    {
        Player player = bandAid();
        player.name = u"abcdefghijklmnopqrstuvwxyz"_s;
        QCOMPARE(row(player), u"  1     0   55 63281996 abcdefghijklmnopqrstuvwxyz^7     50 11.11.11.11:524"
                              "        8045 25000\n\n"_s);
    }

    void aFullAddressTouchesTheNextColumn()
    {
        Player player = bandAid();
        player.address = u"211.111.111.111:-12345"_s;
        player.qport = 54321;
        QVERIFY(row(player).endsWith(u" 211.111.111.111:-1234554321 25000\n\n"_s));
    }

    void whoeverComesOrGoesHasAWordForAPing()
    {
        Player player = bandAid();
        player.state = Player::State::Connecting;
        QVERIFY(row(player).startsWith(u"  1     0 CNCT 63281996 BandAid^7"_s));
        player.state = Player::State::Leaving;
        QVERIFY(row(player).startsWith(u"  1     0 ZMBI 63281996 BandAid^7"_s));
    }

    void thePublicAnswerHasOneLineAPlayer()
    {
        Player player = bandAid();
        player.score = -3;
        player.name = u" Big \"Bob\" "_s;
        Player leaving = bandAid();
        leaving.state = Player::State::Leaving;
        QCOMPARE(statusResponseText(smallServer(), {player, leaving}),
                 u"statusResponse\n"
                 "\\g_gametype\\tdm\\mapname\\mp_toujane\\pswrd\\0\\sv_hostname\\^1My ^7Server\n"
                 "-3 55 \" Big \"Bob\" \"\n"_s);
    }

    void thePublicAnswerTellsThatAPasswordIsNeeded()
    {
        Dvars dvars = smallServer();
        dvars.set(u"g_password"_s, u"secret"_s);
        const QString text = statusResponseText(dvars, {});
        QVERIFY(text.contains(u"\\pswrd\\1\\"_s));
        QVERIFY(!text.contains(u"secret"_s));
    }

    void aBackslashCannotBreakTheInformation()
    {
        Dvars dvars = smallServer();
        dvars.set(u"sv_hostname"_s, u"a\\mapname\\b"_s);
        QVERIFY(statusResponseText(dvars, {}).endsWith(u"\\sv_hostname\\amapnameb\n"_s));
    }

    void serverInfoHasAKeyALine()
    {
        QCOMPARE(serverInfoText(smallServer()), u"Server info settings:\n"
                                                "g_gametype          tdm\n"
                                                "mapname             mp_toujane\n"
                                                "sv_hostname         ^1My ^7Server\n"_s);
    }
};

GUILESS_TEST(PracticeStatusTableTest)
#include "tst_practice_status_table.moc"
