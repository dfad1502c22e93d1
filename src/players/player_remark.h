// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// What has been written down about a player.
enum class PlayerRemark { None, Note, Flag };

/// Somebody of a list, as it told of him, about whom something has been written down.
struct RemarkedPlayer {
    QString num;
    QString guid;
    QString name;
    PlayerRemark remark = PlayerRemark::None;
};
