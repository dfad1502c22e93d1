// SPDX-License-Identifier: MIT
#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <ctime>

/// Preloaded into a program it prints, when the first window has been painted, the nanoseconds since the moment named
/// in FIRST_PAINT_SINCE (CLOCK_MONOTONIC) and the resident memory (KiB, /proc), and ends the program.
class FirstPaint final : public QObject {
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && !painting) {
            painting = true;
            QTimer::singleShot(0, watched, [] { report(); }); // all of the window is painted in the same turn
        }
        return false;
    }

private:
    static void report()
    {
        timespec now{};
        clock_gettime(CLOCK_MONOTONIC, &now);
        const qint64 since = qEnvironmentVariable("FIRST_PAINT_SINCE").toLongLong();
        QFile status(QStringLiteral("/proc/self/status"));
        if (!status.open(QIODevice::ReadOnly))
            std::_Exit(EXIT_FAILURE);
        const QByteArray text = status.readAll();
        const qsizetype resident = text.indexOf("VmRSS:") + 6;
        std::printf("%lld %s\n", static_cast<long long>(now.tv_sec) * 1'000'000'000 + now.tv_nsec - since,
                    text.sliced(resident, text.indexOf("kB", resident) - resident).trimmed().constData());
        std::fflush(stdout);
        std::_Exit(EXIT_SUCCESS);
    }

    bool painting = false;
};

static void watch()
{
    static FirstPaint filter;
    QCoreApplication::instance()->installEventFilter(&filter);
}
Q_COREAPP_STARTUP_FUNCTION(watch)
