// SPDX-License-Identifier: MIT
#include "console_history.h"

bool historyTakes(const QStringList &history, const QString &command)
{
    return !history.sliced(0, qMax<qsizetype>(history.size() - 1, 0)).contains(command);
}
