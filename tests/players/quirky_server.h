// SPDX-License-Identifier: MIT
#pragma once

#include "player_grid.h"
#include "server_table.h"

#include <QRandomGenerator>

// What the long stories on a server with nasty names and odd rows have in common.

inline PracticeOptions quirkyServer(int players)
{
    PracticeOptions options;
    options.players = players;
    options.quirks = true;
    options.mapLoadMs = 0;
    return options;
}

/// Lets some seconds pass in the game, and now and then somebody come or go besides.
inline void liveOn(GameServer &game, int round, QRandomGenerator &random)
{
    const int seconds = random.bounded(1, 6);
    for (int second = 0; second < seconds; ++second)
        game.tick();
    const int slot = random.bounded(64);
    if (round % 7 == 3)
        game.players().remove(slot);
    if (round % 5 == 2)
        game.players().put(
            somebody(slot, QStringLiteral("^%1Guest  of round %2").arg(round % 10).arg(round), 999, -round));
}

#define COMPARE_LIST(tab, withoutColours)                                                                              \
    do {                                                                                                               \
        const QList<QStringList> wanted = tableRows(tab.server.game().players().all(), withoutColours);                \
        const QList<QStringList> shown = tab.grid();                                                                   \
        QCOMPARE(shown.size(), wanted.size());                                                                         \
        for (qsizetype row = 0; row < wanted.size(); ++row)                                                            \
            QCOMPARE(shown.at(row), wanted.at(row));                                                                   \
    } while (false)
