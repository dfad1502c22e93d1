// SPDX-License-Identifier: MIT
#include "emptiness.h"

#include "rcon/datagram_header.h"

#include <algorithm>

std::optional<int> playersIn(const QByteArray &answer)
{
    static const QByteArray header = datagramHeader + "statusResponse\n";
    if (!answer.startsWith(header))
        return {};
    const QList<QByteArray> lines = answer.sliced(header.size()).split('\n');
    return static_cast<int>(
        std::ranges::count_if(lines.sliced(1), [](const QByteArray &line) { return !line.trimmed().isEmpty(); }));
}

void Emptiness::take(std::optional<int> players, const QDateTime &at)
{
    constexpr qint64 longestGap = 150; // seconds; it is asked once a minute, and one answer can be late
    if (lastTaken.isValid() && (at < lastTaken || lastTaken.secsTo(at) > longestGap))
        begun.reset();
    lastTaken = at;
    missing = players ? 0 : missing + 1;
    if (players == 0 && !begun)
        begun = at;
    else if (players.value_or(0) > 0 || missing > 1)
        begun.reset();
}
