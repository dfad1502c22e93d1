// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <exception>
#include <utility>

/// A fault by number and description: what a handler traps, or what the general fault box shows.
class Fault final : public std::exception {
public:
    enum Number {
        InvalidCall = 5,
        Overflow = 6,
        OutOfRange = 9,
        TypeMismatch = 13,
        DatagramTooLarge = 10040,    ///< a received datagram was larger than the buffer
        AddressNotAvailable = 10049, ///< an address or port that cannot be used
        NotConnected = 10057,        ///< the socket is closed
        NoRoute = 10065,             ///< no route to the server
        HostNotFound = 11001,        ///< the host name has no address
    };

    /// One of the numbers above with its standard description.
    explicit Fault(Number number);
    /// Any other number, above all the system's own, with its description.
    Fault(int number, QString description) : code(number), text(std::move(description)) {}

    [[nodiscard]] int number() const { return code; }
    [[nodiscard]] QString description() const { return text; }
    [[nodiscard]] const char *what() const noexcept override { return "fault"; }

private:
    int code;
    QString text;
};
