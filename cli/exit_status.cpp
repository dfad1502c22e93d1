// SPDX-License-Identifier: MIT
#include "exit_status.h"

#include "ledger/verdict.h"

#include <QList>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

// A line may also begin with the name of a player who calls himself like this; it does not end as a file's name does.
bool findsNoMap(QStringView line)
{
    constexpr QLatin1StringView words("Can't find map ");
    if (!line.startsWith(words, Qt::CaseInsensitive))
        return false;
    const QStringView map = line.sliced(words.size()).trimmed();
    return !map.contains(u' ') || map.endsWith("bsp"_L1, Qt::CaseInsensitive);
}

/// How a server says that it could not do something: a line that begins like this, and in which the rest follows.
struct Complaint {
    QLatin1StringView begin;
    QLatin1StringView rest;
    bool isOfCopy = false; ///< also said when an earlier copy of the command has done it
};

constexpr std::array<Complaint, 7> complaints{{
    {"couldn't exec "_L1, ""_L1},
    {"'"_L1, "' is not a valid value for dvar '"_L1},
    {"Can't create dvar '"_L1, "already exist"_L1},
    {"Can't ban user, GUID is 0"_L1, ""_L1},
    {"This user ("_L1, ") is already banned"_L1, true},
    {"Player "_L1, " is not on the server"_L1, true},
    {"Server is not running"_L1, ""_L1},
}};

// Behind a player's name, which can be any of these, stands the code of the usual colour.
bool complains(QStringView line, int copies)
{
    const auto fits = [line](const Complaint &each) {
        return line.startsWith(each.begin, Qt::CaseInsensitive) &&
               line.sliced(each.begin.size()).contains(each.rest, Qt::CaseInsensitive);
    };
    const auto found = std::ranges::find_if(complaints, fits);
    return found != complaints.end() && !line.contains("^7"_L1) && !(found->isOfCopy && copies > 1);
}

// The line begins with the name of the variable, which the command has to name.
bool keepsVariable(QStringView command, QStringView line)
{
    constexpr std::array<QLatin1StringView, 4> ends{" is read only."_L1, " is write protected."_L1,
                                                    " is cheat protected."_L1, " is read protected"_L1};
    const auto found =
        std::ranges::find_if(ends, [line](auto each) { return line.endsWith(each, Qt::CaseInsensitive); });
    if (found == ends.end())
        return false;
    const QStringView name = line.chopped(found->size());
    return !name.isEmpty() && !name.contains(u' ') && command.contains(name, Qt::CaseInsensitive);
}

bool isNotDone(QStringView command, QStringView line, int copies)
{
    const Verdict verdict = verdictOfReply(command, line);
    if (verdict == Verdict::NoSuchPlayer)
        return copies == 1; // the first copy may have kicked him
    return verdict == Verdict::UnknownCommand || findsNoMap(line) || complains(line, copies) ||
           keepsVariable(command, line);
}

} // namespace

ExitStatus statusOfReply(QStringView command, QStringView reply, int copies)
{
    const Verdict verdict = verdictOfReply(command, reply);
    if (verdict == Verdict::PasswordRefused)
        return ExitStatus::PasswordRefused;
    // Usage is told in the first line; further down a listing may have such a word.
    const bool isRefused = verdict == Verdict::Usage || std::ranges::any_of(reply.split(u'\n'), [&](QStringView line) {
                               return isNotDone(command, line.trimmed(), copies);
                           });
    return isRefused ? ExitStatus::NotDone : ExitStatus::Done;
}
