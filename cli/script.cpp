// SPDX-License-Identifier: MIT
#include "script.h"

#include "arguments.h"
#include "base/wire_text.h"
#include "rcon/request_size.h"
#include "wrong_usage.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr double longestSleep = 86400; // seconds

bool endsLine(QChar each)
{
    return each == u'\n' || each == u'\r' || each.isNull();
}

/// Throws when `command`, which stands at `place`, cannot be sent as it is.
void check(const QString &command, const QString &place)
{
    const QByteArray bytes = toAnsi(command);
    if (command.trimmed().isEmpty())
        throw WrongUsage(place + u" is empty."_s);
    if (std::ranges::any_of(command, endsLine))
        throw WrongUsage(place + u" holds a line end, and a server reads one line."_s);
    if (bytes.size() > longestRequest)
        throw WrongUsage(place + u" has %1 bytes, and a server reads %2."_s.arg(bytes.size()).arg(longestRequest));
    if (!isSendable(command))
        throw WrongUsage(place + u" has characters that a server cannot read."_s);
}

constexpr QLatin1StringView sleepWord("sleep");

bool isSleep(const QString &line)
{
    return line.startsWith(sleepWord, Qt::CaseInsensitive) &&
           (line.size() == sleepWord.size() || line.at(sleepWord.size()).isSpace());
}

ScriptStep stepOf(const QString &line, const QString &place)
{
    if (isSleep(line))
        return {ScriptStep::Kind::Sleep,
                {},
                readSeconds(place + u": sleep"_s, line.sliced(sleepWord.size()).trimmed(), 0, longestSleep)};
    check(line, place);
    return {ScriptStep::Kind::Command, line, {}};
}

} // namespace

QList<ScriptStep> readScript(const QString &text)
{
    QList<ScriptStep> steps;
    int number = 0;
    for (const QStringView each : QStringView(text).split(u'\n')) {
        ++number;
        const QString line = each.trimmed().toString();
        if (!line.isEmpty() && !line.startsWith(u'#'))
            steps.append(stepOf(line, u"Line %1"_s.arg(number)));
    }
    return steps;
}

QList<ScriptStep> stepsOf(const QStringList &commands)
{
    QList<ScriptStep> steps;
    for (const QString &command : commands) {
        check(command, commands.size() == 1 ? u"The command"_s : u"Command %1"_s.arg(steps.size() + 1));
        steps.append({ScriptStep::Kind::Command, command, {}});
    }
    return steps;
}

bool mayBeCut(const QString &command, const QString &password)
{
    return requestSize(command, password) > longestRequest;
}
