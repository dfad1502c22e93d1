// SPDX-License-Identifier: MIT
#include <cstdlib>

// The module of another version of the program, of which nothing but the version may be asked.

extern "C" {
const char *molvarkBookVersion();
void molvarkOpenBookStore();
}

const char *molvarkBookVersion()
{
    return "0.1";
}

void molvarkOpenBookStore()
{
    std::abort();
}
