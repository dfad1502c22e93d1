// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "practice/game_server.h"
#include "practice/players.h"
#include "practice/regulars.h"
#include "test_class.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int slotCount = 20;

QStringList story(quint32 seed, int seconds)
{
    Players players(10, seed, false);
    QStringList events;
    for (int second = 1; second <= seconds; ++second)
        events += players.step({}, second, slotCount);
    return events;
}

bool isThere(const Players &players, const QString &guid)
{
    return std::ranges::any_of(players.all(), [&guid](const Player &player) { return player.guid == guid; });
}

PracticeOptions withPlayers(int count)
{
    PracticeOptions options;
    options.players = count;
    return options;
}

} // namespace

class PracticePlayersTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void asManyAsWantedAreThere_data()
    {
        QTest::addColumn<int>("count");
        for (const int count : {0, 1, 12, 64})
            QTest::addRow("%d", count) << count;
    }
    void asManyAsWantedAreThere()
    {
        QFETCH(int, count);
        const Players players(count, 7, false);
        QCOMPARE(players.count(), count);
        for (int slot = 0; slot < count; ++slot)
            QVERIFY(players.at(slot) != nullptr);
        QVERIFY(players.at(count) == nullptr);
    }

    void equalSeedsTellEqualStories()
    {
        QCOMPARE(story(5, 2000), story(5, 2000));
        QVERIFY(story(5, 2000) != story(6, 2000));
    }

    void playersComeGoAndHang()
    {
        const QString events = story(1, 5000).join(u'\n');
        QVERIFY(events.contains(u" came in"_s));
        QVERIFY(events.contains(u" left"_s));
        QVERIFY(events.contains(u" hangs at ping 999"_s));
        QVERIFY(events.contains(u" timed out"_s));
    }

    void everybodyKeepsASlotOfHisOwn()
    {
        Players players(slotCount, 3, true);
        for (int second = 1; second <= 3000; ++second) {
            players.step({}, second, slotCount);
            QSet<int> taken;
            for (const Player &player : players.all()) {
                QVERIFY(player.slot >= 0 && player.slot < slotCount);
                taken.insert(player.slot);
                if (player.hangingFor > 0)
                    QCOMPARE(player.ping, 999);
                if (player.state == Player::State::Connecting)
                    QCOMPARE(std::pair(player.score, player.ping), std::pair(0, 999));
            }
            QCOMPARE(taken.size(), players.count());
            QVERIFY(std::ranges::is_sorted(players.all(), {}, &Player::slot));
        }
    }

    void scoresGrowAndANewMapForgetsThem()
    {
        const auto sum = [](const Players &players) {
            int all = 0;
            for (const Player &player : players.all())
                all += player.score;
            return all;
        };
        Players players(10, 1, false);
        players.resetScores();
        QCOMPARE(sum(players), 0);
        for (int second = 1; second <= 20; ++second)
            players.step({}, second, slotCount);
        QVERIFY(sum(players) > 0);
    }

    void aPlayerIsPutIntoHisSlot()
    {
        Players players(3, 1, false);
        Player bob;
        bob.slot = 1;
        bob.name = u"Bob"_s;
        players.put(bob);
        bob.slot = 9;
        players.put(bob);
        QCOMPARE(players.count(), 4);
        QCOMPARE(players.at(1)->name, u"Bob"_s);
        QCOMPARE(players.all().last().slot, 9);
        players.remove(1);
        QVERIFY(players.at(1) == nullptr);
    }

    void aPercentSignInANameIsToldAsItIs()
    {
        Players players(0, 1, false);
        Player bob;
        bob.slot = 3;
        bob.name = u"100%2 %1"_s;
        players.put(bob);
        QStringList events;
        for (int second = 1; second < 100'000 && players.count() > 0; ++second)
            events += players.step({}, second, slotCount);
        QVERIFY(!events.isEmpty());
        for (const QString &event : std::as_const(events))
            QVERIFY2(event.startsWith(u"100%2 %1 (slot 3) "_s), qPrintable(event));
    }

    void namesFitIntoTheGame_data()
    {
        QTest::addColumn<bool>("quirks");
        QTest::newRow("ordinary") << false;
        QTest::newRow("quirks") << true;
    }
    void namesFitIntoTheGame()
    {
        QFETCH(bool, quirks);
        QRandomGenerator random(1);
        const QList<Regular> all = regulars(random, quirks);
        QVERIFY(all.size() > 64);
        for (const Regular &regular : all) {
            QVERIFY(!regular.name.contains(u'\n') && !regular.name.contains(QChar(0)));
            QVERIFY2(regular.name.size() <= 32, qPrintable(regular.name));
            QCOMPARE(fromAnsi(toAnsi(regular.name)), regular.name);
            QVERIFY(quirks || !regular.name.isEmpty());
        }
    }

    void quirksShowWhatPublicTablesShow()
    {
        QRandomGenerator random(1);
        const QList<Regular> all = regulars(random, true);
        const auto some = [&all](auto is) { return std::ranges::any_of(all, is); };
        QVERIFY(some([](const Regular &one) { return one.name.isEmpty(); }));
        QVERIFY(some([](const Regular &one) { return one.name.size() == 32; }));
        QVERIFY(some([](const Regular &one) { return one.name == "democlient"_L1 && one.guid == "0"_L1; }));
        QVERIFY(some([](const Regular &one) { return one.address == "unknown"_L1; }));
        QVERIFY(some([](const Regular &one) { return one.address == "loopback"_L1; }));
        QVERIFY(some([](const Regular &one) { return one.address.size() >= 22 && one.qport > 9999; }));
        QVERIFY(some([](const Regular &one) { return one.qport < 0; }));
    }

    void aBanLastsAndATemporaryOneRunsOut()
    {
        Bans bans;
        bans.add(u"1"_s, u"10.0.0.1:1"_s);
        bans.addUntil(u"2"_s, u"10.0.0.2:1"_s, 30);
        bans.addUntil(u"1"_s, u"10.0.0.1:1"_s, 30);
        QVERIFY(bans.holds(u"1"_s, u"elsewhere"_s, 1'000'000));
        QVERIFY(bans.holds(u"2"_s, u"elsewhere"_s, 29));
        QVERIFY(!bans.holds(u"2"_s, u"elsewhere"_s, 30));
        QVERIFY(!bans.holds(u"3"_s, u"10.0.0.1:1"_s, 0));
        bans.expire(30);
        QCOMPARE(bans.count(), 1);
    }

    void aBanWithoutAGuidSticksToTheAddress()
    {
        Bans bans;
        bans.add(u"0"_s, u"10.0.0.1:28960"_s);
        QVERIFY(bans.holds(u"0"_s, u"10.0.0.1:4"_s, 0));
        QVERIFY(!bans.holds(u"0"_s, u"10.0.0.2:28960"_s, 0));
    }

    void aBannedPlayerStaysAway()
    {
        GameServer game(withPlayers(10));
        const QString guid = game.players().at(0)->guid;
        game.execute(u"banclient 0"_s);
        bool wasTurnedAway = false;
        for (int second = 0; second < 100'000 && !wasTurnedAway; ++second) {
            const QStringList events = game.tick();
            wasTurnedAway = events.join(u'\n').contains(u" is banned and was turned away"_s);
            QVERIFY(!isThere(game.players(), guid));
        }
        QVERIFY(wasTurnedAway);
    }

    void aTemporarilyBannedPlayerMayComeBack()
    {
        GameServer game(withPlayers(10));
        const QString guid = game.players().at(0)->guid;
        game.execute(u"sv_kickbantime 500"_s);
        game.execute(u"tempbanclient 0"_s);
        for (int second = 0; second < 499; ++second) {
            game.tick();
            QVERIFY(!isThere(game.players(), guid));
        }
        QCOMPARE(game.bans().count(), 1);
        for (int second = 0; second < 100'000 && !isThere(game.players(), guid); ++second)
            game.tick();
        QCOMPARE(game.bans().count(), 0);
        QVERIFY(isThere(game.players(), guid));
    }

    void nobodyComesWhenNobodyIsWanted()
    {
        GameServer game(withPlayers(0));
        for (int second = 0; second < 1000; ++second)
            QCOMPARE(game.tick(), QStringList());
    }
};

GUILESS_TEST(PracticePlayersTest)
#include "tst_practice_players.moc"
