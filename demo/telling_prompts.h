// SPDX-License-Identifier: MIT
#pragma once

#include "base/prompts.h"

#include <QTextStream>

/// Prompts for a run that nobody watches: a box is printed on standard error and closed at once, and counts as a
/// failure, since nothing should come up on the walk.
class TellingPrompts final : public Prompts {
public:
    Answer ask(const Box &box) override
    {
        tell(box.title, box.text);
        return answerOfClosing(box.buttons);
    }
    QString askText(const QString &prompt, const QString &title, const QString &) override
    {
        return tell(title, prompt);
    }
    QString askFileName(const QString &title, const QString &preset, const QString &) override
    {
        return tell(title, preset);
    }
    void close() override {}

    [[nodiscard]] bool haveTold() const { return told; }

private:
    QString tell(const QString &title, const QString &text)
    {
        told = true;
        QTextStream(stderr) << "A box came up: " << title << ": " << text << Qt::endl;
        return {};
    }

    bool told = false;
};
