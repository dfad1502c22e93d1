// SPDX-License-Identifier: MIT
#include "base/clock.h"
#include "cpu_time.h"
#include "test_class.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

/// A clock that stands still.
class StandingClock final : public Clock {
public:
    explicit StandingClock(QTime time) : when(QDate(2006, 3, 5), time) {}
    [[nodiscard]] QDateTime now() const override { return when; }

private:
    QDateTime when;
};

} // namespace

class ClockTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void secondsSinceMidnightHaveFractions()
    {
        QCOMPARE(StandingClock({1, 2, 3, 250}).secondsSinceMidnight(), 3723.25);
        QCOMPARE(StandingClock({23, 59, 59, 999}).secondsSinceMidnight(), 86399.999);
    }

    void midnightIsZero() { QCOMPARE(StandingClock({0, 0}).secondsSinceMidnight(), 0.0); }

    void theProgramsOwnClockShowsTheTimeOfTheSystem()
    {
        const QDateTime before = QDateTime::currentDateTime();
        const QDateTime shown = Clock().now();
        const QDateTime after = QDateTime::currentDateTime();
        QVERIFY(before <= shown && shown <= after);
        QCOMPARE(shown.timeSpec(), Qt::LocalTime);
    }

    void aRestSleepsUntilItIsOver()
    {
        constexpr qint64 nap = 200; // milliseconds
        const auto rested = [] {
            QElapsedTimer since;
            since.start();
            while (since.elapsed() < nap)
                Clock().rest(static_cast<double>(nap - since.elapsed()) / 1000);
        };
        QVERIFY2(cpuTimeOf(rested) < 0.02, "a tenth of the time");
    }

    void somethingThatHappensEndsARest()
    {
        bool hasHappened = false;
        QTimer::singleShot(10, this, [&] { hasHappened = true; });
        QElapsedTimer since;
        since.start();
        while (!hasHappened)
            Clock().rest(60);
        QVERIFY2(since.elapsed() < 1000, "it went on sleeping");
    }

    // A handler that runs inside a rest rests longer than that was to last.
    void aRestInsideARestDoesNotKeepTheOuterOneAsleep()
    {
        QElapsedTimer since;
        since.start();
        QMetaObject::invokeMethod(
            this,
            [&since] {
                while (since.elapsed() < 300)
                    Clock().rest(static_cast<double>(300 - since.elapsed()) / 1000);
            },
            Qt::QueuedConnection);
        while (since.elapsed() < 100)
            Clock().rest(static_cast<double>(100 - since.elapsed()) / 1000);
        QVERIFY(since.elapsed() < 5000);
    }

    // So that a clock that is set meanwhile is noticed.
    void aLongRestIsLookedAtEverySecond()
    {
        QElapsedTimer since;
        since.start();
        Clock().rest(30'000);
        QVERIFY(since.elapsed() < 10'000);
    }
};

GUILESS_TEST(ClockTest)
#include "tst_clock.moc"
