// SPDX-License-Identifier: MIT
#pragma once

#include "player.h"

#include <QList>
#include <QRandomGenerator>

/// Everybody who may come to the server, in the order in which they come first: people with ordinary names, blanks,
/// colour codes, quotes, carets and foreign letters in them. With `quirks` every second one has a name, an address or a
/// port that a careless reader of tables falls over; with `guids` too, only the demo client has GUID 0.
[[nodiscard]] QList<Regular> regulars(QRandomGenerator &random, bool quirks, bool guids = false);
