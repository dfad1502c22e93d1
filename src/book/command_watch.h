// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QList>
#include <QString>

#include <chrono>
#include <functional>

/// What is known by now of a command that has gone out.
struct CommandVerdict {
    int number = 0;       ///< of the command, as it went out
    QString word;         ///< the ledger's
    bool isTaken = false; ///< the server has done it, even if that was learnt late
};

/// Finds out what becomes of certain commands: which number a command went out under is told by its text, and what the
/// verdict on it is by that number.
class CommandWatch final {
public:
    using Time = std::chrono::microseconds;

    struct Listener {
        std::function<void()> sent;                                ///< when it has gone out; may be empty
        std::function<void(const CommandVerdict &verdict)> judged; ///< at each new verdict
    };

    /// `command` is about to be sent. When it does not go out soon it never will.
    void expect(const QString &command, Time now, const Listener &listener);
    /// The command has had its time. If it has not gone out, it is not expected any more.
    void giveUp(const QString &command);
    /// A copy of a command has gone out.
    void sent(int number, const QString &command, Time now);
    void judged(const CommandVerdict &verdict);

private:
    struct Expected {
        QString command;
        Time since{};
        Listener listener;
    };

    QList<Expected> expected;
    QHash<int, QList<Listener>> followed; ///< by number
    QList<int> numbers;                   ///< of those, the oldest first
    CommandVerdict latest;                ///< it may come before the news that the command has gone out
};
