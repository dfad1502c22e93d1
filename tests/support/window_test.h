// SPDX-License-Identifier: MIT
#pragma once

#include "base/application.h"
#include "test_class.h"

#include <QRegularExpression>

/// Fails the running test on any warning but those in which the displayless platform says what it cannot do.
inline void failOnWarnings()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral("^(?!This plugin does not support )")));
}

/// The program's own application object, so that faults nobody trapped end in a box as they do in the program.
class WindowApplication final {
public:
    WindowApplication(int &argc, char *argv[]) : application(argc, argv)
    {
        QApplication::setQuitOnLastWindowClosed(false);
    }

private:
    Application application;
};

/// Stands where another test has its main function; for tests that open windows.
#define WINDOW_TEST(Tests) static const TestClass testClass(__FILE__, runTests<WindowApplication, Tests>);
