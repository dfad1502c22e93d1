// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

/// In characters. The systems that servers run on have no longer paths, and showing one would hold up the window.
constexpr qsizetype longestFileName = 4096;

/// The names in an "fdir *.cfg" listing: of each line that begins with "/", the text behind it up to and with ".cfg"
/// (in any letter case). The first line is a heading, unless it begins with "/" itself. A last line without its line
/// feed ends the listing. What is longer than a file's name can be is left out.
[[nodiscard]] QStringList cfgFiles(QStringView listing);
