// SPDX-License-Identifier: MIT
#include "refusals.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

// Longer ones first: one begins like another.
constexpr std::array<QLatin1StringView, 6> usualRefusals{
    "The server must set 'rcon_password' for clients to use 'rcon'."_L1,
    "No rconpassword set on the server."_L1,
    "Bad rconpassword."_L1,
    "Bad rconpassword"_L1,
    "Invalid password."_L1,
    "Bad rcon"_L1,
};

constexpr qsizetype longestRefusal = 4096; // of several copies, with much room

/// How many characters at the beginning of `text` refuse a password, in words that are always the same.
qsizetype usualLength(QStringView text)
{
    const auto found = std::ranges::find_if(
        usualRefusals, [text](QLatin1StringView refusal) { return text.startsWith(refusal, Qt::CaseInsensitive); });
    return found != usualRefusals.end() ? found->size() : 0;
}

/// In any words.
qsizetype refusalLength(QStringView text)
{
    if (const qsizetype usual = usualLength(text); usual > 0)
        return usual;
    const qsizetype end = text.indexOf(u'\n');
    const QStringView line = end < 0 ? text : text.first(end).trimmed();
    return line.endsWith(endOfRefusal, Qt::CaseInsensitive) ? line.size() : 0;
}

// Not all refusals end their line, and each copy of a command is refused.
bool consistsOf(QStringView reply, qsizetype (*length)(QStringView))
{
    if (reply.size() > longestRefusal)
        return false;
    QStringView rest = reply.trimmed();
    if (rest.isEmpty())
        return false;
    while (!rest.isEmpty()) {
        const qsizetype size = length(rest);
        if (size == 0)
            return false;
        rest = rest.sliced(size).trimmed();
    }
    return true;
}

} // namespace

bool isRefusal(QStringView reply)
{
    return consistsOf(reply, refusalLength);
}

bool isUsualRefusal(QStringView reply)
{
    return consistsOf(reply, usualLength);
}

QString withoutPassword(const QString &reply, const QString &password)
{
    if (password.isEmpty() || isUsualRefusal(reply))
        return reply;
    return QString(reply).replace(password, QString(password.size(), u'*'));
}
