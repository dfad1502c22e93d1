// SPDX-License-Identifier: MIT
#include "command_line.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

bool isBlank(QChar each)
{
    return each.isSpace() || each < u' ';
}

/// Takes blanks and comments off `rest`.
void skipBlanks(QStringView &rest)
{
    for (bool isSkipping = true; isSkipping;) {
        rest = rest.sliced(std::ranges::find_if_not(rest, isBlank) - rest.begin());
        const qsizetype end = rest.startsWith("/*"_L1) ? rest.indexOf("*/"_L1, 2) : 0;
        isSkipping = rest.startsWith("/*"_L1) || rest.startsWith("*/"_L1);
        if (isSkipping)
            rest = rest.sliced(std::max<qsizetype>(end, 0) + 2);
    }
}

/// How many characters the word at the beginning of `rest` has.
qsizetype wordSize(QStringView rest)
{
    qsizetype size = 0;
    const auto beginsComment = [rest](qsizetype at) {
        return rest.at(at) == u'/' && at + 1 < rest.size() && rest.at(at + 1) == u'*';
    };
    while (size < rest.size() && !isBlank(rest.at(size)) && rest.at(size) != u'"' && !beginsComment(size))
        ++size;
    return size;
}

} // namespace

qsizetype commandEnd(QStringView line)
{
    bool isQuoted = false;
    for (qsizetype at = 0; at < line.size(); ++at) {
        const QChar each = line.at(at);
        if (each == u'"')
            isQuoted = !isQuoted;
        else if ((each == u';' && !isQuoted) || each == u'\n' || each == u'\r')
            return at;
    }
    return line.size();
}

QList<QStringView> commandsOf(QStringView line)
{
    QList<QStringView> commands;
    for (QStringView rest = line; !rest.isEmpty();) {
        const qsizetype end = commandEnd(rest);
        commands.append(rest.first(end).trimmed());
        rest = rest.sliced(std::min(end + 1, rest.size()));
    }
    return commands;
}

QStringView takeWord(QStringView &rest)
{
    skipBlanks(rest);
    if (rest.startsWith(u'"')) {
        const qsizetype close = rest.indexOf(u'"', 1);
        const QStringView word = rest.sliced(1, (close < 0 ? rest.size() : close) - 1);
        rest = rest.sliced(close < 0 ? rest.size() : close + 1);
        return word;
    }
    const QStringView word = rest.first(wordSize(rest));
    rest = rest.sliced(word.size());
    return word;
}

QStringView takeCommandWord(QStringView &rest)
{
    const QStringView word = takeWord(rest);
    return word.startsWith(u'/') || word.startsWith(u'\\') ? word.sliced(1) : word;
}

QStringView commandWord(QStringView command)
{
    QStringView rest = command;
    return takeCommandWord(rest);
}

bool isSetter(QStringView word)
{
    constexpr std::array<QLatin1StringView, 4> setters{"set"_L1, "seta"_L1, "sets"_L1, "setu"_L1};
    return std::ranges::any_of(setters, [word](auto each) { return word.compare(each, Qt::CaseInsensitive) == 0; });
}

QStringView takeVariable(QStringView &rest)
{
    const QStringView word = takeCommandWord(rest);
    return isSetter(word) ? takeWord(rest) : word;
}

bool isPasswordVariable(QStringView name)
{
    return name.endsWith("password"_L1, Qt::CaseInsensitive);
}

bool asksForStatus(QStringView line)
{
    return std::ranges::any_of(commandsOf(line), [](QStringView command) {
        return commandWord(command).compare("status"_L1, Qt::CaseInsensitive) == 0;
    });
}
