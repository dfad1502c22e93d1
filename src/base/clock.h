// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QLocale>

#include <chrono>

/// The time of day. The program asks nothing else what time it is, and the waits for the server rest here, so that
/// tests can let them run faster.
class Clock {
public:
    Clock() = default;
    virtual ~Clock() = default;
    Q_DISABLE_COPY_MOVE(Clock)

    /// Local date and time.
    [[nodiscard]] virtual QDateTime now() const { return QDateTime::currentDateTime(); }
    /// The time of day in the system's short format, as log lines carry it.
    [[nodiscard]] QString shortTime() const { return QLocale::system().toString(now().time(), QLocale::ShortFormat); }
    /// Seconds since midnight with fractions, 0 to 86,400; falls back to zero at midnight.
    [[nodiscard]] double secondsSinceMidnight() const { return now().time().msecsSinceStartOfDay() / 1000.0; }

    /// The time since any moment that stays the same. It only goes on, whatever becomes of the date.
    [[nodiscard]] virtual std::chrono::microseconds elapsed() const;

    /// Yields to the event loop, which sleeps until something happens: a datagram, a click, a timer. At most that long,
    /// and at most a second, so that a clock that is set meanwhile is noticed.
    virtual void rest(double seconds) const;
};
