// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

class PlayerTable;
class PlayerView;
class QAbstractButton;
class QPoint;
struct CheckedDeed;
struct WantedPlayer;

/// The buttons that do the same as the first items of the menu.
struct PlayerButtons {
    QAbstractButton *kick;
    QAbstractButton *ban;
    QAbstractButton *temporaryBan;
    QAbstractButton *message;
};

/// Does something to a player when a new list has shown where he is.
using CheckAndAct = std::function<void(const CheckedDeed &deed, const WantedPlayer &wanted)>;

/// Wants to know who somebody is.
using AskWho = std::function<void(const WantedPlayer &wanted)>;

/// Opens the menu about the selected player of `view` at `place` of the screen.
void showPlayerMenu(PlayerView &view, const PlayerTable &players, const PlayerButtons &buttons,
                    const CheckAndAct &checkAndAct, const AskWho &askWho, QPoint place);
