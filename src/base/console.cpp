// SPDX-License-Identifier: MIT
#include "console.h"

#include <QtGlobal>

#ifdef Q_OS_WIN

#include <windows.h>

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

#else

void joinConsole() {}

#endif
