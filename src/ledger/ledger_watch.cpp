// SPDX-License-Identifier: MIT
#include "ledger_watch.h"

#include "base/clock.h"
#include "rcon/exchange.h"
#include "rcon/udp_client.h"

#include <algorithm>

using namespace Qt::StringLiterals;

LedgerWatch::LedgerWatch(const Exchange &exchange, const UDPClient &udpclient, const Clock &clock_, QObject *parent)
    : QObject(parent), clock(clock_), tmrledger(new QTimer(this))
{
    tmrledger->setObjectName(u"tmrledger"_s);
    tmrledger->setSingleShot(true);
    connect(tmrledger, &QTimer::timeout, this, &LedgerWatch::tmrledger_Timer);

    connect(&exchange, &Exchange::copysent, this,
            [this](const SentCopy &copy) { book.sent(copy, clock.now(), clock.elapsed()); });
    connect(&exchange, &Exchange::datagramcame, this,
            [this](const CameDatagram &datagram) { book.came(datagram, clock.elapsed()); });
    connect(&exchange, &Exchange::over, this, [this](int number, bool isAwaited) {
        book.over(number, isAwaited);
        startTimer();
    });
    connect(&udpclient, &UDPClient::linkbegun, this, [this] { book.linkBegun(); });
}

void LedgerWatch::tmrledger_Timer()
{
    book.judgeSilence(clock.elapsed());
    startTimer();
}

// When an answer comes the timer is left to run out: then it finds nothing to do.
void LedgerWatch::startTimer()
{
    const std::optional<Ledger::Time> next = book.nextSilence();
    if (!next || tmrledger->isActive())
        return;
    constexpr std::chrono::milliseconds least(1);
    tmrledger->start(std::max(std::chrono::ceil<std::chrono::milliseconds>(*next - clock.elapsed()), least));
}
