// SPDX-License-Identifier: MIT
#pragma once

#include <QLatin1StringView>

#include <array>

/// One thing that is done to a player when a newer list has shown where he is.
struct CheckedDeed {
    QLatin1StringView item;    ///< name in the menu
    QLatin1StringView caption; ///< there, and of the boxes
    QLatin1StringView command;
    QLatin1StringView offer; ///< when he stands in another slot
    bool dismisses = true;   ///< he has to be gone afterwards
};

inline constexpr CheckedDeed checkedMessage{.item = QLatin1StringView("mchkmessage"),
                                            .caption = QLatin1StringView("Check and message"),
                                            .command = QLatin1StringView("tell "),
                                            .offer = QLatin1StringView("Send the message there?"),
                                            .dismisses = false};

inline constexpr std::array<CheckedDeed, 3> checkedDismissals{{{.item = QLatin1StringView("mchkkick"),
                                                                .caption = QLatin1StringView("Check and kick"),
                                                                .command = QLatin1StringView("clientkick "),
                                                                .offer = QLatin1StringView("Kick him there?")},
                                                               {.item = QLatin1StringView("mchkban"),
                                                                .caption = QLatin1StringView("Check and ban"),
                                                                .command = QLatin1StringView("banclient "),
                                                                .offer = QLatin1StringView("Ban him there?")},
                                                               {.item = QLatin1StringView("mchktempban"),
                                                                .caption = QLatin1StringView("Check and temp ban"),
                                                                .command = QLatin1StringView("tempbanclient "),
                                                                .offer = QLatin1StringView("Temp ban him there?")}}};
