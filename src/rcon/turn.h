// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

struct Services;

/// For what sends console commands over a link of its own: the strictest servers hear one in half a second, whoever
/// sends it, and so it keeps its distance from the exchange, and the exchange from it.
class Turn final {
public:
    explicit Turn(const Services &services_) : services(services_) {}

    /// Milliseconds until a command can go out.
    [[nodiscard]] qint64 left() const;
    /// A command has gone out.
    void taken() const;

private:
    const Services &services;
};
