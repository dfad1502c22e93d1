// SPDX-License-Identifier: MIT
#pragma once

#include "practice_options.h"

#include <QByteArray>
#include <QList>

/// What a client asks for in one datagram.
struct Request {
    enum class Kind { Rcon, Status, Unknown };

    Kind kind = Kind::Unknown;
    QByteArray password; ///< of an rcon request
    QByteArray command;  ///< the rest of its first line, or "getstatus"
};

/// Reads four 0xFF bytes and "rcon PASSWORD COMMAND" or "getstatus", of which only the first line counts. A command is
/// cut at the 1,023 bytes that the game's console holds.
[[nodiscard]] Request readRequest(const QByteArray &datagram);

/// The same by a server that reads a line with these habits: short, "%" as ".", without comments.
[[nodiscard]] Request readRequest(const QByteArray &datagram, const PracticeOptions &habits);

/// The datagrams of a printed reply: header, "print", line feed and up to `size` bytes of `text` each, cut anywhere;
/// without text the bare header.
[[nodiscard]] QList<QByteArray> printDatagrams(const QByteArray &text, qsizetype size);

/// The same from a server whose buffer holds one character less than it fills in: a piece of 1,294 loses its last.
[[nodiscard]] QList<QByteArray> losingPrintDatagrams(const QByteArray &text);

/// One such datagram with the whole of `text`.
[[nodiscard]] QByteArray printDatagram(const QByteArray &text);

/// Four 0xFF bytes and `text`.
[[nodiscard]] QByteArray plainDatagram(const QByteArray &text);

/// The datagrams of one reply as a careless network delivers them: every two neighbours change places.
[[nodiscard]] QList<QByteArray> reordered(QList<QByteArray> datagrams);
