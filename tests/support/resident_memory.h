// SPDX-License-Identifier: MIT
#pragma once

#include "fail_test.h"

#include <QFile>

#include <unistd.h>

/// How much of this process lies in memory at the moment, in KiB.
inline qint64 residentKiB()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        failTest(QStringLiteral("/proc/self/statm cannot be read"));
    return file.readAll().split(' ').value(1).toLongLong() * sysconf(_SC_PAGESIZE) / 1024;
}
