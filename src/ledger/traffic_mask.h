// SPDX-License-Identifier: MIT
#pragma once

#include "known_passwords.h"

#include <QByteArray>
#include <QList>

#include <chrono>

/// Puts datagrams into the lines of a recording: a JSON object each, with "us" (microseconds), "way" ("out" to the
/// server, "in" from it) and "data" (the datagram in base64). Where a password stands there are as many asterisks:
/// those that are used or set while it records wherever they occur, also when the border between two datagrams parts
/// one or takes a character of it, and the values of variables whose names end in "password".
class TrafficMask final {
public:
    using Time = std::chrono::microseconds;
    enum Link { OfExchange, OfCheck };

    /// `password`, in bytes, is not to be seen from now on.
    void hide(const QByteArray &password);
    /// The lines that can be written now. `password` is the one in the datagram.
    [[nodiscard]] QByteArray sent(Time at, const QByteArray &datagram, const QByteArray &password);
    /// The same. A line may be held back, and those behind it, until the next datagram has come.
    [[nodiscard]] QByteArray received(Time at, const QByteArray &datagram, Link link = OfExchange);
    /// The lines that have been held back.
    [[nodiscard]] QByteArray rest();

private:
    struct Line {
        Time at{};
        bool isSent = false;
        QByteArray datagram;
        Link link = OfExchange;
        bool mayGoOn = false; ///< with the next datagram on the same link
    };
    void star(QByteArray &datagram, qsizetype from) const;
    [[nodiscard]] Line *awaited(Link link);
    void endOld(Time at);
    [[nodiscard]] QByteArray ready();

    KnownPasswords passwords; ///< characters stand for bytes
    QList<Line> lines;        ///< not written yet
};
