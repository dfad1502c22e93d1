// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

#include <optional>

/// The names in a "dir maps/mp d3dbsp" listing: of each line behind the three of the heading that holds ".d3dbsp" (in
/// any letter case), the text before it, unless it is longer than a file's name can be. A last line without its line
/// feed ends the listing.
/// No list when the heading is not complete, because then the listing has not arrived.
[[nodiscard]] std::optional<QStringList> mapNames(QStringView listing);
