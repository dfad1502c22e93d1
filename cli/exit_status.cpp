// SPDX-License-Identifier: MIT
#include "exit_status.h"

#include "ledger/verdict.h"

#include <QList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool isNotDone(Verdict verdict)
{
    return verdict == Verdict::UnknownCommand || verdict == Verdict::NoSuchPlayer;
}

// A line may also begin with the name of a player who calls himself like this; it does not end as a file's name does.
bool findsNoMap(QStringView line)
{
    constexpr QLatin1StringView words("Can't find map ");
    if (!line.startsWith(words, Qt::CaseInsensitive))
        return false;
    const QStringView map = line.sliced(words.size()).trimmed();
    return !map.contains(u' ') || map.endsWith("bsp"_L1, Qt::CaseInsensitive);
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
                               return isNotDone(verdictOfReply(command, line)) || findsNoMap(line.trimmed());
                           });
    return isRefused ? ExitStatus::NotDone : ExitStatus::Done;
}
