// SPDX-License-Identifier: MIT
#include "cycler_tab.h"

using namespace Qt::StringLiterals;

/// Starting and stopping the cycler, its interval, and when it says what.
class MessageCyclerTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void itIsStoppedAtFirst()
    {
        Program program;
        program.start();
        QVERIFY(program.find<QAbstractButton>(u"cmdmessstart"_s)->isEnabled());
        QVERIFY(!program.find<QAbstractButton>(u"cmdmessstop"_s)->isEnabled());
        QCOMPARE(program.text(u"txtinterval"_s), u"3"_s);
        const auto *timer = program.find<QTimer>(u"tmrmessage"_s);
        QVERIFY(!timer->isActive());
        QCOMPARE(timer->interval(), 60'000);
    }

    void itStartsWhenThePersonAgrees()
    {
        CyclerTab cycler({"first", "second"});
        cycler.program().prompts.answers = {Answer::Cancel};
        cycler.program().click(u"cmdmessstart"_s);
        QCOMPARE(cycler.program().prompts.takeBoxes(), QList<Box>{startBox(u"Ann"_s)});
        QVERIFY(!cycler.isRunning());

        cycler.start();
        QVERIFY(cycler.isRunning());
        QVERIFY2(cycler.server.requests().isEmpty(), "nothing is said at once");
        cycler.program().click(u"cmdmessstop"_s);
        QVERIFY(!cycler.isRunning());
        QVERIFY(cycler.server.requests().isEmpty());
    }

    void withoutAConnectionItDoesNotStart()
    {
        MessagesTab tab(threeSets());
        tab.program.click(u"cmdmessstart"_s);
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{noConnectionBox()});
        QVERIFY(!tab.program.find<QTimer>(u"tmrmessage"_s)->isActive());
    }

    void withUnsavedSetsItDoesNotStart()
    {
        CyclerTab cycler({"first"});
        cycler.tab.add(u"second"_s);
        cycler.program().click(u"cmdmessstart"_s);
        QCOMPARE(cycler.program().prompts.takeBoxes(), QList<Box>{pendingBox()});
        QVERIFY(!cycler.isRunning());
    }

    void withoutMessagesItDoesNotStart_data()
    {
        QTest::addColumn<QString>("set");
        QTest::newRow("an empty set") << u"Ben"_s;
        QTest::newRow("no such set") << u"ann"_s;
        QTest::newRow("no set") << QString();
    }

    void withoutMessagesItDoesNotStart()
    {
        QFETCH(QString, set);
        CyclerTab cycler({"first"});
        cycler.program().setText(u"commessset"_s, set);
        cycler.program().click(u"cmdmessstart"_s);
        const Box empty{u"No messages in set"_s,
                        u"The message set does not contain any messages!\r Please make some messages first."_s,
                        BoxIcon::Exclamation, BoxButtons::Ok};
        QCOMPARE(cycler.program().prompts.takeBoxes(), (QList<Box>{startBox(set), empty}));
        QVERIFY(!cycler.isRunning());
    }

    void itSaysOneMessageEachIntervalOverAndOver()
    {
        CyclerTab cycler({"first", "second"});
        cycler.start();
        QCOMPARE(cycler.saidIn(11), (QStringList{u"1 first"_s, u"4 second"_s, u"7 first"_s, u"10 second"_s}));
    }

    void everyMinuteSendsWhenTheIntervalIsOne()
    {
        CyclerTab cycler({"first", "second"});
        cycler.setInterval(u"1"_s);
        cycler.start();
        QCOMPARE(cycler.saidIn(3), (QStringList{u"1 first"_s, u"2 second"_s, u"3 first"_s}));
    }

    void whatIsSaidIsTheSavedSet()
    {
        CyclerTab cycler({"first", "second"});
        cycler.setInterval(u"1"_s);
        cycler.start();
        cycler.tab.doubleClick(1);
        cycler.tab.add(u"changed"_s);
        QCOMPARE(cycler.saidIn(2), (QStringList{u"1 first"_s, u"2 second"_s}));
        QVERIFY(cycler.isRunning());
    }

    void anEmptyPositionIsPassedOver()
    {
        CyclerTab cycler({"first", "second", "third"});
        cycler.tab.select(1);
        cycler.tab.click(u"imgdel"_s);
        cycler.tab.save();
        cycler.setInterval(u"1"_s);
        cycler.start();
        QCOMPARE(cycler.saidIn(3), (QStringList{u"1 first"_s, u"2 third"_s, u"3 first"_s}));
    }

    void stoppedAndStartedItGoesOnWhereItWas()
    {
        CyclerTab cycler({"first", "second", "third"});
        cycler.start();
        QCOMPARE(cycler.saidIn(2), QStringList{u"1 first"_s});
        cycler.program().click(u"cmdmessstop"_s);
        cycler.start();
        QCOMPARE(cycler.saidIn(5), (QStringList{u"2 second"_s, u"5 third"_s}));
    }

    void anotherIntervalMakesTheNextMinuteSend()
    {
        CyclerTab cycler({"first", "second", "third"});
        cycler.start();
        QCOMPARE(cycler.saidIn(1), QStringList{u"1 first"_s});
        cycler.setInterval(u"2"_s);
        QCOMPARE(cycler.saidIn(3), (QStringList{u"1 second"_s, u"3 third"_s}));
        cycler.program().find<QLineEdit>(u"txtinterval"_s)->setFocus();
        cycler.tab.leave();
        QVERIFY2(cycler.saidIn(1).isEmpty(), "left as it was");
    }

    void aWrongIntervalIsToldAndKept_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("told"); ///< nothing when it is right
        const QString noNumber = u"Value between 1 and 10 only please"_s;
        const QString outside = u"Value between 1 and 10 minutes"_s;
        QTest::newRow("a word") << u"often"_s << noNumber;
        QTest::newRow("nothing") << QString() << noNumber;
        QTest::newRow("with a unit") << u"3 min"_s << noNumber;
        QTest::newRow("0") << u"0"_s << outside;
        QTest::newRow("11") << u"11"_s << outside;
        QTest::newRow("below all") << u"-3"_s << outside;
        QTest::newRow("just below") << u"0.9"_s << outside;
        QTest::newRow("1") << u"1"_s << QString();
        QTest::newRow("10") << u"10"_s << QString();
        QTest::newRow("a fraction") << u"2.5"_s << QString();
    }

    void aWrongIntervalIsToldAndKept()
    {
        QFETCH(QString, text);
        QFETCH(QString, told);
        MessagesTab tab;
        typeInterval(tab, text);
        const Box box{u"Invalid Entry"_s, told, BoxIcon::Information, BoxButtons::Ok};
        QCOMPARE(tab.program.prompts.takeBoxes(), told.isEmpty() ? QList<Box>() : QList<Box>{box});
        const auto *interval = tab.program.find<QLineEdit>(u"txtinterval"_s);
        QCOMPARE(QApplication::focusWidget() == interval, !told.isEmpty());
        QCOMPARE(interval->text(), text);
    }

    void anIntervalThatIsNeverReachedSendsOnce()
    {
        CyclerTab cycler({"first"});
        cycler.start();
        QCOMPARE(cycler.saidIn(1), QStringList{u"1 first"_s});
        cycler.program().setText(u"txtinterval"_s, u"0"_s);
        QCOMPARE(cycler.saidIn(12), QStringList());
    }

    void anIntervalWithAUnitIsRefusedAndStillCounts()
    {
        CyclerTab cycler({"first", "second"});
        cycler.start();
        QCOMPARE(cycler.saidIn(1), QStringList{u"1 first"_s});
        cycler.setInterval(u"2 minutes"_s);
        QCOMPARE(cycler.program().prompts.takeBoxes().size(), 1);
        QCOMPARE(cycler.saidIn(5), (QStringList{u"2 second"_s, u"4 first"_s}));
    }

    void anIntervalWithoutEndDisturbsNobody()
    {
        CyclerTab cycler({"first"});
        cycler.start();
        QCOMPARE(cycler.saidIn(1), QStringList{u"1 first"_s});
        cycler.program().setText(u"txtinterval"_s, u"99999999 min"_s);
        QCOMPARE(cycler.saidIn(3), QStringList());
        QCOMPARE(cycler.program().prompts.takeBoxes(), QList<Box>());
    }

    // The message is not postponed: the minutes are counted anew.
    void whileASettingsPageReadsTheMessageIsLeftOut()
    {
        CyclerTab cycler({"first", "second"});
        cycler.start();
        QCOMPARE(cycler.saidIn(3), QStringList{u"1 first"_s});
        QStringList said{u"not asked"_s};
        atRequest(cycler.server, "dvarlist scr_allow_*", [&] { said = cycler.saidIn(1); });
        cycler.program().click(u"cmdCodOther_1"_s);
        QCOMPARE(said, QStringList());
        QCOMPARE(cycler.saidIn(4), QStringList{u"3 second"_s});
    }

    void savingStopsIt()
    {
        CyclerTab cycler({"first"});
        cycler.start();
        cycler.tab.add(u"second"_s);
        QStringList notes;
        connect(cycler.program().progress()->findChild<QPlainTextEdit *>(u"txtprogress"_s),
                &QPlainTextEdit::textChanged, this, [&] { notes.append(cycler.program().note()); });
        cycler.tab.save();
        QVERIFY(!cycler.isRunning());
        const QString stopping = u"Stopping the active message Cycle to sync changes"_s;
        QVERIFY(notes.contains(stopping));
        QVERIFY(notes.contains(stopping + u"\nWriting changes to INI file"_s));
    }

    void disconnectingStopsIt()
    {
        CyclerTab cycler({"first"});
        cycler.start();
        cycler.program().click(u"cmdconnect"_s);
        QVERIFY(!cycler.isRunning());
        cycler.program().prompts.takeBoxes();
    }

    // The connection can get lost in other ways than by the button.
    void aMinuteWithoutAConnectionWarns()
    {
        CyclerTab cycler({"first"});
        cycler.start();
        cycler.program().session.connected = false;
        for (int minute = 0; minute < 2; ++minute) {
            cycler.tick();
            QCOMPARE(cycler.program().prompts.takeBoxes(), QList<Box>{noConnectionBox()});
            QVERIFY(cycler.isRunning());
        }
        cycler.program().window.showMinimized();
        cycler.tick();
        QCOMPARE(cycler.program().prompts.takeBoxes(), QList<Box>());
        QVERIFY(cycler.server.requests().isEmpty());
        cycler.program().window.showNormal();
        cycler.program().session.connected = true;
        QCOMPARE(cycler.saidIn(1), QStringList{u"1 first"_s});
    }

    void leavingTheServerInTheMiddleSaysNothingMore()
    {
        CyclerTab cycler({"%SN% %FF%"});
        PracticeServer other;
        QVERIFY(other.listen());
        answerBriefly(other);
        cycler.start();
        atRequest(cycler.server, "dvarlist sv_hostname", [&] {
            cycler.program().click(u"cmdconnect"_s);
            cycler.program().connectTo(other);
            other.forgetRequests();
        });
        cycler.tick();
        QVERIFY2(!other.commands().join('\n').contains("say "), "the message was meant for the other server");
        QVERIFY(!cycler.server.commands().join('\n').contains("say "));
        cycler.program().prompts.takeBoxes();
    }

    // Nobody is there to answer the box.
    void anIntervalWithAUnitThatHasPassedSendsNext()
    {
        CyclerTab cycler({"first", "second"});
        cycler.setInterval(u"10"_s);
        cycler.start();
        QCOMPARE(cycler.saidIn(6), QStringList{u"1 first"_s});
        cycler.setInterval(u"3 min"_s);
        QCOMPARE(cycler.program().prompts.takeBoxes().size(), 1);
        QCOMPARE(cycler.saidIn(5), QStringList({u"1 second"_s, u"4 first"_s}));
    }

    void aMessageWhoseBoxIsOpenCountsAsSaidAndTheNextOnesAreSaid_data()
    {
        QTest::addColumn<QByteArray>("first");
        QTest::addColumn<QByteArray>("silentTo");
        QTest::newRow("while it is said") << QByteArray("first") << QByteArray(sayPrefix + "first");
        QTest::newRow("while it asks") << QByteArray("%SN%") << QByteArray("dvarlist sv_hostname");
    }

    void aMessageWhoseBoxIsOpenCountsAsSaidAndTheNextOnesAreSaid()
    {
        QFETCH(QByteArray, first);
        QFETCH(QByteArray, silentTo);
        CyclerTab cycler({first, "second", "third"});
        cycler.setInterval(u"2"_s);
        cycler.start();
        cycler.server.answer(silentTo, {});
        QStringList said;
        cycler.program().prompts.whileOpen = [&] {
            said = cycler.saidIn(5);
            cycler.server.answerAsUsual(silentTo);
            cycler.server.forgetRequests();
        };
        cycler.tick();
        QCOMPARE(cycler.program().prompts.takeBoxes(), QList<Box>{noResponseBox()});
        QCOMPARE(said, QStringList({u"2 second"_s, u"4 third"_s}));
        QVERIFY2(cycler.server.commands().isEmpty(), "it is not said once more when the box is closed");
    }

    void anOutageBringsOneBoxHoweverManyMinutesItLasts()
    {
        CyclerTab cycler({"first", "second"});
        cycler.setInterval(u"1"_s);
        cycler.start();
        cycler.server.setSilent(true);
        cycler.program().clock.longestStep = 500;
        cycler.program().prompts.whileOpen = [&] { (void)cycler.saidIn(200); };
        cycler.tick();
        QCOMPARE(cycler.program().prompts.takeBoxes(), QList<Box>{noResponseBox()});
        cycler.server.setSilent(false);
        QCOMPARE(cycler.saidIn(1).size(), 1);
    }

    void aWarningThatIsStillOpenIsNotBroughtAgain()
    {
        CyclerTab cycler({"first"});
        cycler.start();
        cycler.program().session.connected = false;
        cycler.program().prompts.whileOpen = [&] { cycler.tick(); };
        cycler.tick();
        QCOMPARE(cycler.program().prompts.takeBoxes(), QList<Box>{noConnectionBox()});
    }

    void aMinuteThatPassesDuringAMessageCountsForNothing()
    {
        CyclerTab cycler({"%SN%", "second"});
        cycler.setInterval(u"1"_s);
        cycler.start();
        atRequest(cycler.server, "dvarlist sv_hostname", [&] { cycler.tick(); });
        cycler.tick();
        QCOMPARE(cycler.server.commands().size(), 2);
        QVERIFY(cycler.server.commands().constLast().startsWith("say "));
    }
};

WINDOW_TEST(MessageCyclerTest)
#include "tst_message_cycler.moc"
