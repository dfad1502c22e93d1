// SPDX-License-Identifier: MIT
#include "at_request.h"
#include "connected_program.h"
#include "rcon/exchange.h"
#include "window_test.h"

#include <QLabel>
#include <QProgressBar>

using namespace Qt::StringLiterals;

namespace {

/// The text of the label; empty when it is hidden.
QString shown(const Program &program, const QString &label)
{
    const auto *found = program.find<QLabel>(label);
    return found->isVisible() ? found->text() : QString();
}

/// Notes what the label says, each time that the exchange has something to say and after the bar has heard it.
void record(Program &program, const QString &label, QStringList &texts)
{
    const auto note = [&program, label, &texts] {
        const QString text = shown(program, label);
        if (!text.isEmpty() && (texts.isEmpty() || texts.constLast() != text))
            texts.append(text);
    };
    QObject::connect(&program.exchange, &Exchange::waiting, &program.window, note);
    QObject::connect(&program.exchange, &Exchange::waited, &program.window, note);
}

const QString noAnswer = u"No response"_s;

} // namespace

/// What the status bar says, and when.
class StatusBarTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void atFirstNothingIsConnected()
    {
        Program program;
        program.start();
        QCOMPARE(shown(program, u"lblstate"_s), u"Not connected"_s);
        QCOMPARE(program.find<QLabel>(u"lbldot"_s)->accessibleName(), u"Not connected"_s);
        QVERIFY(program.find<QLabel>(u"lbldot"_s)->isVisible());
        for (const QString &label : {u"lblwait"_s, u"lblcycle"_s, u"lblrefresh"_s})
            QCOMPARE(shown(program, label), QString());
        QVERIFY(!program.find<QProgressBar>(u"barwait"_s)->isVisible());
    }

    void theStateFollowsTheConnection()
    {
        ConnectedProgram it({.connects = false});
        QStringList states;
        atRequest(it.server, "status", [&] { states.append(shown(it.program, u"lblstate"_s)); });
        it.program.connectTo(it.server);
        states.append(shown(it.program, u"lblstate"_s));
        QCOMPARE(it.program.find<QLabel>(u"lbldot"_s)->accessibleName(), states.constLast());
        it.program.click(u"cmdconnect"_s);
        states.append(shown(it.program, u"lblstate"_s));
        const QString address = u"127.0.0.1:%1"_s.arg(it.server.port());
        QCOMPARE(states, QStringList({u"Connecting to "_s + address,
                                      u"Connected to "_s + address + u", sd on mp_carentan"_s, u"Not connected"_s}));
    }

    void aRefusedPasswordLeavesItUnconnected()
    {
        ConnectedProgram it({.prepare = {}, .connects = false});
        it.program.connectTo(it.server, u"wrong"_s);
        QCOMPARE(it.program.prompts.takeBoxes().size(), 1);
        QCOMPARE(shown(it.program, u"lblstate"_s), u"Not connected"_s);
    }

    void theAddressIsTheServersWhateverIsTyped()
    {
        ConnectedProgram it;
        it.program.setText(u"comserver"_s, u"elsewhere"_s);
        it.program.click(u"cmsserverinfo"_s);
        QVERIFY(shown(it.program, u"lblstate"_s).startsWith(u"Connected to 127.0.0.1:"));
    }

    void aNewMapIsUnknownUntilItIsRead()
    {
        ConnectedProgram it;
        const QString connected = u"Connected to 127.0.0.1:%1"_s.arg(it.server.port());
        it.program.trigger(u"commmap_rotate"_s);
        QCOMPARE(shown(it.program, u"lblstate"_s), connected);
    }

    void aStatusTellsTheMap()
    {
        ConnectedProgram it;
        it.server.answer("Status", {"map: mp_toujane\nnum score\n\n"});
        it.program.click(u"cmdstatus"_s);
        QVERIFY(shown(it.program, u"lblstate"_s).endsWith(u", sd on mp_toujane"));
    }

    void whileAnAnswerIsAwaitedItSaysSo()
    {
        ConnectedProgram it;
        QStringList texts;
        record(it.program, u"lblwait"_s, texts);
        it.server.setSilent(true);
        it.program.click(u"cmdstatus"_s);
        QCOMPARE(it.program.prompts.takeBoxes().constFirst().title, noAnswer);
        QStringList expected;
        for (int second = 0; second <= 15; ++second) {
            const int copy = std::min(second / 3 + 1, 5);
            if (second > 0 && second % 3 == 0 && second < 15)
                expected.append(u"Waiting for the server: Status, %1 s, copy %2 of 5"_s.arg(second).arg(copy - 1));
            expected.append(u"Waiting for the server: Status, %1 s, copy %2 of 5"_s.arg(second).arg(copy));
        }
        QCOMPARE(texts, expected);
        QCOMPARE(shown(it.program, u"lblwait"_s), QString());
        QVERIFY(!it.program.find<QProgressBar>(u"barwait"_s)->isVisible());
    }

    void theBarGrowsWithTheWait()
    {
        ConnectedProgram it;
        const auto *bar = it.program.find<QProgressBar>(u"barwait"_s);
        QList<int> values;
        connect(&it.program.exchange, &Exchange::waiting, bar, [&] {
            if (bar->isVisible() && (values.isEmpty() || values.constLast() != bar->value()))
                values.append(bar->value());
        });
        it.server.setSilent(true);
        it.program.click(u"cmdstatus"_s);
        it.program.prompts.takeBoxes();
        QList<int> expected(16);
        std::iota(expected.begin(), expected.end(), 0);
        QCOMPARE(values, expected);
        QCOMPARE(bar->maximum(), 15);
    }

    void aPasswordIsNotShown()
    {
        ConnectedProgram it;
        QStringList texts;
        record(it.program, u"lblwait"_s, texts);
        it.program.setText(u"txtservpass"_s, u"letmein"_s);
        it.program.click(u"cmdservsetpass"_s);
        it.program.prompts.takeBoxes();
        QVERIFY(!texts.isEmpty());
        QVERIFY2(texts.constFirst().startsWith(u"Waiting for the server: g_password, 0 s"), qPrintable(texts.first()));
        QVERIFY(!texts.join(u'\n').contains(u"letmein"));
    }

    void aPopulateOfSeveralStepsCountsThem()
    {
        ConnectedProgram it;
        QStringList texts;
        record(it.program, u"lblwait"_s, texts);
        it.program.click(u"cmdservpop"_s);
        QStringList steps;
        for (const QString &text : std::as_const(texts)) {
            if (const QString step = text.mid(text.lastIndexOf(u", ")); !steps.contains(step))
                steps.append(step);
        }
        QCOMPARE(steps, QStringList({u", step 1 of 3"_s, u", step 2 of 3"_s, u", step 3 of 3"_s}));
    }

    void aPopulateOfOneStepCountsNone()
    {
        ConnectedProgram it;
        QStringList texts;
        record(it.program, u"lblwait"_s, texts);
        it.program.click(u"cmdpopwep"_s);
        it.program.prompts.takeBoxes();
        QVERIFY(!texts.isEmpty());
        QVERIFY(!texts.join(u'\n').contains(u"step"));
    }

    void afterAWaitInsideAWaitTheOuterOneIsShownAgain()
    {
        ConnectedProgram it;
        it.server.setSilent(true);
        QStringList texts;
        record(it.program, u"lblwait"_s, texts);
        asSoonAs(
            &it.program.window, [&] { return shown(it.program, u"lblwait"_s).contains(u"copy 2"); },
            [&] {
                it.server.setSilent(false);
                it.program.click(u"cmsserverinfo"_s);
                it.server.setSilent(true);
            });
        it.program.click(u"cmdstatus"_s);
        it.program.prompts.takeBoxes();
        const qsizetype inner = texts.lastIndexOf(QRegularExpression(u".*serverinfo.*"_s));
        QVERIFY(inner >= 0);
        for (const QString &later : texts.sliced(inner + 1))
            QVERIFY2(later.contains(u"Status"), qPrintable(later));
        QCOMPARE(shown(it.program, u"lblwait"_s), QString());
    }

    void aCommandInTheMiddleOfAPopulateIsNoStep()
    {
        ConnectedProgram it;
        QStringList texts;
        record(it.program, u"lblwait"_s, texts);
        atRequest(it.server, "dvarlist sv_*", [&] { it.program.click(u"cmsserverinfo"_s); });
        it.program.click(u"cmdservpop"_s);
        const QStringList inner = texts.filter(u"serverinfo"_s);
        QVERIFY(!inner.isEmpty());
        QVERIFY2(inner.filter(u"step"_s).isEmpty(), qPrintable(inner.join(u'\n')));
    }

    void nothingIsWaitedForUnderTheBoxThatEndsTheWait()
    {
        ConnectedProgram it;
        it.server.setSilent(true);
        asSoonAs(
            &it.program.window, [&] { return shown(it.program, u"lblwait"_s).contains(u"copy 2"); },
            [&] { it.program.udpclient.Close(); });
        QString underBox = u"no box"_s;
        it.program.prompts.whileOpen = [&] { underBox = shown(it.program, u"lblwait"_s); };
        it.program.click(u"cmdstatus"_s);
        it.program.prompts.whileOpen = nullptr;
        it.program.prompts.takeBoxes();
        QCOMPARE(underBox, QString());
    }

    void namesOfAServerAreMadeReadable_data()
    {
        QTest::addColumn<QByteArray>("information");
        QTest::addColumn<QString>("told");
        QTest::newRow("markup") << QByteArray("\\g_gametype\\<b>sd\\mapname\\a & b\\x\\1") << u", <b>sd on a & b"_s;
        QTest::newRow("control characters") << QByteArray("\\g_gametype\\s\x1b"
                                                          "d\\mapname\\mp\t\x18x\\x\\1")
                                            << u", sd on mp x"_s;
        QTest::newRow("an empty map") << QByteArray("\\g_gametype\\sd\\mapname\\\\sv_maxclients\\20") << QString();
        QTest::newRow("long") << QByteArray("\\g_gametype\\sd\\mapname\\" + QByteArray(5000, 'm') + "\\x\\1")
                              << u", sd on "_s + QString(64, u'm');
    }

    void namesOfAServerAreMadeReadable()
    {
        QFETCH(QByteArray, information);
        ConnectedProgram it({.prepare = [&](PracticeServer &server) {
            answerBriefly(server);
            server.answerRaw("getstatus", {statusResponse(information)});
        }});
        QTEST(shown(it.program, u"lblstate"_s)
                  .mid(u"Connected to 127.0.0.1:"_s.size() + QString::number(it.server.port()).size()),
              "told");
    }

    void aRunningRefreshIsTold()
    {
        ConnectedProgram it;
        it.program.find<QAbstractButton>(u"chkautoupdate"_s)->setChecked(true);
        it.program.prompts.takeBoxes();
        QCOMPARE(shown(it.program, u"lblrefresh"_s), u"Players every 10 s"_s);
        it.program.find<QAbstractButton>(u"chkautoupdate"_s)->setChecked(false);
        QCOMPARE(shown(it.program, u"lblrefresh"_s), QString());
    }

    void aRefreshThatEndsWithTheConnectionIsNotTold()
    {
        ConnectedProgram it;
        it.program.find<QAbstractButton>(u"chkautoupdate"_s)->setChecked(true);
        it.program.prompts.takeBoxes();
        it.program.click(u"cmdconnect"_s);
        QCOMPARE(shown(it.program, u"lblrefresh"_s), QString());
    }

    void theExitButtonStandsInTheBar()
    {
        Program program;
        program.start();
        QVERIFY(program.find<QWidget>(u"statusbar"_s)->isAncestorOf(program.find<QWidget>(u"cmdexit"_s)));
    }

    void aLongTextEndsInDotsAndTakesNoRoomFromTheWindow()
    {
        Program program;
        program.start();
        const int before = program.window.minimumSizeHint().width();
        auto *label = program.find<QLabel>(u"lblstate"_s);
        label->setText(QString(1000, u'x'));
        QApplication::processEvents();
        QCOMPARE(program.window.minimumSizeHint().width(), before);
    }
};

WINDOW_TEST(StatusBarTest)
#include "tst_status_bar.moc"
