// SPDX-License-Identifier: MIT
#pragma once

#include "fail_test.h"
#include "practice/practice_server.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

/// The program as its own process, in a folder of its own, that connects to a practice server by itself.
struct StartedProgram {
    /// `settings`: what the settings file holds besides.
    explicit StartedProgram(const QByteArray &settings = {})
    {
        if (!server.listen())
            failTest(QStringLiteral("no server"));
        QFile file(folder.filePath(QStringLiteral("molvark.ini")));
        if (!file.open(QIODevice::WriteOnly))
            failTest(QStringLiteral("no settings"));
        file.write("[options]\r\nautoconnect=1\r\nautoconnectserv=127.0.0.1\r\nautoconnectport=" +
                   QByteArray::number(server.port()) + "\r\nautoconnectrcon=practice\r\n" + settings);
#ifdef Q_OS_WIN
        // The one platform that is in the program there.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("windows"));
        process.setProcessEnvironment(environment);
#endif
        process.setWorkingDirectory(folder.path());
    }

    /// Starts `program` and waits until it has connected.
    void start(const QString &program)
    {
        process.start(program, QStringList());
        if (!QTest::qWaitFor([this] { return server.commands().contains("fdir *.cfg"); }, 60'000))
            failTest(QStringLiteral("not connected"));
    }

    PracticeServer server;
    QTemporaryDir folder;
    QProcess process;
};
