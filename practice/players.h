// SPDX-License-Identifier: MIT
#pragma once

#include "bans.h"
#include "player.h"
#include "practice_options.h"

#include <QList>
#include <QRandomGenerator>
#include <QStringList>

#include <optional>

/// Everybody on the server, by slot, and the regulars who drop in and out. What they do is drawn from a seeded
/// generator, so equal seeds tell equal stories.
class Players final {
public:
    /// `options.players` of the regulars are there at once, at most as many as a server has slots; about as many stay.
    explicit Players(const PracticeOptions &options);
    Players(int count, quint32 seed, bool quirks);

    [[nodiscard]] const QList<Player> &all() const { return present; }
    [[nodiscard]] qsizetype count() const { return present.size(); }
    [[nodiscard]] const Player *at(int slot) const; ///< null when the slot is free

    /// Puts the player into `player.slot`, in the place of whoever was there.
    void put(const Player &player);
    void remove(int slot);
    /// Whoever is in that slot has another name from now on.
    void rename(int slot, const QString &name);
    /// A new map: all scores are 0 again.
    void resetScores();

    /// One second of their lives; `slotCount` is the number of slots. Returns what happened, a line each.
    QStringList step(const Bans &bans, qint64 now, int slotCount);

private:
    void mixVisitors();
    void settleIn(const Regular &regular, int slot);
    void lookBack(Player &player);
    void play(Player &player);
    void chooseNames(QStringList &events);
    void leave(QStringList &events);
    void arrive(const Bans &bans, qint64 now, int slotCount, QStringList &events);
    [[nodiscard]] bool isHere(const Regular &regular) const;
    [[nodiscard]] std::optional<int> freeSlot(int slotCount) const;
    [[nodiscard]] QString otherName(const Player &player);
    [[nodiscard]] QString dressed(const QString &name);
    [[nodiscard]] bool chance(int oneIn) { return random.bounded(oneIn) == 0; }

    QRandomGenerator random;
    QList<Regular> visitors;
    QList<Player> present; ///< by slot
    qsizetype wanted = 0;
    bool quirks = false;
    bool renames = false;
};
