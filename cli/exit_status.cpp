// SPDX-License-Identifier: MIT
#include "exit_status.h"

#include "ledger/verdict.h"

#include <QList>

#include <algorithm>

namespace {

bool isNotDone(Verdict verdict)
{
    return verdict == Verdict::UnknownCommand || verdict == Verdict::NoSuchPlayer;
}

} // namespace

ExitStatus statusOfReply(QStringView command, QStringView reply)
{
    const Verdict verdict = verdictOfReply(command, reply);
    if (verdict == Verdict::PasswordRefused)
        return ExitStatus::PasswordRefused;
    // Usage is told in the first line; further down a listing may have such a word.
    const bool isRefused = isNotDone(verdict) || verdict == Verdict::Usage ||
                           std::ranges::any_of(reply.split(u'\n'), [command](QStringView line) {
                               return isNotDone(verdictOfReply(command, line));
                           });
    return isRefused ? ExitStatus::NotDone : ExitStatus::Done;
}
