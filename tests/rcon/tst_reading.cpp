// SPDX-License-Identifier: MIT
#include "two_servers.h"
#include "window_test.h"

#include <QElapsedTimer>

using namespace Qt::StringLiterals;

namespace {

/// What the program shows of a reading that goes on: the note, and whether replies are silent and ticks are left out.
struct Marks {
    explicit Marks(const Program &program)
        : note(program.progress()->isVisible() ? program.note() : QString()),
          collects(program.session.rconcollect),
          busy(program.session.rconbusy)
    {
    }

    QString note;
    bool collects;
    bool busy;
};

/// Presses `button` when the first server has answered `command`, while the reading that asked it still waits, and
/// takes down what stands when that is over.
std::optional<Marks> pressedMeanwhile(TwoServers &servers, const QString &outer, const QByteArray &command,
                                      const QString &button)
{
    std::optional<Marks> after;
    asSoonAs(
        &servers.first,
        [&] { return servers.first.commands().contains(command) && servers.program.session.rconarrived; },
        [&] {
            servers.program.click(button);
            after.emplace(servers.program);
        });
    servers.program.click(outer);
    return after;
}

const QByteArray weapons = "S scr_allow_m1carbine \"1\"\n";
const QString serverNote = u"Reading variables from the server..."_s;

} // namespace

/// Readings that are nested by a click on another page's button, and what they leave behind.
class ReadingTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void anInnerReadingEndsNothingOfTheOuterOne_data()
    {
        QTest::addColumn<QString>("button");
        QTest::newRow("weapons") << u"cmdpopwep"_s;
        QTest::newRow("other settings") << u"cmdCodOther_1"_s;
        QTest::newRow("maps") << u"cmdpopmaps"_s;
        QTest::newRow("players") << u"cmdplypop"_s;
    }

    void anInnerReadingEndsNothingOfTheOuterOne()
    {
        QFETCH(QString, button);
        TwoServers servers;
        const auto after = pressedMeanwhile(servers, u"cmdservpop"_s, "dvarlist sv_*", button);
        servers.program.prompts.takeBoxes();
        QVERIFY(after);
        QCOMPARE(after->note, serverNote);
        QVERIFY(after->collects && after->busy);
        QVERIFY(!servers.program.progress()->isVisible());
        QVERIFY(servers.showsReplies());
        QVERIFY(servers.isRefreshing());
    }

    void whatAnOuterReadingIsStillToReadStaysOutOfThePane()
    {
        TwoServers servers;
        servers.first.answer("dvarlist scr_allow_*", {weapons});
        servers.first.answer("dvarlist scr_*", {"S scr_motd \"a text that belongs into its box\"\n"});
        pressedMeanwhile(servers, u"cmdservpop"_s, "dvarlist sv_*", u"cmdpopwep"_s);
        servers.program.prompts.takeBoxes();
        QCOMPARE(servers.program.text(u"txtservermotd"_s), u"a text that belongs into its box"_s);
        QVERIFY(!servers.program.pane().contains(u"a text that"));
    }

    void anOuterReadingThatHoldsNoTimersLetsTheInnerOneGiveThemBack()
    {
        TwoServers servers;
        // The list is read from the other's reply, and the person who is told so disconnects.
        servers.program.prompts.whileOpen = [&] { servers.program.click(u"cmdconnect"_s); };
        const auto after = pressedMeanwhile(servers, u"cmdplypop"_s, "status", u"cmdservpop"_s);
        servers.program.prompts.takeBoxes();
        QVERIFY(after);
        QVERIFY(after->collects && !after->busy);
        QCOMPARE(after->note, u"Asking server for player list..."_s);
    }

    void sendingInsideAReadingKeepsTheTimersHeldOff()
    {
        TwoServers servers;
        const auto after = pressedMeanwhile(servers, u"cmdservpop"_s, "dvarlist sv_*", u"cmdservsetbasics"_s);
        servers.program.prompts.takeBoxes();
        QVERIFY(after && after->busy);
        QVERIFY(servers.isRefreshing());
    }

    void whatTheOutermostLeavesOnPurposeStays()
    {
        TwoServers servers;
        pressedMeanwhile(servers, u"cmdCodOther_1"_s, "dvarlist scr_allow_*", u"cmdservpop"_s);
        QVERIFY2(!servers.showsReplies(), "the other settings' page goes on collecting");
        QVERIFY(servers.isRefreshing());

        servers.first.answer("dir maps/mp d3dbsp", {"no heading\n"});
        servers.program.click(u"cmdpopmaps"_s);
        QCOMPARE(servers.program.prompts.takeBoxes().size(), 1);
        QVERIFY2(!servers.isRefreshing(), "after three listings without maps");
        QVERIFY(servers.showsReplies());
        servers.program.click(u"cmdservpop"_s);
        QVERIFY(servers.isRefreshing());
    }

    void whatAnInnerOneWouldLeaveTheOutermostTakesBack()
    {
        TwoServers servers;
        const auto after = pressedMeanwhile(servers, u"cmdservpop"_s, "dvarlist sv_*", u"cmdCodOther_1"_s);
        QVERIFY(after && after->collects);
        QVERIFY(servers.showsReplies());
    }

    void aReadingStuckAtMidnightDoesNotKeepTheNextDaysMarks()
    {
        TwoServers servers;
        servers.program.clock.set(QDateTime(QDate(2006, 3, 5), QTime(23, 59, 59)));
        bool isRead = false;
        const QDateTime morning(QDate(2006, 3, 6), QTime(0, 1));
        asSoonAs(
            &servers.first, [&] { return servers.program.clock.now() > morning; },
            [&] {
                servers.program.click(u"cmdservpop"_s);
                const Marks after(servers.program);
                isRead = !after.collects && !after.busy && after.note.isEmpty();
                servers.program.window.close();
            });
        servers.program.click(u"cmdservpop"_s);
        QVERIFY(isRead);
    }

    void theNextServersReadingIsNoneOfTheFormerOnes()
    {
        TwoServers servers;
        std::optional<Marks> after;
        atRequest(servers.first, "dvarlist sv_*", [&] {
            QTimer::singleShot(0, &servers.first, [&] {
                servers.program.click(u"cmdconnect"_s);
                servers.program.connectTo(servers.second);
                after.emplace(servers.program);
            });
        });
        servers.program.click(u"cmdservpop"_s);
        QVERIFY(after);
        QVERIFY(!after->collects);
        QCOMPARE(after->note, QString());
    }
};

WINDOW_TEST(ReadingTest)
#include "tst_reading.moc"
