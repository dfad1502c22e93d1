// SPDX-License-Identifier: MIT
#include "median.h"
#include "row.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <ctime>

using namespace Qt::StringLiterals;

namespace {

qint64 nanoseconds()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return qint64{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
}

/// A port of this machine at which datagrams come in.
class Port final {
public:
    Port()
    {
        sockaddr_in here{};
        here.sin_family = AF_INET;
        here.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof here;
        auto *address = reinterpret_cast<sockaddr *>(&here);
        if (bind(socket, address, size) != 0 || getsockname(socket, address, &size) != 0)
            qFatal("there is no port");
        port = ntohs(here.sin_port);
    }
    ~Port() { close(socket); }
    Q_DISABLE_COPY_MOVE(Port)

    [[nodiscard]] int number() const { return port; }

    /// Waits for a datagram; when it came.
    [[nodiscard]] qint64 arrival() const
    {
        pollfd wait{socket, POLLIN, 0};
        if (poll(&wait, 1, 10'000) != 1)
            qFatal("no datagram has come");
        const qint64 now = nanoseconds();
        std::array<char, 2048> datagram{};
        if (recv(socket, datagram.data(), datagram.size(), 0) < 0)
            qFatal("the datagram cannot be read");
        return now;
    }

private:
    int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    int port = 0;
};

/// The milliseconds from the start of a program to its first datagram.
double started(const QString &program, const QStringList &arguments, const Port &port)
{
    QProcess process;
    const qint64 start = nanoseconds();
    process.start(program, arguments);
    const qint64 arrival = port.arrival();
    process.kill();
    process.waitForFinished();
    return static_cast<double>(arrival - start) / 1e6;
}

} // namespace

/// Arguments: the program without a window, and the empty program.
int main(int argc, char *argv[])
{
    if (argc != 3)
        qFatal("usage: bench_cli PROGRAM EMPTY_CORE");
    const QString program = QString::fromLocal8Bit(argv[1]);
    const QString empty = QString::fromLocal8Bit(argv[2]);
    const QTemporaryDir folder; // without settings
    if (!QDir::setCurrent(folder.path()))
        qFatal("there is no folder to run in");
    qputenv("MOLVARK_RCON_PASSWORD", "practice");
    const Port port;
    const QString number = QString::number(port.number());
    const QStringList question{u"--server"_s, u"127.0.0.1:"_s + number, u"status"_s};

    QList<double> ours;
    QList<double> theirs;
    QList<double> more;
    for (int round = 0; round < 61; ++round) { // in turn, so that the machine is the same for both of a pair
        ours.append(started(program, question, port));
        theirs.append(started(empty, {number}, port));
        more.append(ours.last() - theirs.last());
    }
    std::fprintf(stderr, "to the first datagram: %.2f ms, an empty program %.2f ms\n", median(ours), median(theirs));
    return row("Without a window: start to the first datagram, beyond an empty Qt Core program", median(more), 15,
               " ms")
               ? EXIT_SUCCESS
               : EXIT_FAILURE;
}
