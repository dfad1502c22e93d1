// SPDX-License-Identifier: MIT
#pragma once

#include "rcon/pace.h"

#include <chrono>
#include <optional>

/// When the copies of a question go out, when its answer is complete, and when none will come. It looks at no clock: it
/// is told the time, which is since any moment that stays the same, and what happened.
class AskSchedule final {
public:
    using Time = std::chrono::milliseconds;
    enum class Step {
        Wait,
        Send,
        Answered,
        Silent,
    };

    static constexpr Time betweenCopies{betweenCommands};
    /// The pieces of one reply come within milliseconds; while a map loads, its log has gaps of up to 80.
    static constexpr Time restOfReply{400};
    /// A reply that goes on longer than this is not waited for.
    static constexpr Time longestReply{15'000};
    /// A new question. `timeout` is the wait for the answer to each copy.
    void begin(int copies, Time timeout_);
    void sent(Time now);
    /// A datagram of the answer has come; `isWhole` when nothing more can follow.
    void came(Time now, bool isWhole);

    /// What is to be done now.
    [[nodiscard]] Step step(Time now) const;
    /// When that is to be asked again, if nothing happens before.
    [[nodiscard]] Time due() const;
    /// Whether a copy is out, so that what comes may answer it.
    [[nodiscard]] bool isAsked() const { return copiesSent > 0; }
    /// Whether the answer went on for longer than anybody waits.
    [[nodiscard]] bool isEndless() const;
    /// How long a strict server may not hear another command.
    [[nodiscard]] Time untilHeard(Time now) const;
    /// How many have gone out.
    [[nodiscard]] int copies() const { return copiesSent; }

private:
    [[nodiscard]] Time sendAt() const;
    [[nodiscard]] Time completeAt() const;

    Time timeout{};
    int copiesLeft = 0;
    int copiesSent = 0;
    std::optional<Time> lastSent; ///< of whatever question
    Time staleUntil{};            ///< until then an answer may be to a copy of the question before
    std::optional<Time> firstCame;
    Time lastCame{};
    bool isComplete = false;
};
