// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// The part of a gathered reply that came in one datagram.
struct ReplyPiece {
    /// Of a full datagram from servers that lose its last character, in bytes on the wire.
    static constexpr qsizetype losingSize = 1303;

    qsizetype begin = 0;      ///< position in the reply
    bool mayLackLast = false; ///< the character behind its last one may have been lost on the way
    bool isCut = false;       ///< it was too large to be taken, and what stood behind its end is lost

    bool operator==(const ReplyPiece &) const = default;
};
