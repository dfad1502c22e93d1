// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QTimer>

#include <chrono>
#include <functional>

/// What leaves later, each at its time by a clock, and at equal times in the order in which it was added.
class Departures final {
public:
    using Clock = std::function<std::chrono::milliseconds()>;

    Departures();
    Q_DISABLE_COPY_MOVE(Departures)
    ~Departures() = default;

    /// The time since any moment that stays the same; by default the system's.
    void setClock(const Clock &clock_);
    [[nodiscard]] std::chrono::milliseconds now() const { return clock(); }

    void add(std::chrono::microseconds delay, const std::function<void()> &leave);
    /// Nothing of it leaves any more.
    void clear() { waiting.clear(); }

private:
    struct Departure {
        std::chrono::microseconds at{};
        std::function<void()> leave;
    };

    void depart();
    void waitForNext();

    Clock clock;
    bool isForeign = false;   ///< the clock is somebody else's, who alone knows when it will show what
    QList<Departure> waiting; ///< by time
    QTimer timer;
};
