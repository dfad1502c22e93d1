// SPDX-License-Identifier: MIT
#include "player_grid.h"

using namespace Qt::StringLiterals;

namespace {

/// The grid's row of a player who is known by a query only.
QStringList queried(const QString &name, int ping, int score)
{
    return cellsOf({u""_s, u""_s, u""_s, name, QString::number(ping), QString::number(score)});
}

/// The reply that lists these lines.
QByteArray reply(const QByteArray &lines)
{
    return QByteArray(4, '\xFF') + "statusResponse\n\\mapname\\mp_a\n" + lines;
}

const Box noResponse =
    exclamation(u"No response"_s, u"No response from server in 5 seconds with standard Query method"_s);

} // namespace

class QueryModeTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void thePlayersAreAskedForWithoutAPassword()
    {
        PlayersTab tab("usequery=1\r\n");
        tab.put({somebody(0, u"Ann Lee"_s, 42, -3), somebody(7, u"Ben"_s, 999, 12)});
        tab.populate();
        QCOMPARE(tab.server.requests(), QList<QByteArray>{QByteArray(4, '\xFF') + "getstatus"});
        QCOMPARE(tab.grid(), (QList<QStringList>{queried(u"Ann Lee"_s, 42, -3), queried(u"Ben"_s, 999, 12)}));
        QVERIFY(tab.showsReplies());
    }

    void anAnswerEndsTheWait()
    {
        PlayersTab tab("usequery=1\r\n");
        tab.put({somebody(3, u"Ann"_s)});
        const double before = tab.program.clock.secondsSinceMidnight();
        tab.populate();
        const double seconds = tab.program.clock.secondsSinceMidnight() - before;
        QVERIFY2(seconds < 1.9, qPrintable(QString::number(seconds)));
    }

    void silenceIsToldAfterFiveSeconds_data()
    {
        QTest::addColumn<QByteArray>("preferences");
        QTest::addColumn<bool>("ticked");
        QTest::addColumn<bool>("told");
        QTest::newRow("by hand") << QByteArray() << false << true;
        QTest::newRow("ticked") << QByteArray() << true << true;
        QTest::newRow("preferred") << QByteArray("autoqplayer=1\r\n") << true << false;
    }

    void silenceIsToldAfterFiveSeconds()
    {
        QFETCH(QByteArray, preferences);
        QFETCH(bool, ticked);
        QFETCH(bool, told);
        PlayersTab tab("usequery=1\r\n" + preferences);
        tab.put({somebody(3, u"Ann"_s)});
        tab.tickBox(u"chkautoupdate"_s, ticked);
        tab.tick();
        QCOMPARE(tab.grid().size(), 1);

        tab.server.setSilent(true);
        tab.server.forgetRequests();
        const double before = tab.program.clock.secondsSinceMidnight();
        tab.tick();
        const double seconds = tab.program.clock.secondsSinceMidnight() - before;
        QCOMPARE(tab.program.prompts.takeBoxes(), told ? QList<Box>{noResponse} : QList<Box>());
        QCOMPARE(tab.server.commands(), QList<QByteArray>{"getstatus"});
        QVERIFY2(seconds > 4.4 && seconds < 6, qPrintable(QString::number(seconds)));
        QVERIFY(tab.grid().isEmpty());
        tab.server.setSilent(false);
        QVERIFY(tab.showsReplies());
    }

    void anEmptyServerIsTold_data()
    {
        QTest::addColumn<QByteArray>("preferences");
        QTest::addColumn<bool>("ticked");
        QTest::addColumn<bool>("told");
        QTest::newRow("by hand") << QByteArray() << false << true;
        QTest::newRow("ticked") << QByteArray() << true << true;
        QTest::newRow("preferred") << QByteArray("autoqplayer=1\r\n") << true << false;
    }

    void anEmptyServerIsTold()
    {
        QFETCH(QByteArray, preferences);
        QFETCH(bool, ticked);
        QFETCH(bool, told);
        PlayersTab tab("usequery=1\r\n" + preferences);
        tab.tickBox(u"chkautoupdate"_s, ticked);
        tab.program.prompts.takeBoxes();
        tab.tick();
        QCOMPARE(tab.program.prompts.takeBoxes(), told ? QList<Box>{noPlayersBox()} : QList<Box>());
        QVERIFY(tab.grid().isEmpty());
    }

    void namesEndAtTheFirstQuote_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("received");
        QTest::addColumn<QString>("cleaned");
        QTest::newRow("a quoted part") << u"Big \"Bob\""_s << u"Big"_s << u"Big"_s;
        QTest::newRow("blanks") << u"the  quick brown"_s << u"the quick brown"_s << u"the quick brown"_s;
        QTest::newRow("blanks around") << u" Ann "_s << u"Ann"_s << u"Ann"_s;
        QTest::newRow("colours") << u"^1Big ^7Bob^"_s << u"^1Big ^7Bob^"_s << u"Big Bob^"_s;
        QTest::newRow("no name") << u""_s << u""_s << u""_s;
        QTest::newRow("a number") << u"007"_s << u"007"_s << u"007"_s;
        QTest::newRow("a row") << u"5 999 fake"_s << u"5 999 fake"_s << u"5 999 fake"_s;
    }

    void namesEndAtTheFirstQuote()
    {
        QFETCH(QString, name);
        QFETCH(QString, received);
        QFETCH(QString, cleaned);
        PlayersTab tab("usequery=1\r\nremoveid=0\r\n");
        tab.put({somebody(3, name, 48, 7), somebody(5, u"Ben"_s)});
        tab.populate();
        QCOMPARE(tab.grid(), (QList<QStringList>{queried(received, 48, 7), queried(u"Ben"_s, 50, 0)}));
        tab.tickBox(u"chkremcol"_s);
        tab.populate();
        QCOMPARE(tab.grid(), (QList<QStringList>{queried(cleaned, 48, 7), queried(u"Ben"_s, 50, 0)}));
    }

    void theListIsSorted()
    {
        PlayersTab tab("usequery=1\r\n");
        tab.put({somebody(3, u"Ann"_s, 50, 7), somebody(5, u"Ben"_s, 40, 10)});
        tab.sortOn(4);
        tab.populate();
        QCOMPARE(tab.column(3), (QStringList{u"Ben"_s, u"Ann"_s}));
    }

    void aReplyThatWasCutEndsAtItsLastWholeRow()
    {
        PlayersTab tab("usequery=1\r\n");
        const QByteArray whole = reply("7 48 \"Ann\"\n-2 999 \"Ben\"\n");
        for (qsizetype cut = 4; cut <= whole.size(); ++cut) {
            const QByteArray part = whole.first(cut);
            tab.server.answerRaw("getstatus", {part});
            tab.populate();
            const bool nobody = part.endsWith("mp_a\n");
            QCOMPARE(tab.program.prompts.takeBoxes(), nobody ? QList<Box>{noPlayersBox()} : QList<Box>());
            QStringList names{u"Ann"_s, u"Ben"_s};
            names.resize(qMax<qsizetype>(part.count('\n') - 2, 0));
            QCOMPARE(tab.column(3), names);
            QVERIFY(tab.showsReplies());
        }
    }

    void theseRowsAreNotWatchedForPing999()
    {
        PlayersTab tab("usequery=1\r\nautokick999=1\r\nautokick999int=1\r\n");
        tab.put({somebody(3, u"Ann"_s, 999)});
        tab.tickBox(u"chkautoupdate"_s);
        for (int number = 0; number < 3; ++number)
            tab.tick();
        QCOMPARE(tab.server.commands(), QList<QByteArray>(4, "getstatus"));
        QCOMPARE(tab.grid(), QList<QStringList>{queried(u"Ann"_s, 999, 0)});
    }

    void disconnectingMeanwhileEndsSilently()
    {
        PlayersTab tab("usequery=1\r\n");
        tab.server.setSilent(true);
        atRequest(tab.server, "getstatus", [&] { tab.program.click(u"cmdconnect"_s); });
        tab.populate();
        QVERIFY(tab.program.prompts.takeBoxes().isEmpty());
        QVERIFY(!tab.program.session.rconcollect);
        QVERIFY(!tab.program.progress()->isVisible());
    }
};

WINDOW_TEST(QueryModeTest)
#include "tst_query_mode.moc"
