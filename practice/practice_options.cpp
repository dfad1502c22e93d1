// SPDX-License-Identifier: MIT
#include "practice_options.h"

PracticeOptions PracticeOptions::cod2()
{
    PracticeOptions options;
    options.rate = Rate::HalfSecond;
    options.refusal = QStringLiteral("Invalid password.");
    options.loseAtBorder = true;
    options.shortLines = true;
    options.percentDots = true;
    options.comments = true;
    options.plainSay = true;
    options.readProtected = true;
    options.cmdlist = true;
    options.guidBans = true;
    options.renames = true;
    return options;
}
