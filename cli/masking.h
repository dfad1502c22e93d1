// SPDX-License-Identifier: MIT
#pragma once

#include "rcon/reply_piece.h"

#include <QList>
#include <QString>

/// `text` with an asterisk for each character of the password, wherever it stands; it keeps its length.
[[nodiscard]] QString maskedText(QString text, const QString &password);

/// The same for a reply that was gathered from several datagrams, between which a character of it may be missing. A
/// usual refusal stays as it is: asterisks in its words would give a password away that is one of them.
[[nodiscard]] QString maskedReply(const QString &text, const QList<ReplyPiece> &pieces, const QString &password);
