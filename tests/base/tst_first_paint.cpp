// SPDX-License-Identifier: MIT
#include "base/first_paint.h"
#include "window_test.h"

#include <QTimer>

#include <memory>

using namespace std::chrono_literals;

namespace {

/// A window that counts how often it was painted.
class Painted final : public QWidget {
public:
    int paintings = 0;

protected:
    void paintEvent(QPaintEvent *) override { ++paintings; }
};

// All timers of a millisecond or less that have been started.
void letTimersFire()
{
    bool fired = false;
    QTimer::singleShot(3ms, [&fired] { fired = true; });
    QTRY_VERIFY(fired);
}

} // namespace

class FirstPaintTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void itComesWhenTheWindowHasBeenPainted()
    {
        Painted window;
        QList<int> paintings;
        afterFirstPaint(&window, 1h, [&] { paintings.append(window.paintings); });
        window.show();
        QTRY_COMPARE(paintings, QList<int>{1});
    }

    void itComesOnce()
    {
        Painted window;
        int times = 0;
        afterFirstPaint(&window, 1ms, [&] { ++times; });
        window.show();
        QTRY_COMPARE(times, 1);
        for (int painting = 0; painting < 3; ++painting) {
            window.repaint();
            letTimersFire();
        }
        QVERIFY(window.paintings >= 4);
        QCOMPARE(times, 1);
    }

    void aWindowThatIsNotPaintedIsNotWaitedForAnyLonger()
    {
        Painted window;
        QList<int> paintings;
        afterFirstPaint(&window, 1ms, [&] { paintings.append(window.paintings); });
        QTRY_COMPARE(paintings, QList<int>{0});
        window.show();
        QTRY_VERIFY(window.paintings > 0);
        letTimersFire();
        QCOMPARE(paintings.size(), 1);
    }

    void itDoesNotComeToAWindowThatIsGone()
    {
        auto window = std::make_unique<Painted>();
        int times = 0;
        afterFirstPaint(window.get(), 1ms, [&] { ++times; });
        window.reset();
        letTimersFire();
        QCOMPARE(times, 0);
    }

    // Connecting at start waits inside it.
    void theActionMayRunAnEventLoopInWhichTheWindowIsPaintedAgain()
    {
        Painted window;
        int times = 0;
        afterFirstPaint(&window, 1ms, [&] {
            ++times;
            window.repaint();
            bool fired = false;
            QTimer::singleShot(3ms, [&fired] { fired = true; });
            while (!fired)
                QCoreApplication::processEvents();
        });
        window.show();
        letTimersFire();
        QTRY_COMPARE(times, 1);
        letTimersFire();
        QCOMPARE(times, 1);
    }
};

WINDOW_TEST(FirstPaintTest)
#include "tst_first_paint.moc"
