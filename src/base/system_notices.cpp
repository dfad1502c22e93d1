// SPDX-License-Identifier: MIT
#include "system_notices.h"

#include <QSocketNotifier>

#include <atomic>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <csignal>
#endif

namespace {

std::atomic<bool> hasBeenInterrupted = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler sets it");

} // namespace

bool SystemNotices::isInterrupted()
{
    return hasBeenInterrupted;
}

#ifdef Q_OS_WIN

namespace {

std::atomic<SystemNotices *> listener = nullptr;

// In a thread of the system's.
BOOL WINAPI takeControl(DWORD)
{
    hasBeenInterrupted = true;
    if (SystemNotices *notices = listener)
        QMetaObject::invokeMethod(notices, &SystemNotices::interrupted, Qt::QueuedConnection);
    return TRUE;
}

} // namespace

SystemNotices::SystemNotices()
{
    listener = this;
    SetConsoleCtrlHandler(takeControl, TRUE);
}

SystemNotices::~SystemNotices()
{
    SetConsoleCtrlHandler(takeControl, FALSE);
    listener = nullptr;
}

void SystemNotices::watchOutput() {}

#else

namespace {

std::array<int, 2> wire{-1, -1}; // a signal handler may write, and the event loop sleeps until something can be read

void takeSignal(int)
{
    const int before = errno;
    hasBeenInterrupted = true;
    [[maybe_unused]] const auto written = write(wire[1], "!", 1);
    errno = before;
}

void listenTo(int signal)
{
    struct sigaction action = {}; // without SA_RESTART: reading the standard input ends, too
    action.sa_handler = takeSignal;
    sigemptyset(&action.sa_mask);
    sigaction(signal, &action, nullptr);
}

} // namespace

SystemNotices::SystemNotices()
{
    if (pipe(wire.data()) != 0)
        return;
    for (const int end : wire) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    signalled = std::make_unique<QSocketNotifier>(wire[0], QSocketNotifier::Read);
    connect(signalled.get(), &QSocketNotifier::activated, this, [this] {
        char mark = 0;
        while (read(wire[0], &mark, 1) == 1) {
        }
        emit interrupted();
    });
    listenTo(SIGINT);
    listenTo(SIGTERM);
}

SystemNotices::~SystemNotices()
{
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    signalled.reset();
    for (int &end : wire) {
        close(end);
        end = -1;
    }
}

// The writing end of a pipe can be read when there is an error: that nobody has the other end any more.
void SystemNotices::watchOutput()
{
    struct stat about = {};
    if (fstat(STDOUT_FILENO, &about) != 0 || !S_ISFIFO(about.st_mode))
        return;
    output = std::make_unique<QSocketNotifier>(STDOUT_FILENO, QSocketNotifier::Read);
    connect(output.get(), &QSocketNotifier::activated, this, [this] {
        output->setEnabled(false);
        emit outputclosed();
    });
}

#endif
