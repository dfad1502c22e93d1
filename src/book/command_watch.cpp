// SPDX-License-Identifier: MIT
#include "command_watch.h"

#include <utility>

namespace {

// A command that has to wait until the server listens again is held back for two and a quarter seconds at most.
constexpr std::chrono::seconds longestHeldBack(3);
constexpr qsizetype mostFollowed = 200;

} // namespace

void CommandWatch::expect(const QString &command, Time now, const Listener &listener)
{
    expected.append({command, now, listener});
}

void CommandWatch::giveUp(const QString &command)
{
    expected.removeIf([&command](const Expected &each) { return each.command == command; });
}

void CommandWatch::sent(int number, const QString &command, Time now)
{
    if (followed.contains(number))
        return; // another copy
    expected.removeIf([now](const Expected &each) { return now - each.since > longestHeldBack; });
    QList<Listener> listeners;
    for (const Expected &each : std::as_const(expected)) {
        if (each.command == command)
            listeners.append(each.listener);
    }
    if (listeners.isEmpty())
        return;
    expected.removeIf([&command](const Expected &each) { return each.command == command; });
    followed.insert(number, listeners);
    numbers.append(number);
    if (numbers.size() > mostFollowed)
        followed.remove(numbers.takeFirst());
    for (const Listener &each : std::as_const(listeners)) {
        if (each.sent)
            each.sent();
    }
    if (latest.number == number)
        judged(latest);
}

void CommandWatch::judged(const CommandVerdict &verdict)
{
    latest = verdict;
    const QList<Listener> listeners = followed.value(verdict.number);
    for (const Listener &each : listeners)
        each.judged(verdict);
}
