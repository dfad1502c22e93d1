// SPDX-License-Identifier: MIT
#include "udp_client.h"

#include "base/datagram_socket.h"
#include "base/fault.h"
#include "base/system_error.h"

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
constexpr qsizetype mostWaiting = 64; // datagrams
constexpr qint64 largestDatagram = 65535;

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
    goOn.setSingleShot(true); // a timer, because what is posted comes before the window's turn
    connect(&goOn, &QTimer::timeout, this, &UDPClient::announce);
}

UDPClient::~UDPClient() = default;

UDPClient::SocketState UDPClient::State() const
{
    return socket ? Open : Closed;
}

void UDPClient::Bind()
{
    Abandon();
    const int link = links;
    if (remotePort < 1 || remotePort > 65535)
        throw Fault(Fault::AddressNotAvailable);
    const QHostAddress address = lookUp();
    if (link != links)
        throw Fault(Fault::NotConnected);
    remoteAddress = address;

    auto bound = std::make_unique<QUdpSocket>();
    const bool isIPv4 = remoteAddress.protocol() == QAbstractSocket::IPv4Protocol;
    if (!bound->bind(isIPv4 ? QHostAddress::AnyIPv4 : QHostAddress::AnyIPv6, 0))
        throw Fault(lastSocketError(), bound->errorString());
    ignoreClosedPorts(bound->socketDescriptor());
    connect(bound.get(), &QUdpSocket::readyRead, this, [this] {
        collect();
        QMetaObject::invokeMethod(this, &UDPClient::announce, Qt::QueuedConnection);
    });
    socket = std::move(bound);
}

QHostAddress UDPClient::lookUp()
{
    QHostAddress address(remoteHost);
    if (!address.isNull())
        return address;

    QEventLoop wait;
    lookUpWait = &wait; // cppcheck-suppress danglingLifetime // forgotten when the loop is gone
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

void UDPClient::SendData(const QByteArray &bytes)
{
    if (!socket)
        throw Fault(Fault::NotConnected);
    clearSystemError();
    if (socket->writeDatagram(bytes, remoteAddress, static_cast<quint16>(remotePort)) != bytes.size())
        throw Fault(lastSocketError(), socket->errorString());
    emit datagramsent(bytes);
}

void UDPClient::GetData(QByteArray &bytes)
{
    const QByteArray datagram = std::exchange(arrived, {});
    bytes = datagram.first(std::min<qsizetype>(datagram.size(), bufferSize));
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
    waiting.clear();
}

void UDPClient::Abandon()
{
    Close();
    ++links;
    emit linkbegun();
}

// Reads at once and until a read comes back empty: while a notification waits to be acted on, Qt's socket can fall
// silent for good, and only a read re-arms it. What has been read is announced from the event loop, because readyRead
// is not emitted again inside its own slot: a send that waits inside an arrival must get its datagrams too.
void UDPClient::collect()
{
    QElapsedTimer collecting; // strangers' datagrams do not fill the room for those waiting
    collecting.start();
    while (socket && waiting.size() < mostWaiting) {
        if (collecting.hasExpired(turn)) {
            goOn.start();
            return;
        }
        // Windows loses a datagram for which there is not room enough.
        const QNetworkDatagram datagram = socket->receiveDatagram(largestDatagram);
        if (!datagram.isValid())
            break;
        if (datagram.senderPort() != remotePort || !datagram.senderAddress().isEqual(remoteAddress))
            continue;
        const QByteArray bytes = datagram.data();
        waiting.append({bytes.left(bufferSize + 1), bytes.size()}); // one byte more than GetData takes: there was more
        emit datagramread(bytes);
    }
}

void UDPClient::announce()
{
    const int announced = generation();
    QElapsedTimer announcing;
    announcing.start();
    while (!waiting.isEmpty() && generation() == announced) {
        if (announcing.hasExpired(turn)) {
            goOn.start();
            return;
        }
        const Datagram next = waiting.takeFirst();
        arrived = next.bytes;
        arrivedBytes = next.size;
        emit DataArrival();
    }
    collect(); // the system holds what there was no room for
    if (!waiting.isEmpty())
        goOn.start();
}
