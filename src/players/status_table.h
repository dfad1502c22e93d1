// SPDX-License-Identifier: MIT
#pragma once

#include "rcon/reply_piece.h"

#include <QList>
#include <QString>

/// What the way here may have done to a row.
enum class RowDamage {
    None,
    TwoDatagrams, ///< it was put together from two datagrams
    LostCharacter ///< so that a character may be missing in it
};

/// One row of the server's "status" table, all fields as text. Those that stand at the end of their columns touch when
/// a column is too full, and are then read as one.
struct StatusRow {
    QString num;
    QString score;
    QString ping;
    QString guid;
    QString name;
    QString address;
    QString qport;
    QString rate;
    RowDamage damage = RowDamage::None;
    bool beginsDatagram = false; ///< so a datagram before it may have been lost, and with it the beginning of the row

    bool operator==(const StatusRow &) const = default;
};

/// False when the slot number or the GUID is no number: the row was put together from something else.
[[nodiscard]] bool isNumbered(const StatusRow &row);

/// Reads the reply to "status" row by row while it is still growing: each call gets the reply as it stands by then.
/// A run of blanks counts as one, also where two datagrams met in it.
class StatusTable final {
public:
    /// Goes to the end of the three head lines; false when no row follows them.
    [[nodiscard]] bool skipHeading(const QString &reply);
    /// True when an empty line follows the row that was read last.
    [[nodiscard]] bool ended(const QString &reply) const;
    /// The next row; `pieces` says where the datagrams of the reply met. Throws InvalidCall when it is cut short and
    /// Overflow when it goes beyond position 32,767; it can then be tried again, from its beginning.
    [[nodiscard]] StatusRow next(const QString &reply, const QList<ReplyPiece> &pieces = {});

private:
    qsizetype lineFeed = -1; ///< position of the one that ends the line before the next row
    bool anyRow = false;
    bool isBehindDamaged = false; ///< the row that was read last is damaged, or no player's
};
