// SPDX-License-Identifier: MIT
#include "rotation_problems.h"

#include "base/short_text.h"
#include "base/wire_text.h"
#include "rcon/request_size.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString oddReason(const QString &odd)
{
    if (odd.startsWith("gametype "_L1))
        return quotedText(odd) + u" is followed by no map"_s;
    if (odd == u"gametype" || odd == u"map")
        return quotedText(odd) + u" is followed by nothing"_s;
    return quotedText(odd) + u": odd words, neither \"gametype\" nor \"map\" stands before them"_s;
}

QString gametypeReason(const QString &gametype)
{
    return u"unknown game type "_s + shortText(gametype) + u": the game has none of this name, only a mod could"_s;
}

QString mapReason(const QString &map, bool areServersMaps)
{
    return u"unknown map "_s + shortText(map) +
           (areServersMaps ? u": the server's list does not have it"_s
                           : u": the game has none of this name, and the server's list has not been read"_s);
}

/// What `words` hold that does not reach the server as it stands; empty when nothing does.
QString letterReason(const QString &words)
{
    if (words.contains(u'"'))
        return shortText(words) + u": a quotation mark ends the rotation"_s;
    if (!isSendable(words))
        return shortText(words) + u": has letters that cannot be sent"_s;
    return {};
}

} // namespace

QList<RotationProblem> rotationProblems(const QList<RotationRow> &rows, const KnownNames &known)
{
    QList<RotationProblem> problems;
    for (int number = 0; number < rows.size(); ++number) {
        const RotationRow &row = rows.at(number);
        const auto add = [&](const QString &reason) {
            if (!reason.isEmpty())
                problems.append({number, reason});
        };
        if (row.isOdd())
            add(oddReason(row.odd));
        if (!row.gametype.isEmpty() && !known.gametypes.contains(row.gametype.toLower()))
            add(gametypeReason(row.gametype));
        if (!row.isOdd() && !known.maps.contains(row.map.toLower()))
            add(mapReason(row.map, known.areServersMaps));
        for (const QString &words : {row.odd, row.namesGametype ? row.gametype : QString(), row.map})
            add(letterReason(words));
    }
    return problems;
}

qsizetype rotationSize(const QString &rotation, const QString &password)
{
    return requestSize(rotationCommand(rotation), password);
}

int firstUnreadRow(const QList<RotationRow> &rows, const QString &password)
{
    if (rotationSize(rotationText(rows), password) <= longestRequest)
        return -1;
    const qsizetype quote = 1; // The one behind the lines need not be read.
    int low = 0;               // as many lines are read
    for (int high = static_cast<int>(rows.size()); low + 1 < high;) {
        const int middle = (low + high) / 2;
        const qsizetype size = rotationSize(rotationText(rows.first(middle)), password) - quote;
        (size <= longestRequest ? low : high) = middle;
    }
    return low;
}
