// SPDX-License-Identifier: MIT
#include "median.h"
#include "row.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <ctime>

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

double medianMemory(const QList<Start> &starts)
{
    QList<double> figures;
    for (const Start &start : starts)
        figures.append(start.mebibytes);
    return median(figures);
}

/// Of two programs that were started in turn: the machine is the same for both starts of a pair.
double medianRatio(const QList<Start> &ours, const QList<Start> &theirs)
{
    QList<double> ratios;
    for (qsizetype pair = 0; pair < ours.size(); ++pair)
        ratios.append(ours.at(pair).milliseconds / theirs.at(pair).milliseconds);
    return median(ratios);
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// What stands between the two texts.
QByteArray between(const QByteArray &text, const QByteArray &before, char after)
{
    const qsizetype start = text.indexOf(before) + before.size();
    return text.sliced(start, text.indexOf(after, start) - start).trimmed();
}

/// Processor time in clock ticks (hundredths of a second), and how often any thread of the process woke up (/proc).
std::pair<double, double> used(qint64 process)
{
    const QString folder = u"/proc/%1/"_s.arg(process);
    const QByteArray stat = contents(folder + u"stat"_s);
    const QList<QByteArray> fields = stat.sliced(stat.lastIndexOf(')') + 2).split(' ');
    double wakes = 0;
    for (const QString &thread : QDir(folder + u"task"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QByteArray status = contents(folder + u"task/"_s + thread + u"/status"_s);
        wakes += between(status, "\nvoluntary_ctxt_switches:", '\n').toDouble();
    }
    return {fields.value(11).toDouble() + fields.value(12).toDouble(), wakes};
}

/// A program that runs as long as this lives and may not end before.
class Running final {
public:
    explicit Running(const QString &program, const QStringList &arguments = {})
    {
        process.start(program, arguments);
        if (!process.waitForStarted())
            qFatal("%s cannot be started", qPrintable(program));
    }
    ~Running()
    {
        process.kill();
        process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(Running)

    [[nodiscard]] qint64 id() const { return process.processId(); }

    void pass(int milliseconds)
    {
        if (process.waitForFinished(milliseconds))
            qFatal("%s has ended", qPrintable(process.program()));
    }

    /// What it has printed once this text is among it.
    QByteArray outputWith(const QByteArray &text)
    {
        while (!output.contains(text)) {
            if (!process.waitForReadyRead())
                qFatal("%s did not print %s", qPrintable(process.program()), text.constData());
            output += process.readAllStandardOutput();
        }
        return output;
    }

private:
    QProcess process;
    QByteArray output;
};

bool idle(const QByteArray &state, Running &program, double mostMilliseconds, double mostWakes)
{
    program.pass(5'000); // the progress window goes two seconds after the last answer
    const auto [ticks, wakes] = used(program.id());
    program.pass(10'000);
    const auto [ticksAfter, wakesAfter] = used(program.id());
    return row(state + ", idle for 10 s: processor time", (ticksAfter - ticks) * 10, mostMilliseconds, " ms") &
           row(state + ", idle for 10 s: times the program woke up", wakesAfter - wakes, mostWakes);
}

/// `emptyMemory` is that of an empty window, in MiB.
bool idleWithoutServer(const QString &path, double emptyMemory)
{
    Running program(path);
    bool kept = idle("Started", program, 10, 21); // the text cursor in the box for the server blinks and is painted
    const QByteArray status = contents(u"/proc/%1/status"_s.arg(program.id()));
    kept &= row("Started, idle: memory, against an empty window",
                between(status, "VmRSS:", 'k').toDouble() / 1024 / emptyMemory, 1.5);
    return kept;
}

/// The settings under which the program connects to this port when it starts.
void writeSettings(const QByteArray &port, const QByteArray &preferences = {})
{
    QFile settings(u"molvark.ini"_s);
    if (!settings.open(QIODevice::WriteOnly) ||
        settings.write("[options]\r\nautoconnect=1\r\nautoconnectserv=127.0.0.1\r\nautoconnectrcon=practice\r\n"
                       "autoconnectport=" +
                       port + "\r\n" + preferences) < 0)
        qFatal("the settings cannot be written");
}

bool idleOnServer(const QString &path, const QString &practice)
{
    Running server(practice, {u"--port"_s, u"0"_s});
    writeSettings(between(server.outputWith("players"), " port ", ','));
    Running program(path);
    (void)server.outputWith("rcon fdir *.cfg"); // the last question of connecting
    return idle("Connected", program, 0, 0);
}

/// The processor time of ten seconds, of which one in a hundred may be taken.
bool atWork(const QByteArray &what, Running &program)
{
    const double before = used(program.id()).first;
    program.pass(10'000);
    return row(what + ", for 10 s: processor time", (used(program.id()).first - before) * 10, 100, " ms");
}

bool waitingForSilentServer(const QString &path, const QString &practice)
{
    Running server(practice, {u"--port"_s, u"0"_s, u"--silent"_s});
    writeSettings(between(server.outputWith("players"), " port ", ','));
    Running program(path);
    program.pass(2'000); // the window is built and the first copy sent; the fifth goes out ten seconds later
    return atWork("Waiting for a silent server", program);
}

bool refreshing(const QString &path, const QString &practice)
{
    Running server(practice, {u"--port"_s, u"0"_s, u"--players"_s, u"20"_s});
    writeSettings(between(server.outputWith("players"), " port ", ','), "autoqplayer=1\r\nautoqplayerint=5\r\n");
    Running program(path);
    (void)server.outputWith("rcon fdir *.cfg");
    program.pass(4'000); // the refresh begins with a list of its own
    return atWork("Refreshing the player list every five seconds", program);
}

} // namespace

/// Arguments: the program, the empty window, the library that ends both at their first paint, Qt's network library, and
/// the practice server.
int main(int argc, char *argv[])
{
    if (argc != 6)
        qFatal("usage: bench_process PROGRAM EMPTY_WINDOW FIRST_PAINT NETWORK PRACTICE");
    const QString program = QString::fromLocal8Bit(argv[1]);
    const QString empty = QString::fromLocal8Bit(argv[2]);
    const QString firstPaint = QString::fromLocal8Bit(argv[3]);
    const QString network = QString::fromLocal8Bit(argv[4]);
    const QString practice = QString::fromLocal8Bit(argv[5]);
    const QTemporaryDir folder; // without settings
    if (!QDir::setCurrent(folder.path()))
        qFatal("there is no folder to run in");
    const QString preloaded = u"./first_paint"_s; // LD_PRELOAD has no way to name a path with blanks
    if (!QFile::link(firstPaint, preloaded))
        qFatal("%s cannot be linked to", qPrintable(firstPaint));

    QList<Start> ours;
    QList<Start> theirs;
    QList<Start> withNetwork;
    for (int round = 0; round < 41; ++round) {
        ours.append(started(program, {preloaded}));
        theirs.append(started(empty, {preloaded}));
        withNetwork.append(started(empty, {preloaded, network}));
    }
    const double memory = medianMemory(ours);
    const double emptyMemory = medianMemory(theirs);
    bool kept = row("Start to the first painted window, against an empty window", medianRatio(ours, theirs), 2.6);
    kept &= row("Memory then, against an empty window", memory / emptyMemory, 1.4);
    kept &=
        row("Memory then, against an empty window with Qt's network library", memory / medianMemory(withNetwork), 1.4);
    kept &= idleWithoutServer(program, emptyMemory);
    kept &= idleOnServer(program, practice);
    kept &= waitingForSilentServer(program, practice);
    kept &= refreshing(program, practice);
    return kept ? EXIT_SUCCESS : EXIT_FAILURE;
}
