// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Servers of this family refuse an RCON password in several wordings; this one names the variable first and ends like
/// this.
inline constexpr QLatin1StringView endOfRefusal("shorter than 8 characters.");

/// Whether a server refuses the RCON password in this way, and says nothing else.
[[nodiscard]] bool isRefusal(QStringView reply);
/// The same, in words that are known to the last letter.
[[nodiscard]] bool isUsualRefusal(QStringView reply);

/// `reply` with asterisks over `password`. A usual refusal stays as it is: asterisks in its words would give a password
/// away that is one of them.
[[nodiscard]] QString withoutPassword(const QString &reply, const QString &password);
