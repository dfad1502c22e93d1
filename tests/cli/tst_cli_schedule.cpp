// SPDX-License-Identifier: MIT
#include "cli/ask_schedule.h"
#include "practice/rate_limit.h"
#include "test_class.h"

#include <QRandomGenerator>
#include <QtTest>

#include <algorithm>

using namespace std::chrono_literals;

namespace {

using Step = AskSchedule::Step;
using Time = AskSchedule::Time;

/// Lets the time pass until something is to be done.
Step pass(const AskSchedule &schedule, Time &now)
{
    now = std::max(now, schedule.due());
    return schedule.step(now);
}

/// What became of a script that a server of this kind has heard over a way that takes now more, now less.
struct Course {
    int heard = 0;
    Time took{};
};

Course courseOf(int commands, PracticeOptions::Rate rate, int longestWay)
{
    QRandomGenerator random(7);
    RateLimit limit(rate);
    AskSchedule schedule;
    Course course;
    Time now{};
    for (int command = 0; command < commands; ++command) {
        schedule.begin(1, 3s);
        if (pass(schedule, now) != Step::Send)
            return course;
        schedule.sent(now);
        const Time arrives = now + Time(random.bounded(longestWay + 1));
        if (limit.admits(Request::Kind::Rcon, QHostAddress(QHostAddress::LocalHost), arrives)) {
            ++course.heard;
            now = arrives + Time(random.bounded(longestWay + 1));
            schedule.came(now, false);
        }
        (void)pass(schedule, now);
    }
    course.took = now;
    return course;
}

} // namespace

class CliScheduleTest final : public QObject {
    Q_OBJECT

private slots:
    void theFirstCopyGoesOutAtOnce()
    {
        AskSchedule schedule;
        schedule.begin(1, 3s);
        QVERIFY(!schedule.isAsked());
        QCOMPARE(schedule.step(0ms), Step::Send);
        schedule.sent(0ms);
        QVERIFY(schedule.isAsked());
        QCOMPARE(schedule.step(2999ms), Step::Wait);
        QCOMPARE(schedule.step(3000ms), Step::Silent);
    }

    void copiesAreATimeoutApartAndNeverLessThan750Milliseconds_data()
    {
        QTest::addColumn<int>("timeout");
        QTest::addColumn<int>("apart");
        QTest::newRow("3 s") << 3000 << 3000;
        QTest::newRow("100 ms") << 100 << 750;
    }
    void copiesAreATimeoutApartAndNeverLessThan750Milliseconds()
    {
        QFETCH(int, timeout);
        QFETCH(int, apart);
        AskSchedule schedule;
        schedule.begin(3, Time(timeout));
        Time now{};
        for (int copy = 0; copy < 3; ++copy) {
            QCOMPARE(pass(schedule, now), Step::Send);
            QCOMPARE(now, Time(copy * apart));
            schedule.sent(now);
        }
        QCOMPARE(pass(schedule, now), Step::Silent);
        QCOMPARE(now, Time(2 * apart + timeout));
        QCOMPARE(schedule.copies(), 3);
    }

    void aReplyIsOverWhenNothingHasComeForAWhile()
    {
        AskSchedule schedule;
        schedule.begin(3, 3s);
        schedule.sent(0ms);
        schedule.came(50ms, false);
        QCOMPARE(schedule.step(449ms), Step::Wait);
        schedule.came(449ms, false); // a late piece
        QCOMPARE(schedule.step(848ms), Step::Wait);
        QCOMPARE(schedule.step(849ms), Step::Answered);
        QVERIFY(!schedule.isEndless());
    }

    void aReplyThatIsWholeIsOverAtOnce()
    {
        AskSchedule schedule;
        schedule.begin(1, 3s);
        schedule.sent(0ms);
        schedule.came(50ms, false);
        schedule.came(51ms, true);
        QCOMPARE(schedule.step(51ms), Step::Answered);
    }

    void aReplyWithoutEndIsLeft()
    {
        AskSchedule schedule;
        schedule.begin(1, 3s);
        schedule.sent(0ms);
        Time now = 10ms;
        for (; schedule.step(now) == Step::Wait && now < 60s; now += 100ms)
            schedule.came(now, false);
        QVERIFY2(now > 15s && now < 16s, qPrintable(QString::number(now.count())));
        QCOMPARE(schedule.step(now), Step::Answered);
        QVERIFY(schedule.isEndless());
    }

    void theNextQuestionKeepsItsDistance()
    {
        AskSchedule schedule;
        schedule.begin(1, 3s);
        schedule.sent(100ms);
        schedule.came(101ms, true);
        schedule.begin(1, 3s);
        QCOMPARE(schedule.step(849ms), Step::Wait);
        QCOMPARE(schedule.step(850ms), Step::Send);
        schedule.sent(850ms);
        schedule.came(1400ms, false); // a slow one
        QCOMPARE(schedule.due(), 1800ms);
        schedule.begin(1, 3s);
        QCOMPARE(schedule.step(1800ms), Step::Send);
    }

    void aStrictServerHearsNothingFor750MillisecondsBehindACommand()
    {
        AskSchedule schedule;
        schedule.begin(2, 3s);
        QCOMPARE(schedule.untilHeard(5s), 0ms);
        schedule.sent(5000ms);
        schedule.sent(6000ms);
        QCOMPARE(schedule.untilHeard(6001ms), 749ms);
        schedule.came(6002ms, true);
        QCOMPARE(schedule.untilHeard(6100ms), 650ms);
        QCOMPARE(schedule.untilHeard(8000ms), 0ms);
    }

    void afterSeveralCopiesTheirAnswersAreWaitedOut()
    {
        AskSchedule schedule;
        schedule.begin(2, 1s);
        schedule.sent(0ms);
        schedule.sent(1000ms);
        schedule.came(1100ms, true); // to which of the two?
        schedule.begin(1, 1s);
        QCOMPARE(schedule.step(6999ms), Step::Wait);
        QCOMPARE(schedule.step(7000ms), Step::Send);
    }

    void nothingOf500LinesIsLost_data()
    {
        QTest::addColumn<int>("longestWay");
        QTest::newRow("on this machine") << 1;
        QTest::newRow("up to 120 ms each way") << 120;
        QTest::newRow("up to 249 ms each way") << 249;
    }
    void nothingOf500LinesIsLost()
    {
        QFETCH(int, longestWay);
        const Course course = courseOf(500, PracticeOptions::Rate::HalfSecond, longestWay);
        QCOMPARE(course.heard, 500);
        const Time atBest = 499 * 750ms;
        QVERIFY2(course.took >= atBest && course.took < atBest * 21 / 20 + 2s,
                 qPrintable(QString::number(course.took.count())));
    }
};

GUILESS_TEST(CliScheduleTest)
#include "tst_cli_schedule.moc"
