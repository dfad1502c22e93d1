// SPDX-License-Identifier: MIT
#pragma once

#include "rcon/udp_client.h"

#include <QObject>
#include <QTimer>

#include <optional>

/// Asks a server once a minute, by a socket of its own and without the password, how many players are there.
class ServerCount final : public QObject {
    Q_OBJECT

public:
    explicit ServerCount(QObject *parent = nullptr);

    void start(const QString &address, qint32 port);
    void stop();
    [[nodiscard]] bool isRunning() const { return tmrcount.isActive(); }

signals:
    /// Nothing when the server has not answered within the minute.
    void counted(std::optional<int> players);

private:
    void tmrcount_Timer();
    void arrive();
    void ask();

    UDPClient link;
    QTimer tmrcount;
    bool isAnswered = false;
};
