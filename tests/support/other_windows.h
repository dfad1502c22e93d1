// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QWidget>

#include <algorithm>

/// The visible window of that name; null when there is none.
inline QWidget *otherWindow(const QString &name)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto found = std::ranges::find_if(
        windows, [&name](const QWidget *window) { return window->objectName() == name && window->isVisible(); });
    return found == windows.end() ? nullptr : *found;
}
