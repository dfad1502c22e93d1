// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

struct Services;

/// What one handler has to say to one server. It waits between its commands, and meanwhile the person may disconnect
/// and connect to another server: the rest is then neither sent nor confirmed. On a link that is only closed each
/// command says so by its own box.
class Conversation final {
public:
    explicit Conversation(const Services &services_);

    /// False when the server that it began with has been left for another.
    [[nodiscard]] bool lasts() const;
    void sendinfo(const QString &comm, bool quietmode = false) const;
    /// Sends a command that a server answers late or never, such as one that loads a map; quiet.
    void sendWithoutWaiting(const QString &comm) const;
    void waitseconds(qint16 seconds) const;
    /// Notes in the message list what has been done.
    void addmessage(const QString &text) const;

    const Services &services;

private:
    const int link;
};
