// SPDX-License-Identifier: MIT
#include "book/ban_lines.h"
#include "fuzz.h"

#include <QSet>

#include <algorithm>

void fuzz(const QByteArray &input)
{
    const BanLines read = readBanLines(input);
    require(read.bans.size() + read.unreadable <= input.count('\n') + 1, "a line is one ban at most");
    QSet<QPair<QString, QString>> different;
    for (const BookBan &ban : read.bans) {
        require(!ban.guid.isEmpty() && ban.guid != QStringLiteral("0"), "every ban is somebody's");
        require(std::ranges::none_of(ban.name, [](QChar each) { return each.category() == QChar::Other_Control; }),
                "no name holds a control character");
        different.insert(keyOfBan(ban));
    }

    const QByteArray written = banLines(read.bans);
    require(written.count('\n') == different.size(), "each ban is written once");
    const BanLines again = readBanLines(written);
    require(again.unreadable == 0, "what is written can be read");
    QSet<QPair<QString, QString>> kept;
    for (const BookBan &ban : again.bans)
        kept.insert(keyOfBan(ban));
    require(kept == different, "what is written reads back");
    require(banLines(again.bans) == written, "and is written likewise");
}
