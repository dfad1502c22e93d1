// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// What a console line can be completed to: a word of it, or a whole line that was sent before.
struct Completion {
    enum class Kind { Command, Variable, Line };

    QString text;
    Kind kind = Kind::Command;

    bool operator==(const Completion &) const = default;
};

/// The word of a console line that is being typed. Where no word is known to the program it is the line as a whole.
struct TypedWord {
    enum class Wanted { CommandOrVariable, Variable, Line };

    Wanted wanted = Wanted::CommandOrVariable;
    qsizetype begin = 0; ///< in the line
    qsizetype end = 0;   ///< also behind the cursor, when that stands in the word
    QString typed;       ///< from its beginning to the cursor
};

/// The word of `line` in which the cursor stands or behind which it stands. A command or a variable stands at the
/// beginning, a variable behind the commands that set one.
[[nodiscard]] TypedWord typedWord(const QString &line, qsizetype cursor);

/// What `word` of `line` can become, the likeliest first: `words` that begin as it does, lines of the history that
/// begin as the line does, the newest first, and `words` that hold it. Letter case does not count. Of nothing
/// typed, the lines come first.
[[nodiscard]] QList<Completion> completions(const TypedWord &word, const QString &line, const QList<Completion> &words,
                                            const QStringList &history);

/// Puts the words in the order in which they are shown, commands before variables, each of them once: of two that
/// differ in letter case alone the first stays.
void sortWords(QList<Completion> &words);
