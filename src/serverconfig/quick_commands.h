// SPDX-License-Identifier: MIT
#pragma once

struct Services;

/// One-click actions on the server that several pages and menus offer.

/// Switches the game type and restarts the map. `index`: 0 search and destroy, 1 capture the flag, 2 team deathmatch,
/// 3 deathmatch, 4 headquarters; anything else does nothing.
void switchGameType(const Services &services, int index);

/// Sets friendly fire and announces it to the players. `mode`: 0 off, 1 on, 2 reflective, 3 shared.
void setFriendlyFire(const Services &services, int mode);

void restartMap(const Services &services);
void rotateMap(const Services &services);
