// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

enum class WeaponGroup { British, Russian, Allies, German, Others };

/// A weapon that the server can allow or forbid.
struct Weapon {
    WeaponGroup group;
    QString box;          ///< name of its check box
    QString variable;     ///< of the server: 1 allowed, 0 not
    QString caption;      ///< beside the box
    QString confirmation; ///< in the message list after it has been sent
    QString toolTip;      ///< of the caption; only shown
};

/// All weapons in the order in which they are read and sent.
[[nodiscard]] const QList<Weapon> &weapons();

struct WeaponSetting {
    QString box;
    bool allowed;
};

/// What the preset "Rifles Only" sends, in its own order: the bolt-action rifles without scope and nothing else.
[[nodiscard]] const QList<WeaponSetting> &riflesOnly();
