// SPDX-License-Identifier: MIT
#pragma once

#include "bans.h"
#include "player.h"

#include <QList>
#include <QRandomGenerator>
#include <QStringList>

#include <optional>

/// Everybody on the server, by slot, and the regulars who drop in and out. What they do is drawn from a seeded
/// generator, so equal seeds tell equal stories.
class Players final {
public:
    /// `count` of the regulars are there at once; about as many stay.
    Players(int count, quint32 seed, bool quirks);

    [[nodiscard]] const QList<Player> &all() const { return m_players; }
    [[nodiscard]] qsizetype count() const { return m_players.size(); }
    [[nodiscard]] const Player *at(int slot) const; ///< null when the slot is free

    /// Puts the player into `player.slot`, in the place of whoever was there.
    void put(const Player &player);
    void remove(int slot);
    void clear() { m_players.clear(); }
    /// A new map: all scores are 0 again.
    void resetScores();

    /// One second of their lives; `slotCount` is the number of slots. Returns what happened, a line each.
    QStringList step(const Bans &bans, qint64 now, int slotCount);

private:
    void settleIn(const Regular &regular, int slot);
    void play(Player &player);
    void leave(QStringList &events);
    void arrive(const Bans &bans, qint64 now, int slotCount, QStringList &events);
    [[nodiscard]] bool isHere(const Regular &regular) const;
    [[nodiscard]] std::optional<int> freeSlot(int slotCount) const;
    [[nodiscard]] bool chance(int oneIn) { return m_random.bounded(oneIn) == 0; }

    QRandomGenerator m_random;
    QList<Regular> m_regulars;
    QList<Player> m_players; ///< by slot
    qsizetype m_wanted = 0;
    bool m_quirks = false;
};
