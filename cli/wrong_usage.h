// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <stdexcept>

/// What the program was told cannot be done as it stands; nothing has been sent. The text is for the person.
struct WrongUsage final : std::runtime_error {
    explicit WrongUsage(const QString &text) : std::runtime_error(text.toStdString()) {}

    [[nodiscard]] QString text() const { return QString::fromStdString(what()); }
};
