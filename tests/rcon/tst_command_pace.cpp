// SPDX-License-Identifier: MIT
#include "rcon/command_pace.h"
#include "test_class.h"

#include <QtTest>

class CommandPaceTest final : public QObject {
    Q_OBJECT

private slots:
    void threeQuartersOfASecondLieBetweenTwoCommands()
    {
        CommandPace pace;
        QVERIFY(pace.untilTurn(100'000, false) <= 0);
        pace.sent(false);
        pace.time(100'000);
        QCOMPARE(pace.untilHeard(100'000), 750);
        QCOMPARE(pace.untilHeard(100'700), 50);
        QCOMPARE(pace.untilHeard(100'750), 0);
        QCOMPARE(pace.untilHeard(200'000), 0);
        QCOMPARE(pace.untilTurn(100'700, false), 50);
    }

    void aCommandCountsFromTheTimeThatIsToldNext()
    {
        CommandPace pace;
        pace.sent(false);
        pace.time(5000);
        pace.time(9000); // nothing was sent since
        QCOMPARE(pace.last(), 5000);
    }

    void aClockThatWasSetBackMakesNobodyWait()
    {
        CommandPace pace;
        pace.sent(true);
        pace.time(100'000);
        QCOMPARE(pace.untilHeard(50'000), 0);
        QVERIFY(pace.untilTurn(50'000, true) > 6000);
    }

    void anotherListWaitsUntilNoAnswerToTheLastCanCome()
    {
        CommandPace pace;
        pace.sent(true);
        pace.time(100'000);
        QCOMPARE(pace.untilTurn(101'000, true), 5000);
        QVERIFY(pace.untilTurn(101'000, false) < 0);
        pace.sent(false); // behind the list
        pace.time(102'000);
        QCOMPARE(pace.untilTurn(102'000, true), 4000);
        QCOMPARE(pace.untilTurn(102'000, false), 750);
    }

    void aListThatWasAnsweredOnceForAllHoldsNothingUp()
    {
        CommandPace pace;
        const qint64 before = pace.stale();
        pace.sent(true);
        pace.time(100'000);
        pace.setStale(before);
        QCOMPARE(pace.untilTurn(100'500, true), 250);
    }

    void listsAreForgottenWithTheirSocket()
    {
        CommandPace pace;
        pace.sent(true);
        pace.forgetLists();
        pace.time(100'000);
        QCOMPARE(pace.untilTurn(100'500, true), 250); // the pace is that of the program
        pace.sent(true);
        pace.time(101'000);
        pace.forgetLists();
        QCOMPARE(pace.untilTurn(101'500, true), 250);
    }
};

GUILESS_TEST(CommandPaceTest)
#include "tst_command_pace.moc"
