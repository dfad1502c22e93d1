// SPDX-License-Identifier: MIT
#pragma once

#include "fail_test.h"

#include <QByteArray>
#include <QFile>
#include <QProcess>

/// Before each datagram of the game.
inline const QByteArray header(4, '\xFF');

/// An answer to "status".
inline const QByteArray table("map: mp_toujane\n"
                              "num score ping guid   name            lastmsg address               qport rate\n"
                              "--- ----- ---- ------ --------------- ------- --------------------- ----- -----\n"
                              "  0     7   55 632819 ^1Band^2Aid^7              50 192.0.2.7:524           804 25000\n"
                              "  3    -1 CNCT      0 Unknown command \"x\"^7     0 loopback               1804  5000\n"
                              "\n");

#ifdef Q_OS_LINUX
/// How often the process was woken up or took the processor by itself.
inline qint64 wakes(const QProcess &process)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(process.processId()));
    if (!status.open(QIODevice::ReadOnly))
        failTest(QStringLiteral("no process"));
    qint64 count = 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.contains("ctxt_switches:"))
            count += line.split('\t').last().toLongLong();
    }
    return count;
}

/// A file that the system has about the process.
inline QByteArray fileOf(const QProcess &process, const QString &name)
{
    QFile file(QStringLiteral("/proc/%1/%2").arg(process.processId()).arg(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
#endif
