// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

#include <chrono>

/// A recorded conversation with a server, told again: who asks what was asked then gets what came then. A recording is
/// a JSON object a line: "us" (microseconds), "way" ("out" to the server, "in" from it) and "data" (the datagram,
/// base64), with asterisks for passwords.
class Replay final {
public:
    struct Piece {
        std::chrono::microseconds after{}; ///< the request
        QByteArray datagram;
    };
    /// What one request got; empty when the server was silent.
    using Answer = QList<Piece>;

    explicit Replay(const QByteArray &recording);

    /// What is wrong with the recording; empty when nothing is. A last line that breaks off is left out.
    [[nodiscard]] QString fault() const { return complaint; }
    /// How many different things were asked.
    [[nodiscard]] qsizetype count() const { return answers.size(); }

    [[nodiscard]] bool knows(const QByteArray &request) const;
    /// The answers to equal requests in the order of the recording, whatever their password, and when they are used up
    /// the last one that was no silence again.
    [[nodiscard]] Answer next(const QByteArray &request);

private:
    /// A recorded command in which the recorder has found its password.
    struct Covered {
        QByteArray command;
        QByteArray key;
    };
    [[nodiscard]] QByteArray keyOf(const QByteArray &request) const;

    QString complaint;
    QList<Covered> covered; ///< in the order of the recording
    QHash<QByteArray, QList<Answer>> answers;
    QHash<QByteArray, qsizetype> told; ///< of each the answers that have been given
};
