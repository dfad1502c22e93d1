// SPDX-License-Identifier: MIT
#include "row.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <algorithm>
#include <ctime>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

struct Start {
    double milliseconds;
    double mebibytes;
};

qint64 nanoseconds()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return qint64{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
}

/// Starts the program with the libraries preloaded, one of, which ends it at its first painted window.
Start started(const QString &program, const QStringList &preloaded)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"LD_PRELOAD"_s, preloaded.join(u' '));
    environment.insert(u"FIRST_PAINT_SINCE"_s, QString::number(nanoseconds()));
    process.setProcessEnvironment(environment);
    process.start(program, QStringList());
    if (!process.waitForFinished() || process.exitCode() != EXIT_SUCCESS)
        qFatal("%s did not paint a window", qPrintable(program));
    const QList<QByteArray> figures = process.readAllStandardOutput().split(' ');
    return {figures.value(0).toDouble() / 1e6, figures.value(1).toDouble() / 1024};
}

double median(const QList<Start> &starts, double Start::*figure)
{
    QList<double> figures;
    std::ranges::transform(starts, std::back_inserter(figures), [figure](const Start &start) { return start.*figure; });
    std::ranges::sort(figures);
    return figures.at(figures.size() / 2);
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Processor time in clock ticks (hundredths of a second), and how often the process woke up (/proc).
std::pair<double, double> used(qint64 process)
{
    const QString folder = u"/proc/%1/"_s.arg(process);
    const QByteArray stat = contents(folder + u"stat"_s);
    const QList<QByteArray> fields = stat.sliced(stat.lastIndexOf(')') + 2).split(' ');
    const QByteArray status = contents(folder + u"status"_s);
    const qsizetype switches = status.indexOf("voluntary_ctxt_switches:") + 24;
    return {fields.value(11).toDouble() + fields.value(12).toDouble(),
            status.sliced(switches, status.indexOf('\n', switches) - switches).trimmed().toDouble()};
}

bool idle(const QString &program)
{
    QProcess process;
    process.start(program, QStringList());
    if (!process.waitForStarted())
        qFatal("%s cannot be started", qPrintable(program));
    QThread::sleep(3);
    const auto [ticks, wakes] = used(process.processId());
    QThread::sleep(10);
    const auto [ticksAfter, wakesAfter] = used(process.processId());
    process.kill();
    process.waitForFinished();
    return row("Idle for 10 s: processor time", (ticksAfter - ticks) * 10, 0, " ms") &
           row("Idle for 10 s: times the program woke up", wakesAfter - wakes, 0);
}

} // namespace

/// Arguments: the program, the empty window, the library that ends both at their first paint, and Qt's network library.
int main(int argc, char *argv[])
{
    if (argc != 5)
        qFatal("usage: bench_process PROGRAM EMPTY_WINDOW FIRST_PAINT NETWORK");
    const QString program = QString::fromLocal8Bit(argv[1]);
    const QString empty = QString::fromLocal8Bit(argv[2]);
    const QString firstPaint = QString::fromLocal8Bit(argv[3]);
    const QString network = QString::fromLocal8Bit(argv[4]);
    const QTemporaryDir folder; // without settings
    if (!QDir::setCurrent(folder.path()))
        return EXIT_FAILURE;

    QList<Start> ours;
    QList<Start> theirs;
    QList<Start> withNetwork;
    for (int round = 0; round < 41; ++round) {
        ours.append(started(program, {firstPaint}));
        theirs.append(started(empty, {firstPaint}));
        withNetwork.append(started(empty, {firstPaint, network}));
    }
    const double time = median(ours, &Start::milliseconds);
    const double memory = median(ours, &Start::mebibytes);
    bool kept = row("Start to the first painted window, against an empty window",
                    time / median(theirs, &Start::milliseconds), 2.5);
    kept &= row("Memory then, against an empty window", memory / median(theirs, &Start::mebibytes), 1.4);
    kept &= row("Memory then, against an empty window with Qt's network library",
                memory / median(withNetwork, &Start::mebibytes), 1.4);
    kept &= idle(program);
    return kept ? EXIT_SUCCESS : EXIT_FAILURE;
}
