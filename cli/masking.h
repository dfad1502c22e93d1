// SPDX-License-Identifier: MIT
#pragma once

#include "rcon/reply_piece.h"

#include <QList>
#include <QString>

/// `text` with an asterisk for each character of the password, wherever it stands; it keeps its length.
[[nodiscard]] QString withoutPassword(QString text, const QString &password);

/// The same for a reply that was gathered from several datagrams, between which a character of it may be missing.
[[nodiscard]] QString withoutPassword(const QString &text, const QList<ReplyPiece> &pieces, const QString &password);
