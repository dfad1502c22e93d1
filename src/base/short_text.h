// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// A text of others in one line, and no more of it than one can read; what cannot be printed is blank.
[[nodiscard]] QString shortText(const QString &text);
/// The same between quotation marks.
[[nodiscard]] QString quotedText(const QString &text);
