// SPDX-License-Identifier: MIT
#pragma once

#include "fail_test.h"

#include <QtTest>

/// Makes a file's tests known to the program that is told which to run: the name is that of the file, without "tst_".
struct TestClass final {
    using Run = int (*)(int argc, char *argv[]);
    TestClass(const char *file, Run run);
};

/// A test that is left by `failTest` is the last one of its class.
template <typename Application, typename Tests>
int runTests(int argc, char *argv[])
{
    Application application(argc, argv);
    Tests tests;
    try {
        return QTest::qExec(&tests, argc, argv);
    } catch (const TestFailed &) {
        return 1;
    }
}

/// Stands where another test has its main function; for tests that open no window.
#define GUILESS_TEST(Tests) static const TestClass testClass(__FILE__, runTests<QCoreApplication, Tests>);
