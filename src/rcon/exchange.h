// SPDX-License-Identifier: MIT
#pragma once

#include "base/prompts.h"
#include "base/wire_text.h"

#include <QObject>
#include <QString>

class Clock;
class Output;
class ServerFields;
class UDPClient;
struct Session;

/// Sends console commands, waits for their replies and gathers what arrives. Pages reach it by `Conversation`.
/// The waits yield to the event loop, so any other handler may run inside them.
class Exchange final : public QObject {
    Q_OBJECT

public:
    Exchange(Session &session_, UDPClient &udpclient_, const ServerFields &fields_, Output &output_, Prompts &prompts_,
             const Clock &clock_, CodePage codePage_ = {});

    /// Sends one console command, up to five times at three seconds' distance, until a reply datagram has come; its
    /// text is then in the session's `rconreply`. Shows a box when the link is closed, has no route or stays silent.
    /// `quietmode` leaves out the echo of the command in the RCON pane; a tick brings no box that is open already.
    void sendinfo(const QString &comm, bool quietmode = false, BroughtBy by = BroughtBy::Person);
    /// Sends `query` without the word rcon and the password, once, and yields once. Throws what SendData throws.
    void sendquery(const QString &query);
    /// Waits that many seconds by the time of day, from half a second less to half a second more, or until the main
    /// window closes.
    void waitseconds(qint16 seconds);
    /// Tells one exchange from the next: how often something has been asked. A reply that is still being read has been
    /// emptied by another exchange when this has changed.
    [[nodiscard]] int exchanges() const { return asked; }
    /// The password that was sent last by the command that has ended last.
    [[nodiscard]] const QString &sentPassword() const { return lastPassword; }
    /// Lets the event loop run once.
    void yield();

private:
    void UDPClient_DataArrival();
    [[nodiscard]] bool send(const QString &comm, BroughtBy by);
    void waitForReply();
    void sendText(const QString &text);
    [[nodiscard]] QString receive();
    void tellTruncated();

    Session &session;
    UDPClient &udpclient;
    const ServerFields &fields;
    Output &output;
    Prompts &prompts;
    const Clock &clock;
    QString lastPassword;
    const CodePage codePage;
    int asked = 0;
    BroughtBy lastBy = BroughtBy::Person;
    bool yieldingInArrival = false;
    bool truncationTold = false;
};
