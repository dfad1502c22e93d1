// SPDX-License-Identifier: MIT
#pragma once

#include "base/prompts.h"

#include <QTextStream>

/// Prompts for a run that nobody watches: a box is printed on standard error and closed at once, and counts as a
/// failure, since nothing should come up on the walk.
class TellingPrompts final : public Prompts {
public:
    void close() override {}

    [[nodiscard]] bool haveTold() const { return told; }

protected:
    Answer showBox(const Box &box) override
    {
        tell(box.title, box.text);
        return answerOfClosing(box.buttons);
    }
    QString showTextQuestion(const QString &prompt, const QString &title, const QString &, const BelowLine &) override
    {
        return tell(title, prompt);
    }
    QString showFileQuestion(const QString &title, const QString &preset, const QString &) override
    {
        return tell(title, preset);
    }
    QString showReadQuestion(const QString &title, const QString &) override { return tell(title, {}); }

private:
    QString tell(const QString &title, const QString &text)
    {
        told = true;
        QTextStream(stderr) << "A box came up: " << title << ": " << text << Qt::endl;
        return {};
    }

    bool told = false;
};
