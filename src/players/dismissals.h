// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// One way to get rid of a player: its command and its texts.
struct Dismissal {
    QLatin1StringView command;
    QLatin1StringView select;     ///< when nobody is selected
    QLatin1StringView refusal;    ///< in Query Mode
    QLatin1StringView noteBefore; ///< around the name in the message list
    QLatin1StringView noteBehind;
    QLatin1StringView noteSection{}; ///< names of the last two steps, for the report of a fault
    QLatin1StringView removalSection{};
    QLatin1StringView failureTitle{}; ///< of that report; the general box reports when there is none
    QLatin1StringView failure{};
};

inline constexpr Dismissal kick{.command = QLatin1StringView("clientkick "),
                                .select = QLatin1StringView("Select a player from the list to Kick first"),
                                .refusal = QLatin1StringView("Only Kick with Rcon access, not in Query Mode"),
                                .noteBefore = QLatin1StringView("Player Kicked >"),
                                .noteBehind = QLatin1StringView("<")};

inline constexpr Dismissal ban{.command = QLatin1StringView("banclient "),
                               .select = QLatin1StringView("Select a player from the list to Ban first"),
                               .refusal = QLatin1StringView("Only Ban with Rcon access, not in Query Mode"),
                               .noteBefore = QLatin1StringView("Player banned and kicked ["),
                               .noteBehind = QLatin1StringView("]"),
                               .noteSection = QLatin1StringView("Middle"),
                               .removalSection = QLatin1StringView("Remove Grid"),
                               .failureTitle = QLatin1StringView("BanUser Error"),
                               .failure = QLatin1StringView("Error in BAN Routine")};

inline constexpr Dismissal temporaryBan{
    .command = QLatin1StringView("tempbanclient "),
    .select = QLatin1StringView("Select a player from the list to temporary Ban first"),
    .refusal = QLatin1StringView("Only Temp Ban with Rcon access, not in Query Mode"),
    .noteBefore = QLatin1StringView("Player temporary banned and kicked ["),
    .noteBehind = QLatin1StringView("]"),
    .noteSection = QLatin1StringView("Top"),
    .removalSection = QLatin1StringView("Grid remove"),
    .failureTitle = QLatin1StringView("TempBan Error"),
    .failure = QLatin1StringView("Error in TempBan Routines")};
