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
    explicit PracticeClient(quint16 port) : m_port(port) { m_socket.bind(QHostAddress::LocalHost, 0); }

    void send(const QByteArray &datagram) { m_socket.writeDatagram(datagram, QHostAddress::LocalHost, m_port); }
    void rcon(const QByteArray &command, const QByteArray &password = "practice")
    {
        send("\xFF\xFF\xFF\xFFrcon " + password + ' ' + command);
    }

    /// Reads what has come by now.
    const QList<QByteArray> &datagrams()
    {
        while (m_socket.hasPendingDatagrams())
            m_datagrams.append(m_socket.receiveDatagram().data());
        return m_datagrams;
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
    void forget() { m_datagrams.clear(); }

private:
    QUdpSocket m_socket;
    quint16 m_port;
    QList<QByteArray> m_datagrams;
};
