// SPDX-License-Identifier: MIT
#pragma once

#include "ledger.h"

#include <QObject>
#include <QTimer>

class Clock;
class Exchange;
class UDPClient;

/// Keeps the ledger: it looks on at what goes out and comes in. Its timer runs only while a command that nobody waits
/// for has no answer.
class LedgerWatch final : public QObject {
    Q_OBJECT

public:
    LedgerWatch(const Exchange &exchange, const UDPClient &udpclient, const Clock &clock_, QObject *parent = nullptr);

    [[nodiscard]] Ledger &ledger() { return book; }

private:
    void tmrledger_Timer();
    void startTimer();

    const Clock &clock;
    Ledger book;
    QTimer *tmrledger;
};
