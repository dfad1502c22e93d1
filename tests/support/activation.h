// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>

/// Gives the program's activation to `window`, or with a null pointer takes it away, as another program does.
inline void setActiveWindow(QWidget *window)
{
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    QApplication::setActiveWindow(window);
    QT_WARNING_POP
}
