// SPDX-License-Identifier: MIT
#include "quirky_server.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int rounds = 100; // of each story

/// From 40 bytes to what no list fills.
int datagramSize(int round)
{
    return 40 + 3 * round + (round > rounds ? 20 * (round - rounds) : 0);
}

} // namespace

/// Long stories on a server with nasty names and odd rows.
class PlayersStoryTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theListIsRightByHandRoundAfterRound()
    {
        PlayersTab tab({}, quirkyServer(64));
        QRandomGenerator random(5);
        qsizetype most = 0;
        for (int round = 0; round < rounds; ++round) {
            const bool withoutColours = round % 2 == 0;
            tab.tickBox(u"chkremcol"_s, withoutColours);
            tab.server.setDatagramSize(datagramSize(round));
            tab.populate();
            COMPARE_LIST(tab, withoutColours);
            most = qMax(most, tab.grid().size());
            if (round % 4 == 1 && !tab.grid().isEmpty()) {
                tab.select(random.bounded(static_cast<int>(tab.grid().size())));
                tab.program.click(QStringList{u"cmdplykick"_s, u"cmdplyban"_s, u"cmdtempban"_s}.at(round % 3));
                COMPARE_LIST(tab, withoutColours);
            }
            liveOn(tab.server.game(), round, random);
        }
        QVERIFY2(most >= 60, "the lists were long");
    }

    // The kicks at ping 999 take rows and players away alike.
    void theListIsRightRefreshAfterRefresh()
    {
        PlayersTab tab("autokick999=1\r\nautokick999int=4\r\nremoveid=0\r\n", quirkyServer(40));
        QRandomGenerator random(6);
        tab.tickBox(u"chkautoupdate"_s);
        tab.timer()->setInterval(3'600'000); // it runs out at the test's will
        for (int round = rounds; round < 2 * rounds; ++round) {
            liveOn(tab.server.game(), round, random);
            tab.server.setDatagramSize(datagramSize(round));
            tab.tick();
            COMPARE_LIST(tab, false);
        }
        QVERIFY(!tab.program.messages().filter(u"Player Auto Kicked for 999 ping ["_s).isEmpty());
    }
};

WINDOW_TEST(PlayersStoryTest)
#include "tst_players_story.moc"
