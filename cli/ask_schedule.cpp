// SPDX-License-Identifier: MIT
#include "ask_schedule.h"

#include <algorithm>

void AskSchedule::begin(int copies, Time timeout_)
{
    if (copiesSent > 1)
        staleUntil = *lastSent + Time{latestAnswer};
    timeout = timeout_;
    copiesLeft = copies;
    copiesSent = 0;
    firstCame.reset();
    isComplete = false;
}

void AskSchedule::sent(Time now)
{
    lastSent = now;
    --copiesLeft;
    ++copiesSent;
}

void AskSchedule::came(Time now, bool isWhole)
{
    if (!firstCame)
        firstCame = now;
    lastCame = now;
    isComplete = isWhole;
}

AskSchedule::Step AskSchedule::step(Time now) const
{
    if (now < due())
        return Step::Wait;
    if (firstCame)
        return Step::Answered;
    return copiesLeft > 0 ? Step::Send : Step::Silent;
}

AskSchedule::Time AskSchedule::due() const
{
    if (firstCame)
        return completeAt();
    return copiesLeft > 0 ? sendAt() : *lastSent + timeout;
}

bool AskSchedule::isEndless() const
{
    return firstCame && !isComplete && lastCame + restOfReply > *firstCame + longestReply;
}

AskSchedule::Time AskSchedule::untilHeard(Time now) const
{
    return lastSent ? std::max(*lastSent + betweenCopies - now, Time{}) : Time{};
}

AskSchedule::Time AskSchedule::sendAt() const
{
    if (!lastSent)
        return Time::min();
    const Time pause = copiesSent > 0 ? std::max(betweenCopies, timeout) : betweenCopies;
    return std::max(*lastSent + pause, staleUntil);
}

AskSchedule::Time AskSchedule::completeAt() const
{
    return isComplete ? lastCame : std::min(lastCame + restOfReply, *firstCame + longestReply);
}
