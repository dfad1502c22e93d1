// SPDX-License-Identifier: MIT
#pragma once

#include "base/wire_text.h"
#include "fail_test.h"
#include "practice/datagrams.h"
#include "practice/game_server.h"

#include <QHash>
#include <QNetworkDatagram>
#include <QUdpSocket>

#include <functional>

/// The options of a game on which nobody is, with this mod.
inline PracticeOptions desertedGame(const QString &mod = {})
{
    PracticeOptions options;
    options.players = 0;
    options.mod = mod;
    return options;
}

/// Stands in for a server that is hostile or broken, and for the strangers around it. It answers like a game unless it
/// has been told otherwise, and sends what it wants, from where it wants, whether it has been asked or not.
class HostileServer final {
public:
    enum class Sender { Itself, AnotherPort, AnotherAddress };

    explicit HostileServer(const PracticeOptions &options = desertedGame()) : game(options)
    {
        if (!itself.bind(QHostAddress::LocalHost) || !neighbour.bind(QHostAddress::LocalHost))
            failTest(QStringLiteral("no port for the server"));
        (void)impostor.bind(QHostAddress(QStringLiteral("127.0.0.2")), port());
        QObject::connect(&itself, &QUdpSocket::readyRead, &itself, [this] { readRequests(); });
    }

    [[nodiscard]] quint16 port() const { return itself.localPort(); }
    /// False where this system has no second address of its own.
    [[nodiscard]] bool has(Sender sender) { return socketOf(sender).state() == QAbstractSocket::BoundState; }

    /// Sends the datagram as it is, to where the last request came from.
    void send(const QByteArray &datagram, Sender sender = Sender::Itself)
    {
        socketOf(sender).writeDatagram(datagram, QHostAddress::LocalHost, nearPort);
    }

    /// The datagrams with which the game answers this command.
    [[nodiscard]] QList<QByteArray> honestAnswer(const QByteArray &command)
    {
        if (command == "getstatus")
            return {plainDatagram(toAnsi(game.statusResponse()))};
        return printDatagrams(toAnsi(game.execute(fromAnsi(command)).reply), 1000);
    }

    GameServer game;
    QList<QByteArray> commands;                                ///< that came
    QHash<QByteArray, QList<QByteArray>> answers;              ///< to single commands, instead of the game's
    std::function<QList<QByteArray>(const QByteArray &)> liar; ///< answers every command, when there is one
    std::function<void(const QByteArray &)> beforeAnswer;      ///< happens before each answer

private:
    QUdpSocket &socketOf(Sender sender)
    {
        switch (sender) {
        case Sender::AnotherPort:
            return neighbour;
        case Sender::AnotherAddress:
            return impostor;
        case Sender::Itself:
            break;
        }
        return itself;
    }

    void readRequests()
    {
        while (itself.hasPendingDatagrams()) {
            const QNetworkDatagram request = itself.receiveDatagram();
            nearPort = static_cast<quint16>(request.senderPort());
            const QByteArray command = readRequest(request.data()).command;
            commands.append(command);
            if (beforeAnswer)
                beforeAnswer(command);
            for (const QByteArray &datagram : answerTo(command))
                send(datagram);
        }
    }

    [[nodiscard]] QList<QByteArray> answerTo(const QByteArray &command)
    {
        if (liar)
            return liar(command);
        return answers.contains(command) ? answers.value(command) : honestAnswer(command);
    }

    QUdpSocket itself;
    QUdpSocket neighbour;
    QUdpSocket impostor;
    quint16 nearPort = 0;
};
