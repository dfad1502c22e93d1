// SPDX-License-Identifier: MIT
#pragma once

#include <QLatin1StringView>

#include <array>

/// With these words servers of this family refuse an RCON password. Longer ones first: one begins like another.
inline constexpr std::array<QLatin1StringView, 6> usualRefusals{
    QLatin1StringView("The server must set 'rcon_password' for clients to use 'rcon'."),
    QLatin1StringView("No rconpassword set on the server."),
    QLatin1StringView("Bad rconpassword."),
    QLatin1StringView("Bad rconpassword"),
    QLatin1StringView("Invalid password."),
    QLatin1StringView("Bad rcon"),
};

/// Another refusal names the variable first and ends like this.
inline constexpr QLatin1StringView endOfRefusal("shorter than 8 characters.");
