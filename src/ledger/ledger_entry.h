// SPDX-License-Identifier: MIT
#pragma once

#include "rcon/traffic.h"
#include "verdict.h"

#include <QDateTime>
#include <QString>

#include <chrono>
#include <optional>

class KnownPasswords;

/// What is known of one command.
struct LedgerEntry {
    using Time = std::chrono::microseconds;

    /// Of a command whose first copy has just gone out.
    LedgerEntry(const SentCopy &copy, const KnownPasswords &passwords, const QDateTime &time_, Time sent_);

    int number = 0;
    QDateTime time;
    QString command; ///< with asterisks for passwords
    int copies = 0;
    std::optional<Time> firstAnswer; ///< after the first copy
    int datagrams = 0;
    qint64 bytes = 0; ///< on the wire
    QString reply;    ///< with asterisks for passwords
    Verdict verdict = Verdict::None;

    Time sent{};
    bool isOver = false; ///< the exchange has ended
    bool isAwaited = true;
    bool isUnanswered = false; ///< nothing has come in its time
    bool isLate = false;
    bool isCut = false;
    bool isUnreadable = false;
    bool isLosing = false;           ///< what came last may lack its last character
    std::optional<QString> readPart; ///< of a command that is too long what the server reads
    bool isReplyForgotten = false;   ///< to make room for later ones

    /// Takes the datagram that came at `at`.
    void take(const CameDatagram &datagram, const KnownPasswords &passwords, Time at);
    /// Hides passwords that were not known when it was written.
    void hide(const KnownPasswords &passwords);
    /// What is to be said of it by now.
    [[nodiscard]] Verdict judged() const;

private:
    void addText(const QString &text, const KnownPasswords &passwords);
    void judgeWords(QStringView text);

    Verdict words = Verdict::None; ///< what has been said by now
};

/// How long a command that nobody waits for may take for its answer, and when none is expected any more.
inline constexpr std::chrono::seconds inTime(3);
inline constexpr std::chrono::seconds silentAfter(15);
/// Of a reply in one entry, in characters.
inline constexpr qsizetype longestKeptReply = 1'000'000;
