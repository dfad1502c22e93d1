// SPDX-License-Identifier: MIT
#pragma once

class PlayerTable;
class PlayerView;
class QAbstractButton;
class QPoint;

/// The buttons that do the same as the first items of the menu.
struct PlayerButtons {
    QAbstractButton *kick;
    QAbstractButton *ban;
    QAbstractButton *temporaryBan;
    QAbstractButton *message;
};

/// Opens the menu about the selected player of `view` at `place` of the screen.
void showPlayerMenu(PlayerView &view, const PlayerTable &players, const PlayerButtons &buttons, QPoint place);
