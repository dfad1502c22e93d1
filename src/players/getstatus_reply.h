// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

/// One player line of the answer to "getstatus", all fields as text.
struct GetstatusRow {
    QString score;
    QString ping;
    QString name;

    bool operator==(const GetstatusRow &) const = default;
};

/// Reads the public answer to "getstatus": a word, the information string, and a line per player with score, ping and
/// the name in double quotes.
class GetstatusReply final {
public:
    explicit GetstatusReply(QString reply_);

    /// True when the information string is the last line.
    [[nodiscard]] bool isEmpty() const;
    /// The next player; nothing behind the last whole line. A name ends at its first double quote.
    /// Throws Overflow when it begins beyond position 32,767.
    [[nodiscard]] std::optional<GetstatusRow> next();

private:
    QString reply;
    qsizetype lineFeed; ///< position of the one that ends the line before the next player; -1 when there is none
};
