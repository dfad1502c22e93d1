// SPDX-License-Identifier: MIT
#pragma once

#include "clock.h"

#include <QDate>

/// Keeps a handler that waits from being entered a second time meanwhile. On another day it lets a second one in: a
/// wait that runs across midnight does not end.
class ReentrancyGuard final {
public:
    /// What the handler's owner keeps between its calls.
    class Door final {
    public:
        /// True while somebody who has entered today is inside.
        [[nodiscard]] bool isTaken(const Clock &clock) const { return since == clock.now().date(); }

    private:
        friend class ReentrancyGuard;
        QDate since;
    };

    ReentrancyGuard(Door &door_, const Clock &clock) : door(door_), entered(!door_.isTaken(clock))
    {
        if (entered)
            door.since = clock.now().date();
    }
    ~ReentrancyGuard()
    {
        if (entered)
            door.since = {};
    }
    Q_DISABLE_COPY_MOVE(ReentrancyGuard)

    /// False when somebody is inside already.
    explicit operator bool() const { return entered; }

private:
    Door &door;
    bool entered;
};
