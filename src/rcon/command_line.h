// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QStringView>

/// How the game reads what is typed at its console: several commands on a line, with semicolons between them, words in
/// quotes, comments, and a slash before the first word as the game's own console wants it. Letter case is nothing.

/// Where the first command of `line` ends: at a semicolon or a line end outside quotes.
[[nodiscard]] qsizetype commandEnd(QStringView line);

/// All of them, without the blanks around them.
[[nodiscard]] QList<QStringView> commandsOf(QStringView line);

/// Takes the first word off `rest`, with the blanks and comments before it. Quotes around a word are no part of it, and
/// one behind it begins the next. A comment without an end hides nothing: the safer reading is that there is none. Of
/// one with a semicolon in it only the end is left.
QStringView takeWord(QStringView &rest);

/// Takes the first word off `rest`, without a slash.
QStringView takeCommandWord(QStringView &rest);

/// The same of a command that is left as it is.
[[nodiscard]] QStringView commandWord(QStringView command);

/// "set" and its like, behind which a variable is named.
[[nodiscard]] bool isSetter(QStringView word);

/// Takes the name of the variable off `rest`, which is a command that sets one; of another command its first word.
QStringView takeVariable(QStringView &rest);

/// Whether the value of a variable of this name is never shown or kept.
[[nodiscard]] bool isPasswordVariable(QStringView name);

/// Whether the answer to one of the commands is the list of players.
[[nodiscard]] bool asksForStatus(QStringView line);
