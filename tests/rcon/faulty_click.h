// SPDX-License-Identifier: MIT
#pragma once

#include "leaks_of_qt.h"

#include <QPushButton>
#include <QtTest>

/// Clicks a button whose handler ends in a fault, by the mouse: so the fault ends where those of handlers end.
inline void clickIntoAFault(QPushButton *button)
{
    const LeaksOfQt leaks;
    QTest::mouseClick(button, Qt::LeftButton);
}
