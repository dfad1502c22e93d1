// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringView>

/// What the words of an answer say about which command it answers.
enum class ReplyFit {
    Names,   ///< this one
    Open,    ///< nothing
    Excludes ///< not this one
};

/// A command, as far as its answer can be known by it.
struct AskedFor {
    AskedFor() = default;
    explicit AskedFor(QStringView command);

    QString word;     ///< the first
    QString argument; ///< the second
    enum class Prints { Perhaps, Never, Always } prints = Prints::Perhaps;
};

/// What the first line of an answer says it is about.
class ReplyWords final {
public:
    explicit ReplyWords(QStringView reply);

    [[nodiscard]] ReplyFit fitTo(const AskedFor &command) const;

private:
    void readLine(QStringView line);

    QString word; ///< of the command; empty when it is not told
    QString argument;
    bool isEmpty = true;
    bool isForAll = false; ///< any command can be answered like this
};
