// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// A name as a server's ban file has it: without colour codes, control characters and blanks at its ends.
[[nodiscard]] QString cleanName(const QString &name);

/// A text for a line or a box, cut where a player's name would not end.
[[nodiscard]] QString cutName(const QString &name);

/// The clean name, cut likewise.
[[nodiscard]] QString shownName(const QString &name);

/// Without control characters and without the difference between upper and lower case in any script.
[[nodiscard]] QString foldedText(const QString &text);

/// What a name, GUID or address is found by, and what is looked for likewise: without colour codes and control
/// characters, and without the difference between upper and lower case in any script.
[[nodiscard]] QString searchKey(const QString &text);

/// An address without its port, which a server may give as a negative number. That of IPv6 stands in brackets before
/// one.
[[nodiscard]] QString withoutPort(const QString &address);
