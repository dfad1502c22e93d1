// SPDX-License-Identifier: MIT
#pragma once

#include <QtTest>

#include <stdexcept>

/// Leaves a test that cannot go on; its message has been reported already.
class TestFailed final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Fails the running test and leaves it: what is missing here would be missed at every further step. To be called from
/// the test function or what it calls, not from an event handler.
[[noreturn]] inline void failTest(const QString &message, const char *file = __builtin_FILE(),
                                  int line = __builtin_LINE())
{
    QTest::qFail(qPrintable(message), file, line);
    throw TestFailed(message.toStdString());
}
