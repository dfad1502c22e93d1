// SPDX-License-Identifier: MIT
#include "errand.h"

#include <QTimer>

#include <utility>

using namespace std::chrono_literals;

void Errand::finish(ExitStatus status)
{
    if (std::exchange(over, true))
        return;
    stop();
    if (const std::chrono::milliseconds rest = untilHeard(); rest > 0ms)
        QTimer::singleShot(rest, Qt::PreciseTimer, this, [this, status] { end(status); });
    else
        end(status);
}

void Errand::endAtOnce(ExitStatus status)
{
    if (!std::exchange(over, true))
        stop();
    end(status);
}

void Errand::end(ExitStatus status)
{
    if (!std::exchange(hasEnded, true))
        emit ended(status);
}
