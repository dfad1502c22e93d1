// SPDX-License-Identifier: MIT
#include "reply_fit.h"

#include "rcon/command_line.h"
#include "rcon/refusals.h"
#include "verdict.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

// Lines that begin like this answer these commands alone.
struct Beginning {
    QLatin1StringView text;
    QLatin1StringView word;
};
constexpr std::array<Beginning, 3> beginnings{
    {{"num score ping "_L1, "status"_L1}, {"execing "_L1, "exec"_L1}, {"Directory of "_L1, "dir"_L1}}};

constexpr std::array<QLatin1StringView, 6> silentWords{"say"_L1, "tell"_L1, "set"_L1, "seta"_L1, "sets"_L1, "setu"_L1};
constexpr std::array<QLatin1StringView, 6> tellingWords{"status"_L1, "serverinfo"_L1, "dvarlist"_L1,
                                                        "dir"_L1,    "fdir"_L1,       "cmdlist"_L1};
constexpr std::array<QLatin1StringView, 3> beforeSlot{"Client "_L1, "Bad client slot: "_L1, "Bad slot number: "_L1};

bool isSame(QStringView text, QStringView other)
{
    return text.compare(other, Qt::CaseInsensitive) == 0;
}

template <std::size_t size>
bool isOneOf(const std::array<QLatin1StringView, size> &words, QStringView word)
{
    return std::ranges::any_of(words, [word](auto each) { return word.compare(each, Qt::CaseInsensitive) == 0; });
}

bool takeBeginning(QStringView &line, QLatin1StringView beginning)
{
    if (!line.startsWith(beginning, Qt::CaseInsensitive))
        return false;
    line = line.sliced(beginning.size());
    return true;
}

} // namespace

AskedFor::AskedFor(QStringView command)
{
    QStringView rest = command;
    word = takeCommandWord(rest).toString();
    argument = takeWord(rest).toString();
    if (!argument.isEmpty() && isOneOf(silentWords, word))
        prints = Prints::Never;
    else if (isOneOf(tellingWords, word))
        prints = Prints::Always;
}

ReplyWords::ReplyWords(QStringView reply)
{
    const QStringView line = firstLine(reply);
    isEmpty = line.isEmpty();
    isForAll = !isEmpty && isRefusal(reply);
    if (!isEmpty && !isForAll)
        readLine(line);
}

void ReplyWords::readLine(QStringView line)
{
    QStringView rest = line;
    const bool beginsWithIt =
        (line.startsWith(u'"') && line.contains(R"(" is:)"_L1)) || line.endsWith(" is read protected"_L1);
    if (takeBeginning(rest, "Unknown command "_L1) || takeBeginning(rest, "usage: "_L1) || beginsWithIt) {
        word = takeWord(rest).toString();
    } else if (takeBeginning(rest, "map: "_L1)) {
        word = rest.startsWith(u'<') ? QString() : u"status"_s; // "map: <none>" is said to "map"
    } else {
        for (const Beginning &each : beginnings) {
            if (line.startsWith(each.text, Qt::CaseInsensitive))
                word = each.word;
        }
        for (const QLatin1StringView each : beforeSlot) {
            if (takeBeginning(rest, each))
                argument = takeWord(rest).toString();
        }
    }
}

ReplyFit ReplyWords::fitTo(const AskedFor &command) const
{
    if (isForAll)
        return ReplyFit::Open;
    if (isEmpty)
        return command.prints == AskedFor::Prints::Always ? ReplyFit::Excludes : ReplyFit::Open;
    if (!word.isEmpty())
        return isSame(word, command.word) ? ReplyFit::Names : ReplyFit::Excludes;
    if (!argument.isEmpty())
        return isSame(argument, command.argument) ? ReplyFit::Names : ReplyFit::Excludes;
    return command.prints == AskedFor::Prints::Never ? ReplyFit::Excludes : ReplyFit::Open;
}
