// SPDX-License-Identifier: MIT
#include "log_line.h"
#include "practice_arguments.h"
#include "practice_server.h"

#include <QCoreApplication>
#include <QFile>
#include <QTimer>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

std::atomic<bool> stopAsked = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler sets it");

void askToStop(int)
{
    stopAsked = true;
}

void print(std::FILE *stream, const QString &text)
{
    std::fputs(text.toLocal8Bit().constData(), stream);
    std::fflush(stream); // whoever reads along through a pipe wants it now
}

void say(const QString &text)
{
    print(stdout, logLine(QTime::currentTime(), text) + u'\n');
}

int fail(const QString &text)
{
    print(stderr, u"molvark-practice: "_s + text + u'\n');
    return 1;
}

// What the server is going to do, for people; what is wrong with the recording comes in `fault`.
QString prepare(PracticeServer &server, const QString &recording, QString &fault)
{
    if (recording.isEmpty())
        return u"%1 players, map %2"_s.arg(QString::number(server.game().players().count()),
                                           server.game().dvars().value(u"mapname"_s));
    QFile file(recording);
    if (!file.open(QIODevice::ReadOnly)) {
        fault = u"cannot read %1: %2"_s.arg(recording, file.errorString());
        return {};
    }
    const Replay replay(file.readAll());
    if (!replay.fault().isEmpty())
        fault = u"cannot use %1: %2"_s.arg(recording, replay.fault());
    server.replay(replay);
    return u"%1 requests of a recording"_s.arg(replay.count());
}

int serve(const PracticeArguments &arguments)
{
    PracticeServer server(arguments.options);
    QString fault;
    const QString state = prepare(server, arguments.replay, fault);
    if (!fault.isEmpty())
        return fail(fault);
    const QString place = arguments.address.toString();
    if (!server.listen(arguments.address, arguments.port))
        return fail(u"cannot listen on %1 port %2: %3"_s.arg(place).arg(arguments.port).arg(server.errorString()));
    say(u"Listening on %1 port %2, %3."_s.arg(place).arg(server.port()).arg(state));
    QObject::connect(&server, &PracticeServer::happened, &server, say);

    QTimer second;
    QObject::connect(&second, &QTimer::timeout, &server, [&server, isGame = arguments.replay.isEmpty()] {
        server.forgetRequests(); // nobody asks for them here, and the program may run for weeks
        if (!isGame)
            return;
        for (const QString &event : server.game().tick())
            say(event);
    });
    second.start(1s);

    QTimer stop;
    QObject::connect(&stop, &QTimer::timeout, qApp, [] {
        if (stopAsked)
            QCoreApplication::quit();
    });
    stop.start(100ms);
    const int status = QCoreApplication::exec();
    say(u"Stopped."_s);
    return status;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"molvark-practice"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(MOLVARK_VERSION));
    std::signal(SIGINT, askToStop);
    std::signal(SIGTERM, askToStop);

    const PracticeArguments arguments = readPracticeArguments(QCoreApplication::arguments());
    if (!arguments.fault.isEmpty())
        return fail(arguments.fault + u" Try --help."_s);
    if (!arguments.notice.isEmpty()) {
        print(stdout, arguments.notice);
        return 0;
    }
    return serve(arguments);
}
