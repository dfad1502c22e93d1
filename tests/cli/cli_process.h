// SPDX-License-Identifier: MIT
#pragma once

#include "practice/practice_server.h"
#include "test_class.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include <chrono>

/// How a run of the program without a window has ended.
struct CliOutcome {
    int status = -1; ///< also when it has not ended by itself
    QByteArray output;
    QByteArray errors;
};

/// The program without a window, started in an empty folder of its own with the practice server's password in its
/// environment.
class CliProcess final {
public:
    CliProcess()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const auto &name : {QStringLiteral("DISPLAY"), QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("LANG"),
                                 QStringLiteral("LC_ALL")})
            environment.remove(name); // as under cron
        environment.insert(QStringLiteral("MOLVARK_RCON_PASSWORD"), QStringLiteral("practice"));
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(folder.path());
    }
    ~CliProcess()
    {
        process.kill();
        process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(CliProcess)

    void setPassword(const QString &password)
    {
        QProcessEnvironment environment = process.processEnvironment();
        if (password.isEmpty())
            environment.remove(QStringLiteral("MOLVARK_RCON_PASSWORD"));
        else
            environment.insert(QStringLiteral("MOLVARK_RCON_PASSWORD"), password);
        process.setProcessEnvironment(environment);
    }
    void writeFile(const QString &name, const QByteArray &contents) const
    {
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
            failTest(QStringLiteral("the file cannot be written"));
    }

    void start(const QStringList &arguments)
    {
        process.start(QStringLiteral(MOLVARK_CLI_PROGRAM), arguments);
        if (!process.waitForStarted())
            failTest(QStringLiteral("it cannot be started"));
    }
    /// The events of the servers in this process go on meanwhile.
    CliOutcome end()
    {
        QEventLoop wait;
        QObject::connect(&process, &QProcess::finished, &wait, &QEventLoop::quit);
        QTimer::singleShot(std::chrono::seconds(60), &wait, &QEventLoop::quit);
        if (process.state() != QProcess::NotRunning)
            wait.exec();
        if (process.state() != QProcess::NotRunning || process.exitStatus() != QProcess::NormalExit)
            return {-1, process.readAllStandardOutput(), process.readAllStandardError()};
        return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
    }
    CliOutcome run(const QStringList &arguments, const QByteArray &input = {})
    {
        start(arguments);
        process.write(input);
        process.closeWriteChannel();
        return end();
    }

    QProcess process;

private:
    QTemporaryDir folder;
};

/// A practice server, what it was asked and when, and the program that is told to ask it.
struct CliWithServer {
    explicit CliWithServer(const PracticeOptions &options = {}) : server(options)
    {
        if (!server.listen())
            failTest(QStringLiteral("no port for the server"));
        running.start();
        QObject::connect(&server, &PracticeServer::requested, &server, [this] { times.append(running.elapsed()); });
    }

    [[nodiscard]] QStringList withServer(const QStringList &arguments) const
    {
        return QStringList{QStringLiteral("--server"), QStringLiteral("127.0.0.1:%1").arg(server.port())} + arguments;
    }
    CliOutcome run(const QStringList &arguments, const QByteArray &input = {})
    {
        return cli.run(withServer(arguments), input);
    }
    /// The shortest time between two requests, in milliseconds.
    [[nodiscard]] qint64 leastApart() const
    {
        qint64 least = 1'000'000;
        for (qsizetype at = 1; at < times.size(); ++at)
            least = std::min(least, times.at(at) - times.at(at - 1));
        return least;
    }

    PracticeServer server;
    CliProcess cli;
    QList<qint64> times; ///< of the requests
    QElapsedTimer running;
};

/// The clocks of two processes and the way between them are not to the millisecond.
inline constexpr qint64 leastPause = 740;
