// SPDX-License-Identifier: MIT
#pragma once

#include <QDate>
#include <QList>

class Clock;
class Exchange;
class UDPClient;

/// The link to the server, which only conversations, readings and connecting can use: there is no other way for a page
/// to speak to the server.
class ServerLink final {
public:
    ServerLink(bool &rconcollect, bool &rconbusy, UDPClient &udpclient_, Exchange &exchange_)
        : collecting{rconcollect, {}}, busy{rconbusy, {}}, udpclient(udpclient_), exchange(exchange_)
    {
    }
    Q_DISABLE_COPY_MOVE(ServerLink)

private:
    friend class Conversation;
    friend class Reading;
    friend class TimersHeldOff;
    friend class Connecting;
    friend class FlagHolder;
    friend class PageAtWork;
    friend class Turn;

    /// The day and the server that a scope belongs to. One of another day may be stuck in a wait that runs across
    /// midnight and never ends, and one of another server has nothing more to say: neither is waited for.
    struct Epoch {
        QDate day;
        int generation = 0; ///< of the link

        bool operator==(const Epoch &) const = default;
    };
    [[nodiscard]] Epoch epoch(const Clock &clock) const;

    /// A flag of the session with the scopes that hold it, the outermost first. Only they write it.
    struct HeldFlag {
        bool &value;
        QList<Epoch> holders;
    };

    HeldFlag collecting;
    HeldFlag busy;
    QList<Epoch> pages; ///< that are at work while the two timers go on
    QList<Epoch> notes; ///< whose notes the progress window shows or will show again
    UDPClient &udpclient;
    Exchange &exchange;
};
