// SPDX-License-Identifier: MIT
#include "console.h"

#include <QtGlobal>

#ifdef Q_OS_WIN

#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <cerrno>
#include <cstdio>

void joinConsole()
{
    // What has been led into a file or a pipe stays there.
    const bool needsOutput = GetFileType(GetStdHandle(STD_OUTPUT_HANDLE)) == FILE_TYPE_UNKNOWN;
    const bool needsError = GetFileType(GetStdHandle(STD_ERROR_HANDLE)) == FILE_TYPE_UNKNOWN;
    if ((!needsOutput && !needsError) || !AttachConsole(ATTACH_PARENT_PROCESS))
        return;
    if (needsOutput)
        std::freopen("CONOUT$", "w", stdout);
    if (needsError)
        std::freopen("CONOUT$", "w", stderr);
}

void prepareStandardStreams()
{
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
}

bool isOutputClosed()
{
    return errno == EPIPE || errno == EINVAL;
}

#else

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

void joinConsole() {}

void prepareStandardStreams()
{
    std::signal(SIGPIPE, SIG_IGN);
    // The lowest free number is taken; of a file that can only be read, writing to it fails as it would have.
    for (int stream = open("/dev/null", O_RDONLY); stream >= 0; stream = open("/dev/null", O_RDONLY)) {
        if (stream > STDERR_FILENO) {
            close(stream);
            return;
        }
    }
}

bool isOutputClosed()
{
    return errno == EPIPE || errno == EBADF;
}

#endif
