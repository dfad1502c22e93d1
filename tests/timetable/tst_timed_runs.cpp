// SPDX-License-Identifier: MIT
#include "at_request.h"
#include "exchange_boxes.h"
#include "timetable_hands.h"
#include "window_test.h"

using namespace Qt::StringLiterals;

namespace {

const QByteArray timed = "say again";

/// A list that is due in half an hour.
struct Due final : TimetableHands {
    explicit Due(const Beginning &beginning = {}) : TimetableHands(beginning)
    {
        add(u"often"_s, {QString::fromLatin1(timed)}, u"every N minutes"_s);
        activate();
    }

    void comes() { TimetableHands::comes(begun.addSecs(1801)); }
    [[nodiscard]] bool hasSent() { return on.server.commands().contains(timed); }
    /// One second has passed for what has been put off.
    void passSecond() const { QMetaObject::invokeMethod(on.program.find<QTimer>(u"tmrpostponed"_s), "timeout"); }

    const QDateTime begun = now();
};

PracticeOptions modServer()
{
    PracticeOptions options;
    options.mod = PracticeOptions::hobMod;
    options.mapLoadMs = 0;
    return options;
}

/// Presses a button of the main window or of the mod's.
void press(const Program &program, const QString &button)
{
    const QWidget *mod = otherWindow(u"frmhob"_s);
    if (auto *found = mod ? mod->findChild<QAbstractButton *>(button) : nullptr)
        found->click();
    else
        program.click(button);
}

} // namespace

/// What becomes of a list while others speak to the server.
class TimedRunsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void whatIsDueWhileAPageIsAtWorkIsMissed_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QByteArray>("command");
        QTest::newRow("reading the Server tab") << u"cmdservpop"_s << QByteArray("dvarlist sv_*");
        QTest::newRow("sending the Server tab") << u"cmdservsetbasics"_s << QByteArray("scr_motd\"x\"");
        QTest::newRow("its friendly fire") << u"cmdff"_s << QByteArray("scr_friendlyfire 0");
        QTest::newRow("its password") << u"cmdservrempass"_s << QByteArray("g_password \"\"");
        QTest::newRow("sending the COD2 Modes tab") << u"cmdsetdm"_s << QByteArray("scr_dm_timelimit 30");
        QTest::newRow("its game type") << u"cmdcod_0"_s << QByteArray("set g_gametype sd");
        QTest::newRow("reading the maps") << u"cmdpopmaps"_s << QByteArray("dir maps/mp d3dbsp");
        QTest::newRow("only rifles") << u"cmdriflesonly"_s << QByteArray("scr_allow_bar\"0\"");
        QTest::newRow("reading the mod's window") << u"cmdhobpop"_s << QByteArray("dvarlist scr_hob_*");
        QTest::newRow("sending the mod's window") << u"cmdhobset"_s << QByteArray("scr_hob_showObituary\"1\"");
        QTest::newRow("the mod's game type") << u"cmdsethob"_s << QByteArray("set g_gametype hob");
    }

    void whatIsDueWhileAPageIsAtWorkIsMissed()
    {
        QFETCH(QString, button);
        QFETCH(QByteArray, command);
        Due it({.practice = modServer(), .prepare = {}});
        it.on.program.click(u"cmdhob"_s);
        it.on.program.setText(u"txtservermotd"_s, u"x"_s);
        otherWindow(u"frmhob"_s)->findChild<QAbstractButton *>(u"chkobi"_s)->click();
        it.on.program.click(u"optff_0"_s);
        bool hasCome = false;
        atRequest(it.on.server, command, [&] {
            hasCome = true;
            it.comes();
        });
        press(it.on.program, button);
        (void)it.on.program.prompts.takeBoxes(); // the questions of the sends
        QVERIFY2(hasCome, it.on.server.commands().join(", ").constData());
        QVERIFY2(it.result().endsWith(u" often: missed, a page was being read or written"_s), qPrintable(it.result()));
        it.passSecond();
        QVERIFY(!it.hasSent());
    }

    void aBoxInTheMiddleOfAPagesSendLeavesNoGap_data()
    {
        QTest::addColumn<QString>("button");
        QTest::newRow("the Server tab") << u"cmdservsetbasics"_s;
        QTest::newRow("the COD2 Modes tab") << u"cmdsetdm"_s;
        QTest::newRow("the mod's window") << u"cmdhobset"_s;
    }

    void aBoxInTheMiddleOfAPagesSendLeavesNoGap()
    {
        QFETCH(QString, button);
        Due it({.practice = modServer(), .prepare = {}});
        it.on.program.click(u"cmdhob"_s);
        it.on.program.setText(u"txtservermotd"_s, u"x"_s);
        otherWindow(u"frmhob"_s)->findChild<QAbstractButton *>(u"chkobi"_s)->click();
        it.on.server.setSilent(true);
        QString result;
        it.on.program.prompts.whileOpen = [&] {
            if (it.on.server.requests().isEmpty() || !result.isEmpty())
                return; // the question before the send
            it.comes();
            result = it.result();
        };
        press(it.on.program, button);
        QVERIFY(it.on.program.prompts.takeBoxes().contains(noResponseBox()));
        QVERIFY2(result.endsWith(u" often: missed, a page was being read or written"_s), qPrintable(result));
        QVERIFY(!it.hasSent());
    }

    void afterAPageTheNextOneIsSent()
    {
        Due it;
        it.on.program.click(u"cmdsetdm"_s);
        it.comes();
        QTRY_VERIFY(it.hasSent());
    }

    void whatIsDueWhileAnotherWaitsIsMissed()
    {
        Due it;
        atRequest(it.on.server, "serverinfo", [&] { it.comes(); });
        it.on.program.click(u"cmsserverinfo"_s);
        QVERIFY2(it.result().endsWith(u" often: missed, the program was busy"_s), qPrintable(it.result()));
        QCOMPARE(it.status(), it.result());
        it.passSecond();
        QVERIFY(!it.hasSent()); // it is not made up for
        it.TimetableHands::comes(it.begun.addSecs(3601));
        QTRY_VERIFY(it.hasSent());
    }

    void runNowWaitsForAnother()
    {
        TimetableHands it;
        it.add(u"Friday"_s, {u"say one"_s});
        atRequest(it.on.server, "serverinfo", [&] { it.click(u"cmdttrun"_s); });
        it.on.program.click(u"cmsserverinfo"_s);
        QVERIFY(!it.on.server.commands().contains("say one"));
        QCOMPARE(it.rows("lstttresults"), QStringList());
        QMetaObject::invokeMethod(it.on.program.find<QTimer>(u"tmrpostponed"_s), "timeout");
        QTRY_VERIFY(it.on.server.commands().contains("say one"));
    }

    void runNowWaitsTwentySecondsAtMost()
    {
        Due it;
        QStringList before;
        atRequest(it.on.server, "serverinfo", [&] {
            it.click(u"cmdttrun"_s);
            for (int second = 1; second < 20; ++second)
                it.passSecond();
            before = it.rows("lstttresults");
            it.passSecond();
        });
        it.on.program.click(u"cmsserverinfo"_s);
        QCOMPARE(before, QStringList());
        QVERIFY2(it.result().endsWith(u" often: missed, the program was busy"_s), qPrintable(it.result()));
        QVERIFY(!it.hasSent());
    }

    void whatIsDueWhileAListIsSentComesBehindIt()
    {
        Due it;
        it.add(u"now"_s, {u"say one"_s, u"say two"_s});
        atRequest(it.on.server, "say one", [&] { it.comes(); });
        it.click(u"cmdttrun"_s);
        QTRY_COMPARE(it.on.server.commands(), (QList<QByteArray>{"say one", "say two", timed}));
    }

    void aLongAnswerBringsNoBox()
    {
        TimetableHands it;
        it.on.server.answer("dvarlist", {QByteArray(9000, 'x')});
        it.add(u"all"_s, {u"dvarlist"_s});
        it.click(u"cmdttrun"_s);
        QTRY_VERIFY(it.on.program.pane().contains(QString(8000, u'x')));
        QCOMPARE(it.on.program.prompts.takeBoxes(), QList<Box>());

        // What the person asks for does.
        it.on.server.answerRaw("getstatus", {QByteArray(4, '\xFF') + "statusResponse\n" + QByteArray(9000, 'x')});
        it.on.program.exchange.sendquery(u"getstatus"_s);
        QList<Box> boxes;
        QTRY_VERIFY(!(boxes += it.on.program.prompts.takeBoxes()).isEmpty());
        QCOMPARE(boxes, QList<Box>{truncatedBox()});
        it.on.program.exchange.sendinfo(u"dvarlist"_s);
        QCOMPARE(it.on.program.prompts.takeBoxes(), QList<Box>{truncatedBox()});
    }
};

WINDOW_TEST(TimedRunsTest)

#include "tst_timed_runs.moc"
