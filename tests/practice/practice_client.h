// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QList>
#include <QNetworkDatagram>
#include <QUdpSocket>

/// A game client for tests: sends requests to one port of this machine and keeps every datagram that comes back.
class PracticeClient final {
public:
    explicit PracticeClient(quint16 port_) : port(port_) { socket.bind(QHostAddress::LocalHost, 0); }

    void send(const QByteArray &datagram) { socket.writeDatagram(datagram, QHostAddress::LocalHost, port); }
    void rcon(const QByteArray &command, const QByteArray &password = "practice")
    {
        send("\xFF\xFF\xFF\xFFrcon " + password + ' ' + command);
    }

    /// Reads what has come by now.
    const QList<QByteArray> &datagrams()
    {
        while (socket.hasPendingDatagrams())
            arrived.append(socket.receiveDatagram().data());
        return arrived;
    }
    qsizetype count() { return datagrams().size(); }

    /// The text of all printed replies together.
    QByteArray text()
    {
        QByteArray text;
        for (const QByteArray &datagram : datagrams())
            text += datagram.sliced(10);
        return text;
    }
    void forget() { arrived.clear(); }

private:
    QUdpSocket socket;
    quint16 port;
    QList<QByteArray> arrived;
};
