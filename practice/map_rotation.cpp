// SPDX-License-Identifier: MIT
#include "map_rotation.h"

#include "command_words.h"

#include <QStringList>

using namespace Qt::StringLiterals;

RotationTurn takeTurn(const QString &rotation)
{
    RotationTurn turn;
    QStringList words = commandWords(rotation);
    while (!words.isEmpty() && turn.map.isEmpty()) {
        const QString keyword = words.takeFirst();
        const bool isGametype = keyword.compare("gametype"_L1, Qt::CaseInsensitive) == 0;
        if (!isGametype && keyword.compare("map"_L1, Qt::CaseInsensitive) != 0) {
            turn.log += u"Unknown keyword '%1' in sv_mapRotation.\n"_s.arg(keyword);
            continue;
        }
        const QString value = words.isEmpty() ? QString() : words.takeFirst();
        (isGametype ? turn.gametype : turn.map) = value;
        if (!value.isEmpty())
            turn.log += (isGametype ? u"Setting g_gametype: "_s : u"Setting map: "_s) + value + u".\n"_s;
    }
    turn.rest = words.join(u' ');
    return turn;
}
