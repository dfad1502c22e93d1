// SPDX-License-Identifier: MIT
#pragma once

#include "reply_fit.h"

#include <QList>

#include <chrono>
#include <optional>

/// Datagrams carry no number: tells which of the commands that were sent one after the other a datagram answers, by
/// what it says, and else by its time and size.
class Receivers final {
public:
    using Time = std::chrono::microseconds;

    /// A copy of the command of that number has gone out.
    void sent(int number, const QString &command, Time at);
    /// The command that the datagram answers, which has `size` bytes on the wire; none when none has been sent.
    [[nodiscard]] std::optional<int> receiver(const QString &text, qint64 size, Time at);
    /// Nothing that comes from now on answers what has been sent so far.
    void forget() { *this = {}; }

private:
    struct Receiver {
        int number = 0;
        AskedFor askedFor = {};
        QList<Time> copies = {}; ///< when each went out
        Time came{};             ///< the last datagram
        qint64 size = 0;         ///< of it
        int datagrams = 0;
        int replies = 0;
        std::size_t firstText = 0; ///< hash of the first datagram; 0 when it had no text

        [[nodiscard]] bool isOpen() const { return replies < copies.size(); }
    };
    using Candidates = QList<Receiver *>;
    struct Found {
        Receiver *one = nullptr;
        bool isCertain = false; ///< no other could have been meant
    };

    [[nodiscard]] Found find(const QString &text, Time at);
    [[nodiscard]] Receiver *pick(const Candidates &candidates, Time at) const;
    [[nodiscard]] Candidates likelySilent(const Candidates &candidates, Time at) const;
    [[nodiscard]] bool comesInTime(const Receiver &one, Time at) const;
    [[nodiscard]] static bool goesOn(const Receiver &one, Time at);
    void measure(const Receiver &one, Time at);

    QList<Receiver> receivers; ///< by the time of the last copy
    QList<Time> delays;        ///< of the last answers on this link of which it is certain
};
