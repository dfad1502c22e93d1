// SPDX-License-Identifier: MIT
#pragma once

#include "departures.h"
#include "game_server.h"
#include "practice_options.h"
#include "rate_limit.h"
#include "replay.h"

#include <QByteArray>
#include <QHash>
#include <QHostAddress>
#include <QList>
#include <QObject>
#include <QRandomGenerator>
#include <QString>
#include <QUdpSocket>

#include <chrono>
#include <functional>
#include <optional>

/// The UDP end of a practice game: reads requests, has the game answer them, and sends the replies over a line that can
/// be made as bad as wanted. While a map loads it answers nothing, and afterwards the last ten datagrams that came
/// meanwhile. Between two requests nothing moves by itself: call `game().tick()` for that.
class PracticeServer final : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PracticeServer)

public:
    explicit PracticeServer(const PracticeOptions &options_ = {}, QObject *parent = nullptr);
    ~PracticeServer() override;

    /// Port 0 takes any free one. False when it cannot be had; `errorString()` then says why.
    [[nodiscard]] bool listen(const QHostAddress &address = QHostAddress::LocalHost, quint16 port = 0);
    /// From now on the port is closed and requests get lost in the system, those that wait for a map too.
    void close();
    [[nodiscard]] quint16 port() const;
    [[nodiscard]] QString errorString() const;

    [[nodiscard]] GameServer &game() { return gameServer; }

    /// Every datagram that came, whole and in order, also the ones that were lost, not answered, or wait for a map.
    [[nodiscard]] QList<QByteArray> requests() const { return received; }
    /// The same without header, "rcon" and password: the command of each, or "getstatus".
    [[nodiscard]] QList<QByteArray> commands() const;
    void forgetRequests() { received.clear(); }

    void setPassword(const QString &password);
    /// Of what comes from now on: what waits for a map is answered all the same.
    void setSilent(bool silent) { options.silent = silent; }
    void setReorder(bool reorder) { options.reorder = reorder; }
    void setLoss(int percent) { options.lossPercent = percent; }
    void setLatency(int milliseconds) { options.latencyMs = milliseconds; }
    void setMapLoad(int milliseconds) { options.mapLoadMs = milliseconds; }
    void setDatagramSize(int bytes) { options.datagramSize = bytes; }

    /// By which the limit on requests, late replies and recordings go: a time since any moment that stays the same. By
    /// default the system's.
    void setClock(const Departures::Clock &clock) { departures.setClock(clock); }

    /// From now on the game is left alone, and everybody gets the answers that the recorded server gave.
    void replay(const Replay &recording) { recorded = recording; }

    /// Requests whose command (or "getstatus") is exactly `command` get these texts from now on, each in a datagram of
    /// its own behind header, "print" and line feed, instead of the game's reply; none at all when the list is empty.
    /// The command is not executed. A wrong password is refused all the same.
    void answer(const QByteArray &command, const QList<QByteArray> &datagramTexts);
    /// The same with whole datagrams, which go out as they are.
    void answerRaw(const QByteArray &command, const QList<QByteArray> &datagrams);
    /// Takes `answer` and `answerRaw` back.
    void answerAsUsual(const QByteArray &command);

    /// Sends one datagram, as it is and at once, to whoever sent the last request. False when nobody has, or when the
    /// system refuses.
    bool sendRaw(const QByteArray &datagram);

signals:
    /// When the request comes, before it is looked at, so that a slot may still change how it is answered.
    void requested(const QByteArray &datagram);
    /// One line for people, without the time. It may hold control characters of the client's or the players' making.
    void happened(const QString &line);

private:
    struct Client {
        QHostAddress address;
        quint16 port = 0;

        [[nodiscard]] QString text() const;
    };
    struct Arrival {
        QByteArray datagram;
        Client client;
    };

    void readRequests();
    void take(const Arrival &arrival);
    void answerWaiting();
    void answerOne(const Arrival &arrival);
    void tellUnanswered(const Arrival &arrival, const QString &why);
    void takeRecorded(const QByteArray &datagram, const Client &client);
    void takeRcon(const Request &request, const QByteArray &commandAsSent, const Client &client);
    void takeStatus(const Client &client);
    [[nodiscard]] bool answerCanned(const QByteArray &command, const Client &client);
    void startLoading(const QString &log, const Client &client);
    void reply(const QString &text, const Client &client);
    void post(QList<QByteArray> datagrams, const Client &client);
    void sendLater(std::chrono::microseconds delay, const QByteArray &datagram, const Client &client);
    void send(const QByteArray &datagram, const Client &client);
    [[nodiscard]] bool isLost();

    PracticeOptions options;
    GameServer gameServer;
    RateLimit rateLimit;
    Departures departures; ///< the replies that leave late
    std::optional<Replay> recorded;
    QUdpSocket socket;
    QRandomGenerator random;   ///< decides what the line loses
    QRandomGenerator lateness; ///< and this one how late a reply leaves
    QHash<QByteArray, QList<QByteArray>> preparedAnswers;
    QList<QByteArray> received;
    QList<Arrival> waiting; ///< for the server to look at them, which it does at once unless it loads a map
    Client lastClient;
    bool loading = false;
};
