// SPDX-License-Identifier: MIT
#include "player_grid.h"

#include "base/wire_text.h"
#include "practice/datagrams.h"

using namespace Qt::StringLiterals;

namespace {

const Player ann = somebody(3, u"Ann"_s);
const Player ben = somebody(5, u"Ben"_s, 999, -1);

/// The table of the two.
QByteArray table()
{
    GameServer game(desertedServer());
    game.players().put(ann);
    game.players().put(ben);
    return toAnsi(game.execute(u"status"_s).reply);
}

/// The same, but it ends in the middle of the second row.
QByteArray cutTable()
{
    return table().chopped(30);
}

double secondsOf(const Program &program, const std::function<void()> &action)
{
    const double before = program.clock.secondsSinceMidnight();
    action();
    return program.clock.secondsSinceMidnight() - before;
}

/// Nothing was listed, and nothing is left of the populate.
void verifyEnded(const PlayersTab &tab)
{
    QCOMPARE(tab.server.commands(), QList<QByteArray>{"status"});
    QVERIFY(tab.grid().isEmpty());
    QVERIFY(!tab.program.session.rconcollect);
    QVERIFY(!tab.program.progress()->isVisible());
}

} // namespace

/// Tables of which a part has not arrived when they are read.
class PopulateSlowTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theRestMayArriveWhileTheBoxIsOpen()
    {
        PlayersTab tab;
        const QByteArray whole = table();
        const qsizetype firstRow = whole.indexOf("\n  3 ") + 1;
        QList<qsizetype> cuts{whole.size() - 2, whole.size() - 1};
        for (qsizetype cut = firstRow + 12; cut < whole.size() - 2; cut += 5)
            cuts.append(cut);
        for (const qsizetype cut : std::as_const(cuts)) {
            tab.server.answer("status", {whole.first(cut)});
            tab.program.prompts.whileOpen = [&tab, rest = whole.sliced(cut)]() mutable {
                if (!rest.isEmpty())
                    QVERIFY(tab.server.sendRaw(printDatagram(std::exchange(rest, {}))));
            };
            tab.populate();
            QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{slowBox()});
            QCOMPARE(tab.grid(), (QList<QStringList>{cells(ann), cells(ben)}));
            QVERIFY(tab.showsReplies());
        }
    }

    void theRestMayArriveInPieces()
    {
        PlayersTab tab;
        const QByteArray whole = table();
        qsizetype sent = whole.indexOf("\n  3 ") + 30;
        tab.server.answer("status", {whole.first(sent)});
        tab.program.prompts.whileOpen = [&] {
            QVERIFY(tab.server.sendRaw(printDatagram(whole.mid(sent, 50))));
            sent += 50;
        };
        tab.populate();
        // 30 + 1 + 50 + 50 of the two rows' 161 bytes, and the last of them with the third box.
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>(3, slowBox()));
        QCOMPARE(tab.grid(), (QList<QStringList>{cells(ann), cells(ben)}));
    }

    // Two datagrams may meet inside a run of blanks, each with some of them.
    void aRowMayBeSplitAnywhereBetweenTwoDatagrams()
    {
        PlayersTab tab;
        const QByteArray whole = table();
        for (qsizetype cut = whole.indexOf("\n  3 ") + 1; cut < whole.size(); cut += 3) {
            tab.server.answer("status", {whole.first(cut), whole.sliced(cut)});
            tab.populate();
            QCOMPARE(tab.grid(), (QList<QStringList>{cells(ann), cells(ben)}));
        }
    }

    void oneSecondPassesBehindEachBox()
    {
        PlayersTab tab;
        tab.server.answer("status", {cutTable()});
        QList<double> shown;
        tab.program.prompts.whileOpen = [&] {
            shown.append(tab.program.clock.secondsSinceMidnight());
            if (shown.size() == 4)
                tab.program.click(u"cmdconnect"_s);
        };
        tab.populate();
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>(4, slowBox()));
        for (qsizetype box = 1; box < shown.size(); ++box)
            QVERIFY2(shown[box] - shown[box - 1] > 0.45 && shown[box] - shown[box - 1] < 1.9,
                     qPrintable(QString::number(shown[box] - shown[box - 1])));
    }

    void aListThatNeverEndsIsLeftByClosingTheWindow()
    {
        PlayersTab tab;
        tab.server.answer("status", {cutTable()});
        int boxes = 0;
        tab.program.prompts.whileOpen = [&] {
            if (++boxes == 3)
                tab.program.window.close();
        };
        tab.populate();
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>(3, slowBox()));
        QVERIFY(!tab.program.window.isVisible());
    }

    void aListThatNeverEndsIsLeftByDisconnecting()
    {
        PlayersTab tab;
        tab.server.answer("status", {cutTable()});
        int boxes = 0;
        tab.program.prompts.whileOpen = [&] {
            if (++boxes == 2)
                tab.program.click(u"cmdconnect"_s);
        };
        tab.populate();
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>(2, slowBox()));
        QCOMPARE(tab.grid(), QList<QStringList>{cells(ann)});
        QVERIFY(!tab.program.session.rconcollect);
        QVERIFY(!tab.program.progress()->isVisible());

        tab.server.answer("status", {table()});
        tab.program.click(u"cmdconnect"_s);
        tab.populate();
        QCOMPARE(tab.grid(), (QList<QStringList>{cells(ann), cells(ben)}));
    }

    void disconnectingBehindTheAnswerEndsSilently()
    {
        PlayersTab tab;
        tab.put({ann});
        tab.server.forgetRequests();
        asSoonAs(
            &tab.server, [&] { return tab.server.requests().size() == 1 && tab.program.session.rconarrived; },
            [&] { tab.program.click(u"cmdconnect"_s); });
        tab.populate();
        verifyEnded(tab);
        QVERIFY(tab.program.prompts.takeBoxes().isEmpty());
    }

    // Before the answer, the next copy of the command finds the socket closed.
    void disconnectingBeforeTheAnswerIsToldByTheExchangeAlone()
    {
        PlayersTab tab;
        tab.put({ann});
        atRequest(tab.server, "status", [&] { tab.program.click(u"cmdconnect"_s); });
        tab.populate();
        verifyEnded(tab);
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{notConnectedBox()});
    }

    void closingTheWindowWhileTheServerIsAskedEndsSilently()
    {
        PlayersTab tab;
        atRequest(tab.server, "status", [&] { tab.program.window.close(); });
        tab.populate();
        QVERIFY(tab.program.prompts.takeBoxes().isEmpty());
        QCOMPARE(tab.server.commands(), QList<QByteArray>{"status"});
    }

    void unwatchedItGivesUpAfterFiveTries()
    {
        PlayersTab tab;
        tab.server.answer("status", {cutTable()});
        const double seconds = secondsOf(tab.program, [&] { tab.tickBox(u"chkautoupdate"_s); });
        QVERIFY(tab.program.prompts.takeBoxes().isEmpty());
        QCOMPARE(tab.grid(), QList<QStringList>{cells(ann)});
        QVERIFY(tab.showsReplies());
        // The reply, the second behind it and five seconds, but for half a one.
        QVERIFY2(seconds > 6.4 && seconds < 8.1, qPrintable(QString::number(seconds)));

        tab.server.answer("status", {table()});
        tab.tick();
        QCOMPARE(tab.grid(), (QList<QStringList>{cells(ann), cells(ben)}));
    }

    void unwatchedTheRestMayArriveInTheFourthSecond()
    {
        PlayersTab tab;
        const QByteArray whole = table();
        tab.server.answer("status", {cutTable()});
        const double start = tab.program.clock.secondsSinceMidnight();
        asSoonAs(
            &tab.server, [&] { return tab.program.clock.secondsSinceMidnight() > start + 6; },
            [&] { QVERIFY(tab.server.sendRaw(printDatagram(whole.last(30)))); });
        tab.tickBox(u"chkautoupdate"_s);
        QCOMPARE(tab.grid(), (QList<QStringList>{cells(ann), cells(ben)}));
    }

    // Positions in the reply are held in 16 bits.
    void rowsBehindTheLastPositionAreLeftOut()
    {
        PlayersTab tab;
        const QByteArray heading = "map: x\nnum\n---\n";
        const QByteArray row = " 3 7 48 123456 Ann 50 10.0.0.1:28960 1234 25000\n";
        QList<QByteArray> datagrams{heading};
        for (int number = 0; number < 8; ++number)
            datagrams.append(row.repeated(100));
        tab.server.answer("status", datagrams + QList<QByteArray>{"\n"});
        tab.tickBox(u"chkautoupdate"_s);
        QVERIFY(tab.program.prompts.takeBoxes().isEmpty());
        QCOMPARE(tab.grid().size(), (32'767 - heading.size()) / row.size());
        QCOMPARE(tab.grid().constLast(), statusCells(u"Ann"_s));
    }
};

WINDOW_TEST(PopulateSlowTest)
#include "tst_populate_slow.moc"
