// SPDX-License-Identifier: MIT
#pragma once

#include "status_table.h"

#include <QList>
#include <QString>

#include <optional>

/// Somebody in a list, as he is looked for in a newer one.
struct WantedPlayer {
    QString num;
    QString guid;
    QString name; ///< as the server tells it
    QString address;
    QString shown;          ///< the name as the person sees it
    bool isDamaged = false; ///< what is known of him may be wrong itself
    QString listedNum;      ///< his slot number in the list that the person sees
};

/// What a newer list says of him.
struct Sighting {
    enum Kind {
        There,     ///< undamaged in the one slot that was looked at
        Elsewhere, ///< undamaged in one other slot
        Gone,
        Two,    ///< more than one stand under his GUID and name
        Damaged ///< the row that is his is damaged, or another one that may be his too
    };

    Kind kind = Gone;
    QString num;          ///< the slot he stands in
    bool isSure = true;   ///< one list is enough to believe it
    QString newName = {}; ///< of who is gone: under which another player has his GUID now
    QString newNum = {};  ///< and in which slot

    bool operator==(const Sighting &) const = default;
};

/// Looks for a player by GUID and exact name, whatever his address. A GUID of 0 is that of many, and name, slot and
/// address must agree then. Who is just leaving has left. It is not sure of a slot when the row begins with a datagram:
/// of a number of two digits the first can have been lost with the datagram before.
[[nodiscard]] Sighting lookFor(const WantedPlayer &wanted, const QList<StatusRow> &rows);

/// Whether a player who was found, and has been thrown out since, is there still; nothing when damaged rows leave it
/// open. His GUID tells: he can have taken another name meanwhile. With a GUID of 0 name, slot and address have to
/// agree.
[[nodiscard]] std::optional<bool> isStillThere(const WantedPlayer &wanted, const QList<StatusRow> &rows);

/// All rows of a gathered reply to "status"; nothing when it is another's or has not come whole.
[[nodiscard]] std::optional<QList<StatusRow>> wholeTable(const QString &reply, const QList<ReplyPiece> &pieces);
/// Whether the end of a whole table is only taken for it: it lacks the empty line, which a full last datagram may have
/// lost; or another datagram, that has not come, was the last.
[[nodiscard]] bool isEndSupposed(const QString &reply, const QList<ReplyPiece> &pieces);
