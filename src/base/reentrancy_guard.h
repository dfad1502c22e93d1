// SPDX-License-Identifier: MIT
#pragma once

#include "clock.h"
#include "prompts.h"

#include <QDate>

/// Keeps a handler that waits from being entered a second time meanwhile. Who is held up by a box that has come up
/// since he entered does not wait, so the next one is let in; and on another day he is, because a wait that runs across
/// midnight does not end.
class ReentrancyGuard final {
public:
    /// What the handler's owner keeps between its calls.
    class Door final {
    private:
        friend class ReentrancyGuard;
        QDate since;             ///< when the last one who is still inside entered
        qsizetype openBoxes = 0; ///< when he did
        int entries = 0;
    };

    ReentrancyGuard(Door &door_, const Clock &clock, const Prompts &prompts)
        : door(door_),
          before(door_),
          entered(door_.since != clock.now().date() || prompts.openCount() > door_.openBoxes)
    {
        if (!entered)
            return;
        door.since = clock.now().date();
        door.openBoxes = prompts.openCount();
        entry = ++door.entries;
    }
    ~ReentrancyGuard()
    {
        if (!entered)
            return;
        door.since = before.since;
        door.openBoxes = before.openBoxes;
    }
    Q_DISABLE_COPY_MOVE(ReentrancyGuard)

    /// False when somebody is inside already.
    explicit operator bool() const { return entered; }
    /// False when somebody has been let in since.
    [[nodiscard]] bool isLatest() const { return door.entries == entry; }

private:
    Door &door;
    const Door before;
    const bool entered;
    int entry = 0;
};
