// SPDX-License-Identifier: MIT
#pragma once

#include "connection_check.h"
#include "rcon/turn.h"
#include "rcon/udp_client.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

class QHostInfo;

/// Tries out the way to a server, step by step, by a link of its own: whatever the program has to say to its server
/// goes on beside it. Sends at most four datagrams: the public query, a console command, the same again when nobody
/// answers, and a command with a long reply. Commands keep their distance from those of the program.
class CheckRunner final : public QObject {
    Q_OBJECT

public:
    explicit CheckRunner(const Turn &turn_, QObject *parent = nullptr);

    void start(const QString &server_, const QString &port_, const QString &password_);
    /// Ends without a word.
    void stop();
    /// True while the system still looks up a name, also one that nobody waits for any more.
    [[nodiscard]] bool isLookingUp() const { return lookUps > 0; }

signals:
    void stepped(const CheckStep &step);
    void ended();
    /// What goes over its link.
    void datagramsent(const QByteArray &datagram, const QString &password);
    void datagramread(const QByteArray &datagram);

private:
    enum class Stage { Idle, LookUp, Query, Turn, Console, ConsoleAgain, Pause, Listing };
    /// A console command, and what is waited for then.
    struct Question {
        QByteArray command;
        Stage stage = Stage::Idle;
    };

    void takeAddresses(const QHostInfo &info);
    void goOnTo(const QString &address);
    void enter(Stage next, int milliseconds);
    void timeOut();
    void arrive();
    void ask(const QByteArray &text, Stage next, int milliseconds);
    void askConsole(const Question &asked);
    void takeQuery(const QByteArray &datagram);
    void endQuery();
    [[nodiscard]] bool isForConsole() const;
    void takeConsole(const QByteArray &datagram);
    void endConsole(const QString &words);
    void takeListing(const QByteArray &datagram);
    void keepEnd(const QByteArray &text);
    void finish(const CheckStep &step);

    const Turn turn;
    UDPClient link;
    QTimer tmrcheck;   ///< ends what is waited for
    QTimer tmrlisting; ///< ends the long reply, whatever comes still
    QElapsedTimer since;
    Stage stage = Stage::Idle;
    Question question; ///< that waits for its turn
    int run = 0;
    int lookUps = 0;
    QString server;
    QString port;
    QString password;
    Asked query;
    Asked console;
    QList<qsizetype> sizes;
    QString listing; ///< its beginning and its end
    qsizetype came = 0;
};
