// SPDX-License-Identifier: MIT
#pragma once

#include "prompts.h"

#include <QList>

class QDialog;

/// Prompts as dialogs on the screen, over the program's active window.
class DialogPrompts final : public Prompts {
public:
    Answer ask(const Box &box) override;
    QString askText(const QString &prompt, const QString &title, const QString &preset) override;
    QString askFileName(const QString &title, const QString &preset, const QString &suffix) override;
    void close() override;

private:
    [[nodiscard]] bool accepted(QDialog &dialog);

    QList<QDialog *> open;
    bool closed = false;
};
