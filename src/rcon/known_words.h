// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

#include <span>
#include <string_view>

/// A command or a variable of a game server, as far as it is publicly known. What is not known for certain is empty.
struct KnownWord {
    std::string_view name;
    std::string_view meaning;  ///< what it does, in one line
    std::string_view stock{};  ///< the value of a variable after a fresh start
    std::string_view domain{}; ///< the values that a variable takes
};

/// Both by name, without regard to letter case.
[[nodiscard]] std::span<const KnownWord> knownCommands();
[[nodiscard]] std::span<const KnownWord> knownVariables();

/// The one of that name in any letter case; null when there is none.
[[nodiscard]] const KnownWord *findKnown(std::span<const KnownWord> words, QStringView name);
