// SPDX-License-Identifier: MIT
#pragma once

#include <QHostAddress>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <memory>

class QEventLoop;
class QUdpSocket;

/// One UDP socket with a fixed far end. It is never connected in the system's sense, so that a closed port over there
/// is plain silence. Only datagrams from the far end's address and port are let in.
class UDPClient : public QObject {
    Q_OBJECT

public:
    enum SocketState { Closed = 0, Open = 1, Connected = 7 };

    /// The part of a datagram that GetData can take, in bytes; what is beyond it is lost.
    static constexpr qint64 bufferSize = 8192;

    explicit UDPClient(QObject *parent = nullptr);
    ~UDPClient() override;

    [[nodiscard]] SocketState State() const;
    /// Tells one link from the next; what belongs to an earlier one has nothing more to say.
    [[nodiscard]] int generation() const { return links; }
    /// Where datagrams go, as found out by `Bind`.
    [[nodiscard]] QHostAddress address() const { return remoteAddress; }
    [[nodiscard]] qint32 port() const { return remotePort; }
    void setRemoteHost(const QString &host) { remoteHost = host; }
    void setRemotePort(qint32 port) { remotePort = port; }

    /// Finds the remote host's address and opens the socket on any local port; yields to the event loop while a name
    /// is looked up. Throws HostNotFound, AddressNotAvailable (the port is not 1 to 65535), NotConnected when another
    /// link has been begun meanwhile, or the system's error.
    void Bind();
    /// Sends one datagram. Throws NotConnected, NoRoute, DatagramTooLarge or the system's socket error.
    virtual void SendData(const QByteArray &bytes);
    /// Takes the datagram that DataArrival announced. Throws DatagramTooLarge after `bytes` has got its first part.
    void GetData(QByteArray &bytes);
    /// The bytes on the wire of the datagram that was announced last.
    [[nodiscard]] qint64 arrivedSize() const { return arrivedBytes; }
    /// Closes the socket; a look-up that is going on ends without an address.
    void Close();
    /// Closes the socket and begins a new link, so that whoever still speaks over the old one has nothing more to say.
    void Abandon();
    /// True while the system still looks up a name, also one that nobody waits for any more.
    [[nodiscard]] bool isLookingUp() const { return lookUps > 0; }

signals:
    /// One datagram has come; delivered from the event loop, never from inside SendData.
    void DataArrival();
    /// A datagram has gone out.
    void datagramsent(const QByteArray &datagram);
    /// A datagram has been read, whole; it is announced later. A slot must not yield.
    void datagramread(const QByteArray &datagram);
    /// A new link has begun: nothing that comes from now on answers what was sent before.
    void linkbegun();

private:
    [[nodiscard]] QHostAddress lookUp();
    void collect();
    void announce();

    struct Datagram {
        QByteArray bytes; ///< one more than can be taken, at most
        qint64 size = 0;  ///< on the wire
    };

    QString remoteHost;
    qint32 remotePort = 0;
    QHostAddress remoteAddress;
    std::unique_ptr<QUdpSocket> socket;
    QList<Datagram> waiting; ///< those that have come and are not announced yet
    QByteArray arrived;
    qint64 arrivedBytes = 0;
    QPointer<QEventLoop> lookUpWait;
    int lookUps = 0;
    int links = 0;
    QTimer goOn;
};
