// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QTime>

#include <array>

/// A named list of commands and when it is sent.
struct TimedList {
    enum When { ByHand, AtTime, Every, WhenEmpty };
    static constexpr int mostMinutes = 1440;

    QString name = {};
    QStringList commands = {};
    bool isActive = false;
    When when = ByHand;
    QTime time{20, 0};          ///< of the day, to the minute
    std::array<bool, 7> days{}; ///< from Monday on
    int minutes = 30;           ///< 1 to `mostMinutes`

    bool operator==(const TimedList &) const = default;
};
