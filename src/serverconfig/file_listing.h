// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

/// The names in an "fdir *.cfg" listing: of each line that begins with "/", the text behind it up to and with ".cfg"
/// (in any letter case). The first line is a heading, unless it begins with "/" itself. A last line without its line
/// feed ends the listing.
[[nodiscard]] QStringList cfgFiles(QStringView listing);
