// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

/// One line of a map rotation: a map and the game type that it is played in, or words in which the game finds neither.
struct RotationRow {
    QString gametype;           ///< that holds for the map; empty while the rotation has named none
    QString map;                ///< empty in a line of odd words
    bool namesGametype = false; ///< the rotation names it before this map; else it holds on from a map before
    QString odd;                ///< what the game skips, or what lacks its map or name

    [[nodiscard]] bool isOdd() const { return map.isEmpty(); }
    bool operator==(const RotationRow &) const = default;
};

/// In characters. This is what fits into one datagram. A longer text cannot be a rotation, since it could not be sent
/// back, and it would take long to show: the time for breaking a line without blanks grows with the square of its
/// length.
inline constexpr qsizetype longestRotation = 65'507;

/// The lines of a rotation such as "gametype dm map mp_decoy gametype tdm map mp_toujane map mp_carentan", read as the
/// game reads it: the two keywords may be in any letter case and take the next word, whatever it is.
[[nodiscard]] QList<RotationRow> rotationRows(QStringView text);

/// The rotation with these lines. What `rotationRows` has read becomes the same words again; where lines have been
/// moved, a game type is named as often as each map needs to be played in its own.
[[nodiscard]] QString rotationText(const QList<RotationRow> &rows);

/// The command that has a server play `rotation` once.
[[nodiscard]] QString rotationCommand(const QString &rotation);

/// The line of a CFG file that makes `rotation` the server's own.
[[nodiscard]] QString rotationConfigLine(const QString &rotation);

/// The rotation in a file: what a CFG file sets `sv_maprotation` to, the last time it does; else all of its text when
/// that is a rotation. Empty when it has none.
[[nodiscard]] QString rotationInFile(QStringView file);
