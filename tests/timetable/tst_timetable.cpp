// SPDX-License-Identifier: MIT
#include "at_request.h"
#include "timetable/server_count.h"
#include "timetable_hands.h"
#include "window_test.h"

using namespace Qt::StringLiterals;

namespace {

// The clock begins on a Sunday at noon.
const QDateTime evening(QDate(2006, 3, 5), QTime(20, 30));

} // namespace

/// The timetable, through its window and against a server.
class TimetableTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void nothingIsThereUntilItIsAskedFor()
    {
        ConnectedProgram on;
        QVERIFY(!on.program.window.findChild<QTimer *>(u"tmrtimetable"_s));
        on.program.trigger(u"mtimetable"_s);
        QVERIFY(!on.program.find<QTimer>(u"tmrtimetable"_s)->isActive());
        QCOMPARE(on.program.file(timetableFile), QByteArray());
    }

    void aNewListIsOff()
    {
        const TimetableHands it;
        QCOMPARE(it.rows(u"lsttimetable"_s), QStringList());
        it.add(u"Friday"_s, {u"say hello"_s}, u"every N minutes"_s);
        QVERIFY(!it.find<QCheckBox>(u"chkttactive"_s)->isChecked());
        QVERIFY(!it.timer()->isActive());
        QCOMPARE(it.rows(u"lsttimetable"_s), QStringList{u"Friday (off)"_s});
        QCOMPARE(it.next(), u"Nothing is due."_s);
    }

    void theKindsAreTheirWords()
    {
        const TimetableHands it;
        const auto *kinds = it.find<QComboBox>(u"comttwhen"_s);
        QStringList words;
        for (int index = 0; index < kinds->count(); ++index)
            words.append(kinds->itemText(index));
        QCOMPARE(words, (QStringList{u"by hand"_s, u"at a time"_s, u"every N minutes"_s, u"when empty"_s}));
    }

    void runNowSendsOneCommandAfterTheOther()
    {
        TimetableHands it;
        it.add(u"Friday"_s, {u"say one"_s, QString(), u"  say two  "_s, u"say three"_s});
        const QDateTime before = it.now();
        it.click(u"cmdttrun"_s);
        QTRY_COMPARE(it.on.server.commands(), (QList<QByteArray>{"say one", "say two", "say three"}));
        QVERIFY(before.msecsTo(it.now()) >= 1500);
        QTRY_VERIFY2(it.result().endsWith(u" Friday: 3 commands sent; the server answered"_s), qPrintable(it.result()));
        QCOMPARE(it.status(), it.result());
    }

    void noneIsLostToTheLimitOfRealServers()
    {
        TimetableHands it({.practice = PracticeOptions::cod2(), .prepare = {}});
        QStringList commands;
        for (int number = 1; number <= 10; ++number)
            commands.append(u"set timed_%1 %1"_s.arg(number));
        it.add(u"many"_s, commands);
        it.click(u"cmdttrun"_s);
        for (int number = 1; number <= 10; ++number)
            QTRY_COMPARE(it.on.server.game().dvars().value(u"timed_%1"_s.arg(number)), QString::number(number));
    }

    void badNewsIsTold()
    {
        TimetableHands it;
        it.on.server.answer("foo", {"Unknown command \"foo\"\n"});
        it.add(u"Friday"_s, {u"say one"_s, u"foo"_s});
        it.click(u"cmdttrun"_s);
        QTRY_VERIFY2(it.result().endsWith(u" Friday: 2 commands sent; foo: unknown command"_s),
                     qPrintable(it.result()));
    }

    void runNowNeedsAConnection()
    {
        TimetableHands it({.connects = false});
        it.add(u"Friday"_s, {u"say one"_s});
        QVERIFY(!it.find<QPushButton>(u"cmdttrun"_s)->isEnabled());
        it.on.program.connectTo(it.on.server);
        QVERIFY(it.find<QPushButton>(u"cmdttrun"_s)->isEnabled());
        it.on.program.click(u"cmdconnect"_s);
        QVERIFY(!it.find<QPushButton>(u"cmdttrun"_s)->isEnabled());
    }

    void atItsTimeOnItsDay()
    {
        TimetableHands it;
        it.add(u"evening"_s, {u"say good evening"_s}, u"at a time"_s);
        it.type(u"txttttime"_s, u"20:30"_s);
        it.find<QCheckBox>(u"chkttday_6"_s)->setChecked(true);
        it.activate();
        QCOMPARE(it.next(), u"Next: evening, Sun 5 Mar 20:30."_s);
        QVERIFY(it.timer()->isActive());
        it.comes(evening.addSecs(-60));
        QCOMPARE(it.on.server.commands(), QList<QByteArray>());
        it.comes(evening.addMSecs(20));
        QTRY_COMPARE(it.on.server.commands(), QList<QByteArray>{"say good evening"});
        QCOMPARE(it.next(), u"Next: evening, Sun 12 Mar 20:30."_s);
    }

    void everySoManyMinutes()
    {
        TimetableHands it;
        it.add(u"often"_s, {u"say again"_s}, u"every N minutes"_s);
        it.type(u"txtttminutes"_s, u"10"_s);
        it.activate();
        const QDateTime begun = it.now();
        it.comes(begun.addSecs(602));
        QTRY_COMPARE(it.on.server.commands().size(), 1);
        it.comes(begun.addSecs(1202));
        QTRY_COMPARE(it.on.server.commands(), (QList<QByteArray>{"say again", "say again"}));
    }

    void whatIsDueWhileDisconnectedIsMissed()
    {
        TimetableHands it({.connects = false});
        it.add(u"evening"_s, {u"say good evening"_s}, u"every N minutes"_s);
        it.activate();
        it.comes(it.now().addSecs(1801));
        QTRY_VERIFY2(it.result().endsWith(u" evening: missed, not connected"_s), qPrintable(it.result()));
        it.on.program.connectTo(it.on.server);
        QVERIFY(it.on.program.showsRepliesOf(it.on.server));
        QVERIFY(!it.on.server.commands().contains("say good evening"));
    }

    void aFlagThatIsLeftSetHoldsNothingUp()
    {
        TimetableHands it;
        it.on.program.session.rconbusy = true; // as after listings without maps
        it.add(u"Friday"_s, {u"say one"_s});
        it.click(u"cmdttrun"_s);
        QTRY_COMPARE(it.on.server.commands(), QList<QByteArray>{"say one"});
    }

    void aClockThatIsSetBackIsNoticed()
    {
        TimetableHands it;
        it.on.program.clock.set(evening.addDays(30));
        it.add(u"evening"_s, {u"say good evening"_s}, u"at a time"_s);
        it.type(u"txttttime"_s, u"20:30"_s);
        it.find<QCheckBox>(u"chkttday_6"_s)->setChecked(true);
        it.activate();
        it.comes(evening.addSecs(-600));
        QCOMPARE(it.next(), u"Next: evening, Sun 5 Mar 20:30."_s);
        it.comes(evening.addMSecs(20));
        QTRY_COMPARE(it.on.server.commands(), QList<QByteArray>{"say good evening"});
    }

    void whatIsDueIsNotForgottenWhenAListIsEditedThen()
    {
        TimetableHands it;
        it.add(u"evening"_s, {u"say good evening"_s}, u"at a time"_s);
        it.type(u"txttttime"_s, u"20:30"_s);
        it.find<QCheckBox>(u"chkttday_6"_s)->setChecked(true);
        it.activate();
        it.on.program.clock.set(evening.addSecs(5));
        it.type(u"txtttname"_s, u"late evening"_s);
        it.comes(it.now());
        QTRY_COMPARE(it.on.server.commands(), QList<QByteArray>{"say good evening"});
    }

    void severalThatAreDueGoOneAfterTheOther()
    {
        TimetableHands it;
        for (const QString &name : {u"a"_s, u"b"_s}) {
            it.add(name, {u"say %1 1"_s.arg(name), u"say %1 2"_s.arg(name)}, u"every N minutes"_s);
            it.activate();
        }
        it.comes(it.now().addSecs(1801));
        QTRY_COMPARE(it.on.server.commands(), (QList<QByteArray>{"say a 1", "say a 2", "say b 1", "say b 2"}));
    }

    void disconnectingBreaksARunOff()
    {
        TimetableHands it;
        it.add(u"many"_s, {u"say one"_s, u"say two"_s, u"say three"_s});
        atRequest(it.on.server, "say one", [&] { it.on.program.click(u"cmdconnect"_s); });
        it.click(u"cmdttrun"_s);
        QTRY_VERIFY2(it.result().contains(u"broken off after 1 of 3, not connected"_s), qPrintable(it.result()));
        QCOMPARE(it.on.server.commands(), QList<QByteArray>{"say one"});
    }

    void whatTheComputerSleptThroughIsMissed()
    {
        TimetableHands it;
        it.add(u"often"_s, {u"say again"_s}, u"every N minutes"_s);
        it.activate();
        it.comes(it.now().addSecs(1800 + 600));
        QVERIFY2(it.result().endsWith(u" often: missed, the computer slept"_s), qPrintable(it.result()));
    }

    void whenTheServerIsEmpty()
    {
        TimetableHands it({.prepare = {}});
        while (it.on.server.game().players().count() > 0)
            it.on.server.game().players().remove(it.on.server.game().players().all().constFirst().slot);
        it.add(u"empty"_s, {u"map_rotate"_s}, u"when empty"_s);
        it.type(u"txtttminutes"_s, u"5"_s);
        it.activate();
        auto *timer = it.on.program.find<QTimer>(u"tmrcount"_s);
        QTRY_VERIFY2(it.next().contains(u"empty since"_s), qPrintable(it.next()));
        const QDateTime begun = it.now();
        it.on.forget();
        for (int minute = 1; minute <= 4; ++minute) {
            it.on.program.clock.set(begun.addSecs(60 * minute));
            const auto before = it.on.server.requests().size();
            QMetaObject::invokeMethod(timer, "timeout");
            QTRY_VERIFY(it.on.server.requests().size() > before);
        }
        QVERIFY(!it.on.server.commands().contains("map_rotate"));
        it.on.program.clock.set(begun.addSecs(301));
        QMetaObject::invokeMethod(timer, "timeout");
        QTRY_VERIFY(it.on.server.commands().contains("map_rotate"));
        it.on.forget();
        it.on.program.clock.set(begun.addSecs(400));
        QMetaObject::invokeMethod(timer, "timeout");
        QTRY_COMPARE(it.on.server.requests().size(), 1);
        QVERIFY(!it.on.server.commands().contains("map_rotate")); // once for each time that it is empty

        // Nobody has looked for hours: who knows who was there.
        const QDateTime awake = begun.addSecs(8 * 3600);
        const auto ask = [&](const QDateTime &at) {
            bool isCounted = false;
            const auto counting = connect(qobject_cast<ServerCount *>(timer->parent()), &ServerCount::counted, this,
                                          [&](std::optional<int> players) { isCounted = players.has_value(); });
            it.on.program.clock.set(at);
            QMetaObject::invokeMethod(timer, "timeout");
            QTRY_VERIFY(isCounted);
            disconnect(counting);
        };
        for (int minute = 0; minute <= 4; ++minute)
            ask(awake.addSecs(60 * minute));
        QVERIFY(!it.on.server.commands().contains("map_rotate"));
        ask(awake.addSecs(380));
        QTRY_VERIFY(it.on.server.commands().contains("map_rotate"));
        it.find<QCheckBox>(u"chkttactive"_s)->setChecked(false);
        QVERIFY(!timer->isActive());
    }

    void badTimesAreTold()
    {
        const TimetableHands it;
        it.add(u"evening"_s, {u"say x"_s}, u"at a time"_s);
        it.find<QCheckBox>(u"chkttday_6"_s)->setChecked(true);
        it.activate();
        QVERIFY(it.timer()->isActive());
        it.type(u"txttttime"_s, u"25:99"_s);
        QCOMPARE(it.find<QLabel>(u"lbltthint"_s)->text(),
                 u"The time is written like 20:30; as it stands here the list is not sent."_s);
        QVERIFY(!it.timer()->isActive());
        it.type(u"txttttime"_s, u"21:00"_s);
        QCOMPARE(it.find<QLabel>(u"lbltthint"_s)->text(), QString());
        QVERIFY(it.timer()->isActive());
    }

    void listsAreThereTheNextTime()
    {
        QByteArray kept;
        {
            const TimetableHands it({.connects = false});
            it.add(u"evening"_s, {u"say one"_s, u"say two"_s}, u"at a time"_s);
            it.find<QCheckBox>(u"chkttday_4"_s)->setChecked(true);
            it.activate();
            kept = it.file();
        }
        QVERIFY(kept.contains("evening"));
        Program program;
        program.write(timetableFile, kept);
        program.start();
        QVERIFY(program.find<QTimer>(u"tmrtimetable"_s)->isActive()); // also without its window
        program.trigger(u"mtimetable"_s);
        const QWidget *window = otherWindow(u"frmtimetable"_s);
        QVERIFY(window);
        QCOMPARE(window->findChild<QListWidget *>(u"lsttimetable"_s)->item(0)->text(), u"evening"_s);
        QCOMPARE(window->findChild<QPlainTextEdit *>(u"txtttcommands"_s)->toPlainText(), u"say one\nsay two"_s);
        QCOMPARE(program.file(timetableFile), kept);
    }

    void aBrokenFileIsPutAside()
    {
        Program program;
        program.write(timetableFile, "{broken");
        program.start();
        program.trigger(u"mtimetable"_s);
        const QWidget *window = otherWindow(u"frmtimetable"_s);
        QCOMPARE(window->findChild<QLabel *>(u"lblttnext"_s)->text(),
                 u"The timetable was broken and is kept as molvark-timetable.broken-1.json"_s);
        QCOMPARE(program.file(u"molvark-timetable.broken-1.json"_s), QByteArray("{broken"));
        window->findChild<QPushButton *>(u"cmdttadd"_s)->click();
        QVERIFY(program.file(timetableFile).contains("List 1"));
    }

    void removingAsks()
    {
        TimetableHands it;
        it.add(u"evening"_s, {u"say one"_s});
        it.on.program.prompts.answers.append(Answer::No);
        it.click(u"cmdttremove"_s);
        QCOMPARE(it.on.program.prompts.takeBoxes().size(), 1);
        QCOMPARE(it.rows(u"lsttimetable"_s).size(), 1);
        it.on.program.prompts.answers.append(Answer::Yes);
        it.click(u"cmdttremove"_s);
        QCOMPARE(it.on.program.prompts.takeBoxes().size(), 1);
        QCOMPARE(it.rows(u"lsttimetable"_s).size(), 0);
    }

    void passwordsAreStarsInResults()
    {
        TimetableHands it;
        it.on.server.answer("set g_password hunter2", {"Unknown command \"set\"\n"});
        it.add(u"lock"_s, {u"set g_password hunter2"_s});
        it.click(u"cmdttrun"_s);
        QTRY_VERIFY2(it.result().contains(u"unknown command"_s), qPrintable(it.result()));
        QVERIFY(!it.result().contains(u"hunter2"_s));
    }

    void closingTheProgramEndsARun()
    {
        TimetableHands it;
        it.add(u"many"_s, QStringList(50, u"say x"_s));
        atRequest(it.on.server, "say x", [&] { it.on.program.window.close(); });
        it.click(u"cmdttrun"_s);
        QVERIFY(it.on.server.commands().size() < 50);
    }
};

WINDOW_TEST(TimetableTest)

#include "tst_timetable.moc"
