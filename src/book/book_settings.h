// SPDX-License-Identifier: MIT
#pragma once

#include "settings/ini_text.h"

/// What the settings file says of the player book, in a section "[book]" of its own.
struct BookSettings {
    static constexpr int fewestDays = 1;
    static constexpr int mostDays = 3650;

    bool isKept = false;
    int days = 90; ///< for which sightings are kept

    [[nodiscard]] static BookSettings read(const IniText &ini);
    [[nodiscard]] QList<IniEntry> entries() const;
};
