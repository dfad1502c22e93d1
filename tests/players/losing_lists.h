// SPDX-License-Identifier: MIT
#pragma once

#include "base/wire_text.h"
#include "players/player_check.h"
#include "practice/datagrams.h"
#include "practice/game_server.h"

#include <optional>

/// A server with so many players that loses a character at each border between datagrams.
inline PracticeOptions losingServer(int players, quint32 seed)
{
    PracticeOptions options = PracticeOptions::cod2();
    options.players = players;
    options.seed = seed;
    return options;
}

/// A gathered reply, as the datagrams of the server make it.
struct GatheredReply {
    explicit GatheredReply(const QList<QByteArray> &datagrams)
    {
        const qsizetype head = printDatagram({}).size();
        for (const QByteArray &datagram : datagrams) {
            if (datagram.size() > head)
                pieces.append({text.size(), datagram.size() == 1303});
            text += squeezeBlanks(fromAnsi(datagram.sliced(head)));
        }
    }

    QString text;
    QList<ReplyPiece> pieces;
};

inline GatheredReply losingList(GameServer &game)
{
    return GatheredReply(losingPrintDatagrams(toAnsi(game.execute(QStringLiteral("status")).reply)));
}

/// The player's name as a list has it.
inline QString listedName(const Player &player)
{
    return trimBlanks(squeezeBlanks(player.name + QStringLiteral("^7")));
}

inline WantedPlayer wantedFrom(const StatusRow &row)
{
    return {row.num, row.guid, row.name, row.address, row.name, row.damage != RowDamage::None, row.num};
}
