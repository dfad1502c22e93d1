// SPDX-License-Identifier: MIT
#include "udp_client.h"

#include "base/fault.h"
#include "base/system_error.h"
#include "base/wire_text.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QHostInfo>
#include <QNetworkDatagram>
#include <QUdpSocket>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// A flood is read in turns of this many milliseconds, so that the window and the waits get theirs in between.
constexpr qint64 turn = 20;

QHostAddress preferred(const QList<QHostAddress> &addresses)
{
    const auto isIPv4 = [](const QHostAddress &address) { return address.protocol() == QAbstractSocket::IPv4Protocol; };
    const auto found = std::ranges::find_if(addresses, isIPv4);
    return found != addresses.end() ? *found : addresses.value(0);
}

} // namespace

UDPClient::UDPClient(QObject *parent) : QObject(parent)
{
    setObjectName(u"UDPClient"_s);
    readOn.setSingleShot(true); // a timer, because what is posted comes before the window's turn
    connect(&readOn, &QTimer::timeout, this, &UDPClient::readDatagrams);
}

UDPClient::~UDPClient() = default;

UDPClient::SocketState UDPClient::State() const
{
    return socket ? Open : Closed;
}

void UDPClient::Bind()
{
    Close();
    if (remotePort < 1 || remotePort > 65535)
        throw Fault(Fault::AddressNotAvailable);
    remoteAddress = lookUp();

    auto bound = std::make_unique<QUdpSocket>();
    const bool isIPv4 = remoteAddress.protocol() == QAbstractSocket::IPv4Protocol;
    if (!bound->bind(isIPv4 ? QHostAddress::AnyIPv4 : QHostAddress::AnyIPv6, 0))
        throw Fault(lastSocketError(), bound->errorString());
    // Queued, because readyRead is not emitted again inside its own slot: a send that waits inside the arrival of a
    // datagram must get its datagrams too.
    connect(bound.get(), &QUdpSocket::readyRead, this, &UDPClient::readDatagrams, Qt::QueuedConnection);
    socket = std::move(bound);
    ++bindings;
}

QHostAddress UDPClient::lookUp()
{
    QHostAddress address(remoteHost);
    if (!address.isNull())
        return address;

    QEventLoop wait;
    lookUpWait = &wait;
    ++lookUps;
    QHostInfo::lookupHost(remoteHost, this, [this, &address, waiting = lookUpWait](const QHostInfo &info) {
        --lookUps;
        if (!waiting)
            return; // given up meanwhile
        address = preferred(info.addresses());
        waiting->quit();
    });
    wait.exec();
    if (address.isNull())
        throw Fault(Fault::HostNotFound);
    return address;
}

void UDPClient::SendData(const QString &text)
{
    if (!socket)
        throw Fault(Fault::NotConnected);
    const QByteArray bytes = toAnsi(text);
    clearSystemError();
    if (socket->writeDatagram(bytes, remoteAddress, static_cast<quint16>(remotePort)) != bytes.size())
        throw Fault(lastSocketError(), socket->errorString());
}

void UDPClient::GetData(QString &text)
{
    const QByteArray datagram = std::exchange(arrived, {});
    text = fromAnsi(datagram.first(std::min<qsizetype>(datagram.size(), bufferSize)));
    if (datagram.size() > bufferSize)
        throw Fault(Fault::DatagramTooLarge);
}

void UDPClient::Close()
{
    if (lookUpWait)
        lookUpWait->quit();
    // The socket may be closed from inside the arrival of its own datagram.
    if (socket)
        socket.release()->deleteLater();
}

// Reads until a read comes back empty. To ask hasPendingDatagrams() first would leave the socket deaf after a
// notification without data: only a read re-arms it.
void UDPClient::readDatagrams()
{
    const QPointer<QUdpSocket> read = socket.get();
    QElapsedTimer reading;
    reading.start();
    while (read && read == socket.get()) {
        if (reading.hasExpired(turn)) {
            readOn.start();
            return;
        }
        // One byte more than the buffer shows that there was more.
        const QNetworkDatagram datagram = read->receiveDatagram(bufferSize + 1);
        if (!datagram.isValid())
            return;
        if (datagram.senderPort() != remotePort || !datagram.senderAddress().isEqual(remoteAddress))
            continue;
        arrived = datagram.data();
        emit DataArrival();
    }
}
