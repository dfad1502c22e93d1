// SPDX-License-Identifier: MIT
#pragma once

#include <QLatin1StringView>

#include <span>

enum class WeaponGroup { British, Russian, Allies, German, Others };

/// A weapon that the server can allow or forbid.
struct Weapon {
    WeaponGroup group;
    QLatin1StringView box;          ///< name of its check box
    QLatin1StringView variable;     ///< of the server: 1 allowed, 0 not
    QLatin1StringView caption;      ///< beside the box
    QLatin1StringView confirmation; ///< in the message list after it has been sent
    QLatin1StringView toolTip;      ///< of the caption; only shown
};

/// All weapons in the order in which they are read and sent.
[[nodiscard]] std::span<const Weapon> weapons();

struct WeaponSetting {
    QLatin1StringView box;
    bool allowed;
};

/// What the preset "Rifles Only" sends, in its own order: the bolt-action rifles without scope and nothing else.
[[nodiscard]] std::span<const WeaponSetting> riflesOnly();
