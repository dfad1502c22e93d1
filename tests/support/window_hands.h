// SPDX-License-Identifier: MIT
#pragma once

#include "other_windows.h"
#include "program.h"

#include <QListWidget>

/// One of the program's other windows, as a person uses it.
struct WindowHands {
    /// By its item in a menu.
    void open(const Program &program, const QString &item, const QString &name)
    {
        program.trigger(item);
        window = otherWindow(name);
        if (!window)
            failTest(QStringLiteral("no window named ") + name);
    }
    template <typename Widget>
    [[nodiscard]] Widget *find(QAnyStringView name) const
    {
        auto *found = window->findChild<Widget *>(name.toString());
        if (!found)
            failTest(QStringLiteral("no control named ") + name.toString());
        return found;
    }
    /// What stands in a list.
    [[nodiscard]] QStringList rows(QAnyStringView list) const
    {
        QStringList texts;
        const auto *box = find<QListWidget>(list);
        for (int row = 0; row < box->count(); ++row)
            texts.append(box->item(row)->text());
        return texts;
    }

    QWidget *window = nullptr;
};
