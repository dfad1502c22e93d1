// SPDX-License-Identifier: MIT
#pragma once

#include "ask_schedule.h"
#include "rcon/reply_piece.h"
#include "rcon/udp_client.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>

/// A name that has not been found by then is given up.
inline constexpr AskSchedule::Time longestLookUp{10'000};

/// What a server has printed in answer to one question.
struct RconReply {
    QString text;
    QList<ReplyPiece> pieces;
    int copies = 1;         ///< of the question that had gone out by then
    bool isEndless = false; ///< there was more of it than anybody waits for or keeps
};

/// Something to be asked, and how its answer is known.
struct RconQuestion {
    QByteArray request; ///< without the four bytes before it
    QByteArray head;    ///< with which each datagram of the answer begins, likewise
    int copies = 1;
    AskSchedule::Time timeout{};
    std::function<bool(const RconReply &)> isWhole = {}; ///< nothing more can follow; never, if not given
};

/// Asks a server one question after the other, as far apart as the strictest servers want it, and gathers the datagrams
/// of each answer. What does not come from the server, or does not begin as an answer does, is not looked at.
class RconClient final : public QObject {
    Q_OBJECT

public:
    RconClient();

    /// Yields to the event loop while a name is looked up, for ten seconds at most. Throws what UDPClient::Bind throws.
    void open(const QString &host, qint32 port);
    /// Ends all that goes on, without a word. What yields in `open` goes on with a fault.
    void close();
    [[nodiscard]] bool isLookingUp() const { return link.isLookingUp(); }

    /// Its answer, or that there is none, comes by one of the signals. One question at a time.
    void ask(const RconQuestion &question_);
    /// How long a strict server may not hear another command, if what went out last was one.
    [[nodiscard]] AskSchedule::Time untilHeard() const { return schedule.untilHeard(now()); }

signals:
    void answered(const RconReply &reply);
    /// `why` is the system's reason not to send it; empty when it was sent.
    void unanswered(const QString &why);

private:
    void goOn();
    void send();
    void take(const QByteArray &datagram);
    void add(const QByteArray &text, qsizetype size);
    [[nodiscard]] AskSchedule::Time now() const { return AskSchedule::Time(running.elapsed()); }

    UDPClient link;
    AskSchedule schedule;
    QElapsedTimer running;
    QTimer timer;
    RconQuestion question;
    RconReply reply;
    bool isAsking = false;
};

/// "rcon", the password and the command, to be answered by print. An answer that is the whole table of "status" ends at
/// once.
[[nodiscard]] RconQuestion rconQuestion(const QString &command, const QString &password, int copies,
                                        AskSchedule::Time timeout);
/// The public status, which comes in one datagram.
[[nodiscard]] RconQuestion statusQuery(int copies, AskSchedule::Time timeout);
/// Whether the command is the one that asks for the table of players.
[[nodiscard]] bool asksForPlayers(const QString &command);
