// SPDX-License-Identifier: MIT
#include "departures.h"

#include <algorithm>

using namespace std::chrono_literals;

namespace {

std::chrono::milliseconds steadyTime()
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

} // namespace

Departures::Departures() : clock(steadyTime)
{
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, &timer, [this] { depart(); });
}

void Departures::setClock(const Clock &clock_)
{
    clock = clock_;
    isForeign = true;
    waitForNext();
}

void Departures::add(std::chrono::microseconds delay, const std::function<void()> &leave)
{
    const std::chrono::microseconds at = now() + delay;
    waiting.insert(std::ranges::upper_bound(waiting, at, {}, &Departure::at), {at, leave});
    waitForNext();
}

void Departures::depart()
{
    const std::chrono::milliseconds time = now();
    while (!waiting.isEmpty() && std::chrono::floor<std::chrono::milliseconds>(waiting.first().at) <= time)
        waiting.takeFirst().leave();
    waitForNext();
}

// Another's clock is looked at in each turn of the event loop, as long as something waits.
void Departures::waitForNext()
{
    if (waiting.isEmpty())
        return;
    const auto left = std::chrono::floor<std::chrono::milliseconds>(waiting.first().at) - now();
    timer.start(isForeign ? 0ms : std::max(left, 0ms));
}
