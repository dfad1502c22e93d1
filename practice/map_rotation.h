// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// What the next turn of a map rotation asks for.
struct RotationTurn {
    QString gametype; ///< empty when the rotation does not change it
    QString map;      ///< empty when the rotation names no further map
    QString rest;     ///< the rotation that is left
    QString log;      ///< what the server prints on the way
};

/// Takes the first turn out of a rotation like "gametype tdm map mp_toujane gametype sd map mp_carentan". The two
/// keywords may be in any case; other words are told and skipped.
[[nodiscard]] RotationTurn takeTurn(const QString &rotation);
