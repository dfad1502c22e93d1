// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QString>

#include <chrono>

/// What a server has said of one of its variables.
struct ReadValue {
    QString value;
    QString stock;  ///< the value after a fresh start; null when it was not told
    QString domain; ///< the values that it takes, in the server's words; null when they were not told
    std::chrono::microseconds at{};
};

/// The values of variables as they come by in what a server prints, whoever asked for them: the lines of "dvarlist" and
/// the answers to a variable's bare name. A line that may lack a character does not count, and passwords are not kept.
class ReadValues final {
public:
    /// The text of a datagram, of which the character behind the last one may have been lost on the way.
    void take(const QString &text, bool mayLackLast, std::chrono::microseconds at);
    /// Another reply begins: a line that is not at its end has none.
    void beginReply();
    void forget();

    /// Null when none has been read under this name, in any letter case.
    [[nodiscard]] const ReadValue *find(const QString &name) const;

private:
    void takeLine(QStringView line, std::chrono::microseconds at);
    void takeListed(QStringView line, std::chrono::microseconds at);
    void takeDescribed(QStringView line, std::chrono::microseconds at);
    void keep(QStringView name, const ReadValue &value);

    QHash<QString, ReadValue> values; ///< by the name in lower case
    QString begun;                    ///< of a line that is not at its end
    bool isDamaged = false;           ///< a character of it may be missing
    QString described;                ///< the variable that the line before described
};
