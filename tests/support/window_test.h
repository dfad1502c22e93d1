// SPDX-License-Identifier: MIT
#pragma once

#include "base/application.h"

#include <QRegularExpression>
#include <QtTest>

/// Fails the running test on any warning but those in which the displayless platform says what it cannot do.
inline void failOnWarnings()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral("^(?!This plugin does not support )")));
}

/// The main function of a test that opens windows: like QTEST_MAIN, but with the program's own application object, so
/// that faults nobody trapped end in a box as they do in the program.
#define WINDOW_TEST_MAIN(TestClass)                                                                                    \
    int main(int argc, char *argv[])                                                                                   \
    {                                                                                                                  \
        Application application(argc, argv);                                                                           \
        QApplication::setQuitOnLastWindowClosed(false);                                                                \
        TestClass test;                                                                                                \
        QTEST_SET_MAIN_SOURCE_PATH                                                                                     \
        return QTest::qExec(&test, argc, argv);                                                                        \
    }
