// SPDX-License-Identifier: MIT
#include "refusals.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

struct Refusal {
    QLatin1StringView words;
    RefusalKind kind;
};

// Longer ones first: one begins like another.
constexpr std::array<Refusal, 6> usualRefusals{{
    {"The server must set 'rcon_password' for clients to use 'rcon'."_L1, RefusalKind::Unset},
    {"No rconpassword set on the server."_L1, RefusalKind::Unset},
    {"Bad rconpassword."_L1, RefusalKind::Wrong},
    {"Bad rconpassword"_L1, RefusalKind::Wrong},
    {"Invalid password."_L1, RefusalKind::Wrong},
    {"Bad rcon"_L1, RefusalKind::Wrong},
}};

// This one names the variable first.
constexpr Refusal refusalAtEnd{"shorter than 8 characters."_L1, RefusalKind::TooShort};

// However it goes on.
constexpr Refusal refusalAtBegin{"The server must set 'rcon_password'"_L1, RefusalKind::Unset};

constexpr qsizetype longestRefusal = 4096; // of several copies, with much room

/// With which `text` begins, of those in words that are always the same.
const Refusal *usualRefusal(QStringView text)
{
    const auto found = std::ranges::find_if(
        usualRefusals, [text](const Refusal &refusal) { return text.startsWith(refusal.words, Qt::CaseInsensitive); });
    return found == usualRefusals.end() ? nullptr : &*found;
}

/// How many characters at the beginning of `text` such a refusal has.
qsizetype usualLength(QStringView text)
{
    const Refusal *found = usualRefusal(text);
    return found ? found->words.size() : 0;
}

bool endsAsRefusal(QStringView text)
{
    return text.endsWith(refusalAtEnd.words, Qt::CaseInsensitive);
}

/// In any words.
qsizetype refusalLength(QStringView text)
{
    if (const qsizetype usual = usualLength(text); usual > 0)
        return usual;
    const qsizetype end = text.indexOf(u'\n');
    const QStringView line = end < 0 ? text : text.first(end).trimmed();
    return endsAsRefusal(line) ? line.size() : 0;
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

std::optional<RefusalKind> refusalIn(QStringView reply)
{
    const QStringView text = reply.trimmed();
    if (const Refusal *found = usualRefusal(text))
        return found->kind;
    if (text.startsWith(refusalAtBegin.words, Qt::CaseInsensitive))
        return refusalAtBegin.kind;
    return endsAsRefusal(text) ? std::optional(refusalAtEnd.kind) : std::nullopt;
}

QString withoutPassword(const QString &reply, const QString &password)
{
    if (password.isEmpty() || isUsualRefusal(reply))
        return reply;
    return QString(reply).replace(password, QString(password.size(), u'*'));
}
