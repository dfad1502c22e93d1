// SPDX-License-Identifier: MIT
#include "clock.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>
#include <cmath>

std::chrono::microseconds Clock::elapsed() const
{
    return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

void Clock::rest(double seconds) const
{
    QTimer alarm; // that it goes off is what ends the sleep
    alarm.setTimerType(Qt::PreciseTimer);
    // A handler that waits inside this rest can take the alarm for itself: it goes off again.
    QObject::connect(&alarm, &QTimer::timeout, &alarm, [&alarm] { alarm.setInterval(1000); });
    alarm.start(static_cast<int>(std::ceil(std::clamp(seconds, 0.0, 1.0) * 1000)));
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}
