// SPDX-License-Identifier: MIT
#pragma once

#include "base/reentrancy_guard.h"
#include "list999.h"

#include <QObject>
#include <QTimer>

#include <functional>

class Conversation;
struct Services;

/// The automatic refresh of the player list, and its kick of players who stay at ping 999.
class PlayerRefresh final : public QObject {
    Q_OBJECT

public:
    /// `populate_` reads the list anew; false when that is being done already, or has been done anew meanwhile.
    PlayerRefresh(Services &services_, std::function<bool()> populate_, QObject *parent);

    /// Starts the timer with the preferred interval; one that is out of range becomes 30 seconds for this run. Throws
    /// Overflow from 33 seconds on.
    void start();
    void stop();
    /// Switched off, the kick forgets whom it has counted.
    void takePreferences();
    [[nodiscard]] bool isRunning() const { return tmrplayer.isActive(); }

    /// A populate begins: nobody has been seen yet.
    void beginPopulate(BroughtBy by);
    /// Takes note of one player of a populate.
    void check999(const QString &name, const QString &ping, const QString &num);

signals:
    /// It reads the list every so many seconds from now on; 0 when it has stopped.
    void runningchanged(int seconds);
    /// This command is about to be sent, because of the record of that name and slot number.
    void kicking(const QString &command, const QString &name, const QString &num);
    /// That command has had its time, whether it has gone out or not.
    void ended(const QString &command);
    /// The player in this slot has been kicked.
    void kicked(const QString &num);

private:
    void tmrplayer_Timer();
    void kickHanging(const Conversation &talk, const ReentrancyGuard &tick);

    Services &services;
    std::function<bool()> populate;
    List999 list999;
    BroughtBy populatedBy = BroughtBy::Person;
    QTimer tmrplayer;
    ReentrancyGuard::Door ticking;
};
