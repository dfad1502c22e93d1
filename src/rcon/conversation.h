// SPDX-License-Identifier: MIT
#pragma once

#include "base/prompts.h"

#include <QList>
#include <QString>

#include <functional>

struct ReplyPiece;
struct Services;

/// How a command has fared that was told once.
enum class Fate {
    HeldUp,    ///< not sent: a box or another command has come before it, and what it goes by may be old
    Unsent,    ///< not sent: the server has been left, or there is no way to it
    Silent,    ///< no answer has come
    Disturbed, ///< a box or another command has come between it and its answer
    Answered
};

/// What one handler has to say to one server, from here on; the only way for a page to speak to a server. The handler
/// waits between its commands, and meanwhile the person may disconnect and connect anew, to another server perhaps: the
/// rest is then neither sent nor confirmed. On a link that is merely closed each command says so by its own box.
class Conversation final {
public:
    /// `by_`: a tick brings no box that is open already.
    explicit Conversation(const Services &services_, BroughtBy by_ = BroughtBy::Person);

    /// True while the server that it began with is connected and the program goes on.
    [[nodiscard]] bool isOpen() const;
    /// True when a new link has been begun since.
    [[nodiscard]] bool isSuperseded() const;

    /// Sends a command and waits for its reply: up to 15 seconds, with boxes for what goes wrong. `quietmode` leaves
    /// out the echo in the RCON pane. Like `wait` and `note` it does nothing when superseded, and returns false when it
    /// was or is by then.
    bool tell(const QString &comm, bool quietmode = false) const;
    /// Sends a command that a server answers late or never, such as one that loads a map; quiet.
    bool tellWithoutWaiting(const QString &comm) const;
    /// Sends a command once, quietly and in the time that the strictest server leaves between two: a copy of it might
    /// meet somebody else. Silence is told by the result alone, and so is all else when `isQuiet`; see
    /// `Exchange::sendonce`.
    [[nodiscard]] Fate tellOnce(const QString &comm, const std::function<bool(const QString &reply)> &isWhole = {},
                                bool isQuiet = false) const;
    /// Sends a command once, in the time that the strictest server leaves between two, and neither waits for the reply
    /// nor says anything. Returns the number of the exchange; 0 when it could not be sent.
    [[nodiscard]] int tellAside(const QString &comm) const;
    /// True while another handler waits for the server or a page reads: a command would empty its reply.
    [[nodiscard]] bool isElsewhere() const;
    /// True while a page reads or sends what its controls show.
    [[nodiscard]] bool isPageAtWork() const;
    /// Sends a command whose reply comes in many datagrams, and gives it a second more. False when nothing came, too.
    bool ask(const QString &comm, bool quietmode = true) const;
    /// Sends a query, without the word rcon and the password, once. Throws what UDPClient::SendData throws.
    void sendQuery(const QString &comm) const;
    /// Waits five seconds for the answer to a query, which is added to the reply. False when none came, or the server
    /// was left.
    [[nodiscard]] bool awaitAnswer() const;
    /// Waits that many seconds by the time of day, half a second more or less.
    bool wait(qint16 seconds) const;
    /// Lets the event loop run once.
    void yield() const;
    /// Notes in the message list what has been done.
    bool note(const QString &text) const;

    /// What has come since the last command, whoever gave it.
    [[nodiscard]] const QString &reply() const;
    /// Which parts of it came in one datagram each.
    [[nodiscard]] const QList<ReplyPiece> &pieces() const;
    void clearReply() const;
    /// True until another command empties the reply as it was at the end of the last `ask` or `awaitAnswer`.
    [[nodiscard]] bool ownsReply() const;

private:
    void beginStep() const;

    const Services &services;
    const BroughtBy by;
    const int generation; ///< of the link
    mutable QString query;
    mutable int asked = 0; ///< which exchange the reply belongs to
};
