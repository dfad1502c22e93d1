// SPDX-License-Identifier: MIT
#pragma once

#include "word_completion.h"

#include <QObject>
#include <QStringList>

#include <functional>

class ComboBox;
class CompletionPopup;
class ConsoleWords;
class QKeyEvent;

/// Completes the console line, on Ctrl+Space or when three letters have been typed. It shows what there is and leaves
/// the line as it is until the person chooses. Return is the line's in any case, and closes the list.
class ConsoleCompletion final : public QObject {
    Q_OBJECT

public:
    /// `history_` are the lines that may be offered again, the oldest first.
    ConsoleCompletion(ComboBox &line_, ConsoleWords &words_, std::function<QStringList()> history_);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    enum class Opens { No, ByTyping, Anyway };

    void takeEdit();
    void update(Opens opens);
    void show(const QList<Completion> &found);
    void close();
    [[nodiscard]] bool isOpen() const;
    [[nodiscard]] bool filterLine(QEvent &event);
    [[nodiscard]] bool takeKey(const QKeyEvent &key);
    [[nodiscard]] bool stepBy(int key);
    void choose(const Completion &choice);

    ComboBox &line;
    ConsoleWords &words;
    const std::function<QStringList()> history;
    CompletionPopup *popup = nullptr; ///< built when it is first shown
    TypedWord word;                   ///< that is being completed
    qsizetype lengthBefore = 0;       ///< of the line, before the last edit
    qsizetype dismissedAt = -1;       ///< where the word begins for which the list was closed
    bool isTyping = false;            ///< it is the person who changes the text
    bool isChoosing = false;
    bool isWanted = false; ///< the person has asked for the list
};
