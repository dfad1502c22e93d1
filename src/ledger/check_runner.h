// SPDX-License-Identifier: MIT
#pragma once

#include "connection_check.h"
#include "rcon/udp_client.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

class QHostInfo;

/// Tries out the way to a server, step by step, by a link of its own: whatever the program has to say to its server
/// goes on beside it. Sends at most four datagrams: the public query, a console command, the same again when nobody
/// answers, and a command with a long reply.
class CheckRunner final : public QObject {
    Q_OBJECT

public:
    explicit CheckRunner(QObject *parent = nullptr);

    void start(const QString &server_, const QString &port_, const QString &password_);
    /// Ends without a word.
    void stop();
    /// True while the system still looks up a name, also one that nobody waits for any more.
    [[nodiscard]] bool isLookingUp() const { return lookUps > 0; }

signals:
    void stepped(const CheckStep &step);
    void ended();

private:
    enum class Stage { Idle, LookUp, Query, Console, ConsoleAgain, Pause, Listing };

    void takeAddresses(const QHostInfo &info);
    void goOnTo(const QString &address);
    void enter(Stage next, int milliseconds);
    void timeOut();
    void arrive();
    void ask(const QByteArray &text, Stage next, int milliseconds);
    void askConsole(const QByteArray &command, Stage next, int milliseconds);
    void takeQuery(const QByteArray &datagram);
    void endQuery();
    void takeConsole(const QByteArray &datagram);
    void endConsole(const QString &words);
    void takeListing(const QByteArray &datagram);
    void finish(const CheckStep &step);

    UDPClient link;
    QTimer tmrcheck; ///< ends what is waited for
    QElapsedTimer since;
    Stage stage = Stage::Idle;
    int run = 0;
    int lookUps = 0;
    QString server;
    QString port;
    QString password;
    Asked query;
    Asked console;
    QList<qsizetype> sizes;
    QString listing;
};
