// SPDX-License-Identifier: MIT
#include "verdict.h"

#include "rcon/command_line.h"
#include "rcon/refusals.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

bool begins(QStringView text, QLatin1StringView with)
{
    return text.startsWith(with, Qt::CaseInsensitive);
}

// Behind a player's name stands the code of the usual colour, in quotes the word that was typed.
bool closesName(QStringView behind)
{
    const qsizetype close = behind.startsWith(u'"') ? behind.indexOf(u'"', 1) : -1;
    return behind.sliced(close + 1).contains("^7"_L1);
}

// A line may also begin with the name of a player who calls himself like this.
bool says(QStringView line, QLatin1StringView words)
{
    if (!begins(line, words))
        return false;
    const QStringView behind = line.sliced(words.size()).trimmed();
    return behind.isEmpty() || ((behind.startsWith(u'"') || behind.startsWith(u':')) && !closesName(behind));
}

bool namesNoPlayer(QStringView line)
{
    const bool isInactive = begins(line, "Client "_L1) && line.endsWith("is not active"_L1, Qt::CaseInsensitive);
    return isInactive || says(line, "Bad client slot"_L1) || says(line, "Bad slot number"_L1);
}

// Any name may follow, so in the answer to another command a player may stand there who calls himself like this.
bool findsNoBan(QStringView command, QStringView line)
{
    return begins(commandWord(command), "unban"_L1) && begins(line, "no banned user has name"_L1);
}

bool tellsUsage(QStringView command, QStringView line)
{
    if (says(line, "usage"_L1))
        return true;
    const QStringView word = commandWord(command);
    if (word.isEmpty() || !line.startsWith(word, Qt::CaseInsensitive))
        return false;
    const QStringView behind = line.sliced(word.size());
    return behind.contains(u'<') && !closesName(behind) && (behind.front().isSpace() || behind.front() == u'<');
}

} // namespace

QString verdictWord(Verdict verdict)
{
    constexpr std::array<QLatin1StringView, 12> words{
        ""_L1,
        "acknowledged"_L1,
        "answered"_L1,
        "password refused"_L1,
        "unknown command"_L1,
        "no such player"_L1,
        "usage"_L1,
        "silent"_L1,
        "late"_L1,
        "cut"_L1,
        "too long"_L1,
        "unreadable"_L1,
    };
    return words.at(static_cast<std::size_t>(verdict));
}

bool isGood(Verdict verdict)
{
    return verdict == Verdict::Acknowledged || verdict == Verdict::Answered;
}

QStringView firstLine(QStringView text)
{
    const QStringView rest = text.trimmed();
    const qsizetype end = rest.indexOf(u'\n');
    return end < 0 ? rest : rest.first(end).trimmed();
}

Verdict verdictOfReply(QStringView command, QStringView reply)
{
    const QStringView line = firstLine(reply);
    if (line.isEmpty())
        return Verdict::Acknowledged;
    if (isRefusal(reply))
        return Verdict::PasswordRefused;
    if (says(line, "Unknown command"_L1))
        return Verdict::UnknownCommand;
    if (namesNoPlayer(line) || findsNoBan(command, line))
        return Verdict::NoSuchPlayer;
    return tellsUsage(command, line) ? Verdict::Usage : Verdict::Answered;
}
