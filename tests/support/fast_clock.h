// SPDX-License-Identifier: MIT
#pragma once

#include "base/clock.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>

/// A clock that goes many times faster than the real one. A machine that stalls does not make it jump: between two
/// readings it goes on by a fiftieth of a second at most, so that a wait always gives the event loop its many turns.
class FastClock final : public Clock {
public:
    FastClock() { sinceReading.start(); }

    [[nodiscard]] QDateTime now() const override
    {
        // The elapsed time is counted in whole microseconds, so that quick readings lose none of it.
        const qint64 real = sinceReading.nsecsElapsed() / 1000;
        sinceReading.restart();
        microseconds += std::min(real * speed, longestStep * 1000);
        return start.addMSecs(microseconds / 1000);
    }

    /// As of the last reading: what is only measured does not make the clock go on.
    [[nodiscard]] std::chrono::microseconds elapsed() const override
    {
        return std::chrono::milliseconds(start.toMSecsSinceEpoch()) + std::chrono::microseconds(microseconds);
    }

    /// Without sleeping: the time that is to pass is hardly any.
    void rest(double) const override { QCoreApplication::processEvents(); }

    /// Sets the clock; it goes on from there.
    void set(const QDateTime &time)
    {
        start = time;
        microseconds = 0;
        sinceReading.restart();
    }

    int speed = 2000;        ///< times the real one
    qint64 longestStep = 20; ///< milliseconds between two readings

private:
    QDateTime start{QDate(2006, 3, 5), QTime(12, 0)};
    mutable qint64 microseconds = 0;
    mutable QElapsedTimer sinceReading;
};
