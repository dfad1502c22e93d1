// SPDX-License-Identifier: MIT
#include "command_pace.h"

#include "pace.h"

#include <algorithm>
#include <utility>

void CommandPace::sent(bool isForList)
{
    isUntimed = true;
    isListUntimed = isListUntimed || isForList;
}

void CommandPace::time(qint64 now)
{
    if (std::exchange(isUntimed, false))
        lastSent = now;
    if (std::exchange(isListUntimed, false))
        staleUntil = now + latestAnswer;
}

qint64 CommandPace::untilHeard(qint64 now) const
{
    const qint64 left = lastSent + betweenCommands - now;
    return left > betweenCommands ? 0 : std::max<qint64>(left, 0);
}

qint64 CommandPace::untilTurn(qint64 now, bool isForList) const
{
    return std::max(lastSent + betweenCommands, isForList ? staleUntil : 0) - now;
}

void CommandPace::forgetLists()
{
    staleUntil = 0;
    isListUntimed = false;
}
