// SPDX-License-Identifier: MIT
#include "base/clock.h"
#include "test_class.h"

#include <QRegularExpression>

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
};

GUILESS_TEST(ClockTest)
#include "tst_clock.moc"
