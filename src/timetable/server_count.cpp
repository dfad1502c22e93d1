// SPDX-License-Identifier: MIT
#include "server_count.h"

#include "base/fault.h"
#include "emptiness.h"
#include "rcon/datagram_header.h"

#include <chrono>

using namespace Qt::StringLiterals;

ServerCount::ServerCount(QObject *parent) : QObject(parent), link(this), tmrcount(this)
{
    tmrcount.setObjectName(u"tmrcount"_s);
    tmrcount.setInterval(std::chrono::minutes(1));
    connect(&tmrcount, &QTimer::timeout, this, &ServerCount::tmrcount_Timer);
    connect(&link, &UDPClient::DataArrival, this, &ServerCount::arrive);
}

void ServerCount::start(const QString &address, qint32 port)
{
    link.Abandon();
    link.setRemoteHost(address);
    link.setRemotePort(port);
    tmrcount.start();
    ask();
}

void ServerCount::stop()
{
    tmrcount.stop();
    link.Abandon();
}

void ServerCount::tmrcount_Timer()
{
    if (!isAnswered)
        emit counted({});
    ask();
}

void ServerCount::ask()
{
    isAnswered = false;
    try {
        if (link.State() == UDPClient::Closed)
            link.Bind();
        link.SendData(datagramHeader + "getstatus");
    } catch (const Fault &) {
        // No answer will come, and that is told at the end of the minute.
    }
}

void ServerCount::arrive()
{
    QByteArray datagram;
    try {
        link.GetData(datagram);
    } catch (const Fault &) {
        // It was too large; who is named in its first part is there.
    }
    const std::optional<int> players = playersIn(datagram);
    if (!players || isAnswered)
        return;
    isAnswered = true;
    emit counted(players);
}
