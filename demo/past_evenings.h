// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Begins a player book in the current folder in which the server at `address` has been visited for a week.
void writePastEvenings(const QString &address);
