// SPDX-License-Identifier: MIT
#pragma once

#include <QPushButton>
#include <QtTest>

// Qt is built without exceptions: when a fault passes through its code on the way to the application, it loses a few
// bytes of its own and does not give back the reference counts that it held. Those are no leaks of the program's.
#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>

extern "C" const char *__lsan_default_suppressions()
{
    return "leak:QtSharedPointer::ExternalRefCountData::getAndRef\n";
}
#endif

/// Clicks a button whose handler ends in a fault, by the mouse: so the fault ends where those of handlers end.
inline void clickIntoAFault(QPushButton *button)
{
#ifdef __SANITIZE_ADDRESS__
    const __lsan::ScopedDisabler notOurs;
#endif
    QTest::mouseClick(button, Qt::LeftButton);
}
