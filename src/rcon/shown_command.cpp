// SPDX-License-Identifier: MIT
#include "shown_command.h"

#include <QStringList>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

/// Where the first command of `line` ends: at a semicolon or a line end outside quotes.
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

bool isBlank(QChar each)
{
    return each.isSpace();
}

/// Takes the first word off `rest`, with the blanks before it. Quotes around a word are no part of it.
QStringView takeWord(QStringView &rest)
{
    rest = rest.sliced(std::ranges::find_if_not(rest, isBlank) - rest.begin());
    if (rest.startsWith(u'"')) {
        const qsizetype close = rest.indexOf(u'"', 1);
        const QStringView word = rest.sliced(1, (close < 0 ? rest.size() : close) - 1);
        rest = rest.sliced(close < 0 ? rest.size() : close + 1);
        return word;
    }
    const QStringView word = rest.first(std::ranges::find_if(rest, isBlank) - rest.begin());
    rest = rest.sliced(word.size());
    return word;
}

bool isSetter(QStringView word)
{
    constexpr std::array<QLatin1StringView, 4> setters{"set"_L1, "seta"_L1, "sets"_L1, "setu"_L1};
    return std::ranges::any_of(setters, [word](auto each) { return word.compare(each, Qt::CaseInsensitive) == 0; });
}

/// How many characters at the end of the command are the value of a password; 0 when it sets none.
qsizetype passwordValue(QStringView command)
{
    QStringView rest = command;
    QStringView variable = takeWord(rest);
    if (isSetter(variable))
        variable = takeWord(rest);
    return variable.endsWith("password"_L1, Qt::CaseInsensitive) ? rest.trimmed().size() : 0;
}

} // namespace

QString shownCommand(const QString &comm, const QString &password, const QString &instead)
{
    QString hidden = comm; // first of all, because the password may hold what parts commands
    if (!password.isEmpty())
        hidden.replace(password, u"***"_s);
    QString shown;
    for (QStringView rest = hidden; !rest.isEmpty();) {
        const qsizetype end = commandEnd(rest);
        const QStringView command = rest.first(end).trimmed();
        const qsizetype value = passwordValue(command);
        QString text = command.first(command.size() - value).trimmed().toString();
        if (value > 0 && !instead.isEmpty())
            text += u' ' + instead;
        shown += text + rest.sliced(end, std::min<qsizetype>(1, rest.size() - end)).toString();
        rest = rest.sliced(std::min(end + 1, rest.size()));
    }
    return shown;
}
