// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// Which message the cycler says when: counts the minutes and walks through a set's messages, over and over. Both go on
/// where they were when the cycler is stopped and started again.
class MessageCycle final {
public:
    /// The next minute sends.
    void sendNext() { minutes = 0; }
    /// So does it when the count has passed `interval`, from 1 to 10 minutes, and would never come to it.
    void catchUp(double interval)
    {
        if (interval >= 1 && interval <= 10 && minutes > interval)
            minutes = 0;
    }
    /// Counts one minute. True when a message is due: at first, and then every `interval` minutes.
    [[nodiscard]] bool minutePassed(double interval);
    /// The message that is due, out of a set's positions: empty ones are passed over, and behind the last the walk
    /// begins anew. Nothing when all are empty.
    [[nodiscard]] std::optional<QString> next(const QStringList &positions);
    /// How many minutes must pass until one is due; 0 when none will be.
    [[nodiscard]] int minutesToNext(double interval) const;
    /// The message is said.
    void advance() { ++cyclenext; }
    /// It has not been said after all: it is due again.
    void putBack() { --cyclenext; }

private:
    qint16 minutes = 0;
    qsizetype cyclenext = 0;
};

/// The minutes that a typed interval stands for: "3 min" is 3. What does not begin with a number is 0, and so is one
/// that is beyond 16 bits with something behind it: neither comes round.
[[nodiscard]] double minutesOf(const QString &interval);

/// Whether `message` holds the placeholder, in any letter case.
[[nodiscard]] bool hasPlaceholder(const QString &message, const QString &placeholder);

/// `message` with its first `placeholder`, in any letter case, replaced by `value`; further ones stay.
[[nodiscard]] QString fillPlaceholder(QString message, const QString &placeholder, const QString &value);

/// The word for a friendly-fire mode as the server states it, "0" to "3"; `other` for anything else.
[[nodiscard]] QString friendlyFireWord(const QString &mode, const QString &other);
