// SPDX-License-Identifier: MIT
#pragma once

#include "connection_check.h"
#include "rcon/udp_client.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>

class QHostInfo;

/// How long a question of the check waits for its answer, in milliseconds, and how often it is sent.
struct CheckPatience {
    struct Question {
        int milliseconds = 0;
        int copies = 1;
    };
    // The strictest servers hear one command in half a second, and the latest answers known come after five.
    Question query{3000, 1};
    Question console{6000, 2}; // perhaps somebody else had used up the server's limit
    Question listing{6000, 1};
};

/// How the check keeps its distance from console commands that others send; without them there is nobody else.
struct CheckPace {
    std::function<qint64()> left; ///< milliseconds until a command can go out
    std::function<void()> taken;  ///< one has gone out
};

/// Tries out the way to a server, step by step, by a link of its own: whatever the program has to say to its server
/// goes on beside it. Unless told otherwise it sends at most four datagrams: the public query, a console command, the
/// same again when nobody answers, and a command with a long reply. Commands keep their distance from those of others.
class CheckRunner final : public QObject {
    Q_OBJECT

public:
    CheckRunner(const CheckPatience &patience_, CheckPace pace_, QObject *parent = nullptr);

    void start(const QString &server_, const QString &port_, const QString &password_);
    /// Ends without a word.
    void stop();
    /// True while the system still looks up a name, also one that nobody waits for any more.
    [[nodiscard]] bool isLookingUp() const { return lookUps > 0; }
    /// What the console has answered; nothing while it has not.
    [[nodiscard]] const std::optional<QString> &consoleWords() const { return words; }

signals:
    void stepped(const CheckStep &step);
    void ended();
    /// What goes over its link.
    void datagramsent(const QByteArray &datagram, const QString &password);
    void datagramread(const QByteArray &datagram);

private:
    enum class Stage { Idle, LookUp, Query, Console, Pause, Listing };

    void takeAddresses(const QHostInfo &info);
    void goOnTo(const QString &address);
    void enter(Stage next, int milliseconds);
    void timeOut();
    void arrive();
    void ask(const QByteArray &text_, Stage next, const CheckPatience::Question &how_);
    void send();
    void askConsole(const QByteArray &command, Stage next, const CheckPatience::Question &how_);
    [[nodiscard]] bool askAgain();
    void takeQuery(const QByteArray &datagram);
    void endQuery();
    void takeConsole(const QByteArray &datagram);
    void endConsole();
    void takeListing(const QByteArray &datagram);
    void keepEnd(const QByteArray &part);
    void finish(const CheckStep &step);

    const CheckPatience patience;
    const CheckPace pace;
    UDPClient link;
    QTimer tmrcheck;   ///< ends what is waited for
    QTimer tmrlisting; ///< ends the long reply, whatever comes still
    QElapsedTimer since;
    Stage stage = Stage::Idle;
    int run = 0;
    int lookUps = 0;
    QString server;
    QString port;
    QString password;
    Asked query;
    Asked console;
    QByteArray text;             ///< the question that is out
    CheckPatience::Question how; ///< it is asked
    int copiesSent = 0;
    bool isHeldBack = false; ///< until its turn
    std::optional<QString> words;
    QList<qsizetype> sizes;
    QString listing; ///< its beginning and its end
    qsizetype came = 0;
};
