// SPDX-License-Identifier: MIT
#pragma once

#include "base/fault.h"

#include <QByteArray>

#include <cstdio>
#include <cstdlib>

#ifdef MOLVARK_FUZZ
/// What each target defines: hands `input` to one reader of outside text and holds the reader to what it promises.
void fuzz(const QByteArray &input);
#else
#include "replay.h"

// Without libFuzzer the targets are parts of one program, which is told which of them to replay.
static void fuzz(const QByteArray &input);
static const TestClass testClass(__BASE_FILE__, replay<fuzz>);
#endif

/// Ends the program when a promise is broken.
inline void require(bool kept, const char *promise)
{
    if (kept)
        return;
    std::fprintf(stderr, "Broken promise: %s\n", promise);
    std::abort();
}

/// The number of the fault that `action` throws; 0 when it throws none.
template <typename Action>
int faultOf(const Action &action)
{
    try {
        action();
        return 0;
    } catch (const Fault &fault) {
        return fault.number();
    }
}
