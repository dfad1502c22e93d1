// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// When the next console command may go out, so that the strictest server hears it and no late answer is taken for its
/// own. It looks at no clock: times are milliseconds since any moment that stays the same.
class CommandPace final {
public:
    /// A command has gone out, one that asks for the list of players or another. It counts as sent at the `time` that
    /// is told next.
    void sent(bool isForList);
    void time(qint64 now);

    /// When the last command was sent.
    [[nodiscard]] qint64 last() const { return lastSent; }
    /// How long a strict server will not hear another command; 0 when the clock has been set back meanwhile.
    [[nodiscard]] qint64 untilHeard(qint64 now) const;
    /// The same, and for a list also how long an answer to an earlier question may still come. Less than 0 when both
    /// are past; more than `latestAnswer` when the clock has been set back.
    [[nodiscard]] qint64 untilTurn(qint64 now, bool isForList) const;

    /// Until when answers to earlier lists may come.
    [[nodiscard]] qint64 stale() const { return staleUntil; }
    /// The last list was answered once for all, so what counts is what counted before it.
    void setStale(qint64 until) { staleUntil = until; }
    /// Answers to earlier lists do not come any more.
    void forgetLists();

private:
    qint64 lastSent = 0;
    qint64 staleUntil = 0;
    bool isUntimed = false; ///< something has been sent, and the time not been told since
    bool isListUntimed = false;
};
