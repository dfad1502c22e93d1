// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

#include <array>

/// What every server of the game has.

/// The prefixes of the game types.
inline constexpr std::array<QLatin1StringView, 5> stockGameTypes{QLatin1StringView("sd"), QLatin1StringView("ctf"),
                                                                 QLatin1StringView("tdm"), QLatin1StringView("dm"),
                                                                 QLatin1StringView("hq")};

[[nodiscard]] QStringList stockMaps();
