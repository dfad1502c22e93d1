// SPDX-License-Identifier: MIT
#pragma once

#include "prompts.h"

#include <QList>

class QDialog;

/// Prompts as dialogs on the screen, over the program's active window.
class DialogPrompts final : public Prompts {
public:
    void close() override;

protected:
    Answer showBox(const Box &box) override;
    QString showTextQuestion(const QString &prompt, const QString &title, const QString &preset,
                             const BelowLine &below) override;
    QString showFileQuestion(const QString &title, const QString &preset, const QString &suffix) override;
    QString showReadQuestion(const QString &title, const QString &filter) override;

private:
    [[nodiscard]] bool accepted(QDialog &dialog);

    QList<QDialog *> dialogs;
    bool closed = false;
};
