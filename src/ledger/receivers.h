// SPDX-License-Identifier: MIT
#pragma once

#include <QList>

#include <chrono>
#include <optional>

/// Datagrams carry no number: tells by time and size which of the commands that were sent one after the other a
/// datagram answers.
class Receivers final {
public:
    using Time = std::chrono::microseconds;

    /// A copy of the command of that number has gone out.
    void sent(int number, Time at);
    /// The command that the datagram of `size` bytes answers; none when none has been sent.
    [[nodiscard]] std::optional<int> receiver(qint64 size, Time at);
    /// Nothing that comes from now on answers what has been sent so far.
    void forget() { *this = {}; }

private:
    struct Receiver {
        int number = 0;
        Time sent{}; ///< the last copy
        Time came{}; ///< the last datagram
        qint64 size = 0;
        int datagrams = 0;
    };
    [[nodiscard]] Receiver *find(Time at);
    [[nodiscard]] static bool goesOn(const Receiver &one, Time at);

    QList<Receiver> receivers;   ///< by the time of the last copy
    std::optional<Time> fastest; ///< in which this server has answered
};
