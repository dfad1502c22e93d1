// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QtTest>

/// Gives the program's activation to `window`, or with a null pointer takes it away, as another program does.
inline void setActiveWindow(QWidget *window)
{
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    QApplication::setActiveWindow(window);
    QT_WARNING_POP
}

/// False when `window` does not become the active one. Qt's own function is content when its owner is active.
inline bool becomesActive(const QWidget *window)
{
    return QTest::qWaitFor([window] { return QApplication::activeWindow() == window; });
}
