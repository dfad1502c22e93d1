// SPDX-License-Identifier: MIT
#pragma once

#include "reply_piece.h"

#include <QList>
#include <QString>
#include <QStringList>

/// True for what can be the name of a command or a variable: letters, digits, "_", "-" and ".", 64 at most.
[[nodiscard]] bool isWord(QStringView text);

/// The letters and blanks before the name in a line of "dvarlist", or with blanks squeezed.
[[nodiscard]] bool areFlags(QStringView text);

/// The names in a reply to "dvarlist". A line that may lack a character is left out.
[[nodiscard]] QStringList listedVariables(const QString &reply, const QList<ReplyPiece> &pieces);

/// The names in a reply to "cmdlist", likewise; none when the server does not know it.
[[nodiscard]] QStringList listedCommands(const QString &reply, const QList<ReplyPiece> &pieces);

/// True when nothing more of a reply to "dvarlist" or "cmdlist" can come: its last line counts what has been listed.
[[nodiscard]] bool isWholeListing(const QString &reply);
