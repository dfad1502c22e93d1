// SPDX-License-Identifier: MIT
#include "cli/cli_output.h"
#include "cli/errand.h"
#include "test_class.h"

#include <QElapsedTimer>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// An errand after which a server hears nothing for as long as is told.
class IdleErrand final : public Errand {
    Q_OBJECT

public:
    IdleErrand(CliOutput &output_, std::chrono::milliseconds rest_) : Errand(output_), rest(rest_)
    {
        connect(this, &Errand::ended, this, [this](ExitStatus status) { statuses.append(status); });
    }

    void begin() override { finish(ExitStatus::NotDone); }
    [[nodiscard]] bool isLookingUp() const override { return false; }

    QList<ExitStatus> statuses;
    int stops = 0;

private:
    void stop() override { ++stops; }
    [[nodiscard]] std::chrono::milliseconds untilHeard() const override { return rest; }

    const std::chrono::milliseconds rest;
};

} // namespace

/// When the program without a window says that it is done.
class CliErrandTest final : public QObject {
    Q_OBJECT

private slots:
    void itEndsAtOnceWhenNothingWasSent()
    {
        CliOutput output;
        IdleErrand errand(output, 0ms);
        errand.begin();
        QCOMPARE(errand.statuses, QList{ExitStatus::NotDone});
        QCOMPARE(errand.stops, 1);
    }

    void itEndsWhenTheServerHearsAgain()
    {
        CliOutput output;
        IdleErrand errand(output, 60ms);
        QElapsedTimer since;
        since.start();
        errand.begin();
        QCOMPARE(errand.stops, 1);
        QVERIFY(errand.statuses.isEmpty());
        QTRY_COMPARE(errand.statuses, QList{ExitStatus::NotDone});
        QVERIFY2(since.elapsed() >= 58, qPrintable(QString::number(since.elapsed())));
    }

    void anInterruptionIsNotHeldUp()
    {
        CliOutput output;
        IdleErrand errand(output, 1h);
        errand.begin();
        errand.interrupt();
        QCOMPARE(errand.statuses, QList{ExitStatus::Interrupted});
        errand.interrupt();
        QCOMPARE(errand.statuses.size(), 1);
        QCOMPARE(errand.stops, 1);
    }

    void whatIsHeldUpAndInterruptedEndsOnce()
    {
        CliOutput output;
        IdleErrand errand(output, 1ms);
        IdleErrand later(output, 20ms);
        errand.begin();
        errand.interrupt();
        later.begin();
        QTRY_COMPARE(later.statuses.size(), 1);
        QCOMPARE(errand.statuses, QList{ExitStatus::Interrupted});
    }
};

GUILESS_TEST(CliErrandTest)
#include "tst_cli_errand.moc"
