// SPDX-License-Identifier: MIT
#include "errand.h"

void Errand::finish(ExitStatus status)
{
    if (over)
        return;
    over = true;
    stop();
    emit ended(status);
}
