// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The names of the server variables that chat messages can tell the players about.
struct PlaceholderVariables {
    QString servername;
    QString friendlyfire;
};
