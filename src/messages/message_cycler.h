// SPDX-License-Identifier: MIT
#pragma once

#include "base/reentrancy_guard.h"
#include "message_cycle.h"
#include "serverconfig/placeholder_variables.h"

#include <QObject>
#include <QTimer>

class Conversation;
class MessageSets;
struct Services;

/// Says the chat messages of one saved set on the server, one every few minutes, until it is stopped.
class MessageCycler final : public QObject {
    Q_OBJECT

public:
    MessageCycler(Services &services_, const MessageSets &sets_, PlaceholderVariables variables_, QObject *parent);

    /// Starts with the saved set of that name, unless something is in the way, which a box says. `autoaction`: on the
    /// program's own initiative, which asks nothing and says only that there are `unsaved` changes.
    void start(const QString &name, bool unsaved, bool autoaction);
    void stop();
    [[nodiscard]] bool isRunning() const { return tmrmessage.isActive(); }

    /// The minutes between two messages as typed; what does not begin with a number never comes round.
    void setInterval(const QString &text);
    /// The next minute sends.
    void sendNext();
    /// So does it when more minutes than that have been counted, which would never come round.
    void catchUp(double minutes);
    /// What is said and when next, in one line; empty when nothing is.
    [[nodiscard]] QString outlook() const;

signals:
    void runningchanged(bool isRunning);
    /// The outlook is another one.
    void outlookchanged();

private:
    void tmrmessage_Timer();
    void sayNext(const ReentrancyGuard &tick);
    [[nodiscard]] QString filled(QString message, const Conversation &talk, const ReentrancyGuard &tick,
                                 bool &hasAsked) const;
    [[nodiscard]] static QString askVariable(const Conversation &talk, const QString &name);

    Services &services;
    const MessageSets &sets;
    const PlaceholderVariables variables;
    MessageCycle cycle;
    QString cyclename; ///< of the set
    int cycleset = -1; ///< slot of the saved set that is being said
    QString interval;
    QTimer tmrmessage;
    ReentrancyGuard::Door ticking;
};
