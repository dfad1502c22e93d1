// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

/// The value of "g_gametype" in a public status reply: backslash-separated keys and values on one line.
/// Empty when the key does not occur; a value without a backslash after it ends with its line.
[[nodiscard]] QString gameType(QStringView reply);

/// The value of "mapname" likewise, except that an empty map name runs on to the backslash after the next key.
[[nodiscard]] QString mapName(QStringView reply);

/// The map in the first lines of a reply to "status", "map: mp_toujane"; empty when it is not there.
[[nodiscard]] QString mapOfStatus(QStringView reply);

/// True when the reply begins with "bad rconpassword", in any letter case: what connecting goes by. All the wordings
/// that servers have are in refusals.h.
[[nodiscard]] bool refusesPassword(QStringView reply);
