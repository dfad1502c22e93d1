// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <chrono>
#include <optional>

/// Puts datagrams into the lines of a recording: a JSON object each, with "us" (microseconds), "way" ("out" to the
/// server, "in" from it) and "data" (the datagram in base64). Where a password stands there are as many asterisks: the
/// RCON password wherever it occurs, also when the border between two datagrams parts it, and the values of variables
/// whose names end in "password".
class TrafficMask final {
public:
    using Time = std::chrono::microseconds;

    /// `password`, in bytes, is not to be seen from now on.
    void hide(const QByteArray &password);
    /// The lines that can be written now. `password` is the one in the datagram.
    [[nodiscard]] QByteArray sent(Time at, const QByteArray &datagram, const QByteArray &password);
    /// The same. A line may be held back, and those behind it, until the next datagram has come.
    [[nodiscard]] QByteArray received(Time at, const QByteArray &datagram);
    /// The lines that have been held back.
    [[nodiscard]] QByteArray rest();

private:
    struct Held {
        Time at{};
        QByteArray datagram;
        QByteArray behind; ///< lines
    };
    [[nodiscard]] bool mayGoOn(const QByteArray &datagram) const;
    void hideParted(QByteArray &before, QByteArray &after) const;
    void hideAll(QByteArray &datagram, qsizetype from) const;

    QByteArrayList passwords;
    std::optional<Held> held;
};
