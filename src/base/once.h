// SPDX-License-Identifier: MIT
#pragma once

#include "clock.h"

#include <QDate>

/// Keeps a handler that waits for the server from being entered a second time meanwhile, since two would read each
/// other's replies. On another day it lets a second one in: a wait that runs across midnight does not end.
class Once final {
public:
    /// `since_` is the handler's own, null while nobody is inside.
    Once(QDate &since_, const Clock &clock) : since(since_), entered(since != clock.now().date())
    {
        if (entered)
            since = clock.now().date();
    }
    ~Once()
    {
        if (entered)
            since = {};
    }
    Q_DISABLE_COPY_MOVE(Once)

    /// False when somebody is inside already.
    explicit operator bool() const { return entered; }

private:
    QDate &since;
    bool entered;
};
