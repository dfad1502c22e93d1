// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QList>
#include <QString>

/// The colour that the game gives to the text behind a caret and this digit, 0 to 9. That of 8 is another one on each
/// map; this is one of them.
[[nodiscard]] QColor chatColour(int digit);

/// The one of two grounds on which text of that colour can be read: a dark one where it may be.
[[nodiscard]] QColor chatGround(const QColor &text);

/// A stretch of a line of chat that is seen in one colour.
struct ChatRun {
    QString text;
    QColor colour;

    bool operator==(const ChatRun &) const = default;
};

/// What is seen of a line of chat: its text without the colour codes, white until the first of them.
[[nodiscard]] QList<ChatRun> chatRuns(QStringView line);
