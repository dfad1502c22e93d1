// SPDX-License-Identifier: MIT
#include "quirky_server.h"

#include "base/wire_text.h"

using namespace Qt::StringLiterals;

namespace {

/// The status table as it must have been gathered when every datagram came in order.
QString gathered(GameServer &game, int size)
{
    const QByteArray text = toAnsi(game.execute(u"status"_s).reply);
    QString all;
    for (qsizetype at = 0; at < text.size(); at += size)
        all += squeezed(fromAnsi(text.mid(at, size)));
    return all;
}

} // namespace

/// A story on a line that loses datagrams or brings them in another order.
class PlayersBadLineTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void aBadLineSpoilsNoListThatCameWhole_data()
    {
        QTest::addColumn<int>("loss");
        QTest::addColumn<bool>("reorder");
        QTest::newRow("loss") << 20 << false;
        QTest::newRow("reordering") << 0 << true;
        QTest::newRow("both") << 20 << true;
    }

    void aBadLineSpoilsNoListThatCameWhole()
    {
        QFETCH(int, loss);
        QFETCH(bool, reorder);
        PlayersTab tab("autoqplayer=1\r\nremoveid=0\r\n", quirkyServer(16));
        tab.timer()->setInterval(3'600'000);
        QRandomGenerator random(7);
        int whole = 0;
        int broken = 0;
        for (int round = 0; round < 16; ++round) {
            liveOn(tab.server.game(), round, random);
            const int size = QList<int>{60, 400, 700, 1400, 4000}.at(round % 5);
            tab.server.setDatagramSize(size);
            tab.server.setLoss(loss);
            tab.server.setReorder(reorder);
            tab.tick();
            QVERIFY(!tab.program.session.rconcollect);
            const QString all = gathered(tab.server.game(), size);
            for (const Box &box : tab.program.prompts.takeBoxes())
                QCOMPARE(box, noResponseBox());
            if (tab.program.session.rconreply == all) {
                ++whole;
                COMPARE_LIST(tab, false);
            } else {
                ++broken;
                tab.server.setLoss(0);
                tab.server.setReorder(false);
                tab.tick();
                COMPARE_LIST(tab, false);
            }
        }
        QVERIFY2(whole > 0 && broken > 0, qPrintable(u"%1 whole, %2 broken"_s.arg(whole).arg(broken)));
    }
};

WINDOW_TEST(PlayersBadLineTest)
#include "tst_players_bad_line.moc"
