// SPDX-License-Identifier: MIT
#pragma once

#include "datagrams.h"
#include "practice_options.h"

#include <QHash>
#include <QHostAddress>

#include <chrono>
#include <optional>

/// How many requests a server puts up with; what comes faster it drops. What was dropped counts for nothing.
class RateLimit final {
public:
    explicit RateLimit(PracticeOptions::Rate rate_) : rate(rate_) {}

    /// Whether the server looks at a request of this kind. `now` is the time since any moment that stays the same.
    [[nodiscard]] bool admits(Request::Kind kind, const QHostAddress &address, std::chrono::milliseconds now);

private:
    [[nodiscard]] bool admitsRcon(std::chrono::milliseconds now);
    [[nodiscard]] bool admitsFrom(const QHostAddress &address, std::chrono::milliseconds now);

    PracticeOptions::Rate rate;
    std::optional<std::chrono::milliseconds> lastRcon;
    QHash<QHostAddress, std::chrono::milliseconds> paidUntil; ///< by those who are ahead of time
};
