// SPDX-License-Identifier: MIT
#pragma once

#include "base/prompts.h"

#include <QList>
#include <QStringList>

#include <functional>

/// Stands in for the person: notes every box and answers it at once, by the queued answers or else with the box's
/// first button. A test takes the boxes that it expects; what is left over is its failure.
class ScriptedPrompts final : public Prompts {
public:
    void close() override { closed = true; }

    /// The boxes since the last call, in order.
    QList<Box> takeBoxes() { return std::exchange(boxes, {}); }

    QList<Answer> answers;           ///< to the coming boxes
    QStringList lines;               ///< answers to the coming questions for a text or a file name
    QList<QStringList> asked;        ///< title, prompt, suffix or filter, and preset of each such question
    std::function<void()> whileOpen; ///< happens while a box is open
    bool closed = false;

protected:
    Answer showBox(const Box &box) override
    {
        if (closed)
            return answerOfClosing(box.buttons);
        boxes.append(box);
        if (whileOpen)
            whileOpen();
        if (!answers.isEmpty())
            return answers.takeFirst();
        return box.buttons == BoxButtons::YesNo ? Answer::Yes : Answer::Ok;
    }
    QString showTextQuestion(const QString &prompt, const QString &title, const QString &preset,
                             const BelowLine &) override
    {
        return askLine({title, prompt, preset});
    }
    QString showFileQuestion(const QString &title, const QString &preset, const QString &suffix) override
    {
        return askLine({title, suffix, preset});
    }
    QString showReadQuestion(const QString &title, const QString &filter) override
    {
        return askLine({title, filter, {}});
    }

private:
    QString askLine(const QStringList &question)
    {
        if (closed)
            return {};
        asked.append(question);
        return lines.isEmpty() ? QString() : lines.takeFirst();
    }

    QList<Box> boxes;
};
