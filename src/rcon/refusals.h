// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

/// Why a server refuses the RCON password; servers of this family have several wordings for it.
enum class RefusalKind {
    Wrong,
    Unset,    ///< the server has none
    TooShort, ///< the server's own
};

/// What a reply refuses the RCON password for, if it begins, or ends, as such a refusal does; more may stand there.
[[nodiscard]] std::optional<RefusalKind> refusalIn(QStringView reply);

/// Whether a server refuses the RCON password in this way, and says nothing else.
[[nodiscard]] bool isRefusal(QStringView reply);
/// The same, in words that are known to the last letter.
[[nodiscard]] bool isUsualRefusal(QStringView reply);

/// `reply` with asterisks over `password`. A usual refusal stays as it is: asterisks in its words would give a password
/// away that is one of them.
[[nodiscard]] QString withoutPassword(const QString &reply, const QString &password);
