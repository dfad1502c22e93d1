// SPDX-License-Identifier: MIT
#pragma once

#include "base/prompts.h"
#include "base/wire_text.h"
#include "command_pace.h"
#include "reply_piece.h"
#include "traffic.h"

#include <QDate>
#include <QList>
#include <QObject>
#include <QString>

#include <functional>
#include <utility>

class Clock;
class Output;
class ServerFields;
class UDPClient;
struct Session;

/// A command whose answer is being waited for.
struct Wait {
    QString command;
    int seconds = 0; ///< that the wait has lasted
    int copy = 1;    ///< which of the copies was sent last
    int copies = 1;  ///< that are sent without an answer
    int longest = 0; ///< seconds that the wait can last
    int step = 1;    ///< which of the commands of the same reading it is
    int steps = 1;   ///< that the reading consists of
};

/// How far a reading of several commands has come.
struct Steps {
    int done = 0;
    int of = 1;
};

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
    /// Sends one console command a single time and says nothing about it: not sooner after the last command than the
    /// strictest server listens again, and "status" not before answers to earlier copies of it have had their time.
    /// Waits six seconds for the reply, and then one and a half more until `isWhole` finds it complete. True when a
    /// reply has come and no other command has emptied it; boxes only for a closed link, for no route and for a
    /// datagram that is too large, and none when `isQuiet`.
    bool sendonce(const QString &comm, const std::function<bool(const QString &reply)> &isWhole, bool isQuiet = false);
    /// Sends one console command a single time, in the time that the strictest server leaves between two, and neither
    /// waits for the reply nor says anything. Returns its number; 0 when it could not be sent.
    int sendaside(const QString &comm);
    /// Sends `query` without the word rcon and the password, once, and yields once. Throws what SendData throws.
    void sendquery(const QString &query);
    /// Waits that many seconds by the time of day, from half a second less to half a second more, or until the main
    /// window closes.
    void waitseconds(qint16 seconds);
    /// Tells one exchange from the next: how often something has been asked. A reply that is still being read has been
    /// emptied by another exchange when this has changed.
    [[nodiscard]] int exchanges() const { return asked; }
    /// True while a handler that began today waits in here: what is sent now would empty its reply.
    [[nodiscard]] bool isWaitedIn() const;
    /// Which parts of the session's `rconreply` came in one datagram each, in order. Those without text are left out.
    [[nodiscard]] const QList<ReplyPiece> &pieces() const { return replyPieces; }
    /// The password that was sent last by the command that has ended last.
    [[nodiscard]] const QString &sentPassword() const { return lastPassword; }
    /// Milliseconds until the strictest server listens to another console command of this program.
    [[nodiscard]] qint64 untilTurn();
    /// A console command has gone out beside the exchange: those that are sent once keep their distance from it, too.
    void sentBeside();
    /// Lets the event loop run once.
    void yield();
    /// Empties the reply.
    void clearReply();
    /// A reading of that many steps begins, or the one around it goes on; returns how far the other one has come.
    Steps beginSteps(Steps begun) { return std::exchange(steps, begun); }
    /// The next command is the next step.
    void nextStep()
    {
        ++steps.done;
        isStep = true;
    }
    /// A wait for the answer to this command, as a step if it is the next one.
    [[nodiscard]] Wait newWait(const QString &command, int copies_, int longest);

    /// While it lives, an answer is being waited for.
    class Waiting final {
    public:
        Waiting(Exchange &exchange_, const Wait &begun);
        ~Waiting();
        Q_DISABLE_COPY_MOVE(Waiting)

        void beginCopy(int copy);
        void secondPassed();

    private:
        [[nodiscard]] Wait &wait() const { return exchange.waits[depth]; }

        Exchange &exchange;
        const qsizetype depth;
    };

signals:
    /// What is waited for by now. Waits nest; it is the innermost.
    void waiting(const Wait &wait);
    /// Nothing is waited for any more.
    void waited();
    /// A command is about to be sent, for the first time.
    void sending(const QString &comm);
    /// A command or query has had its time; `reply` is what has come.
    void ended(const QString &reply);
    /// A copy of a command has gone out.
    void copysent(const SentCopy &copy);
    /// A datagram has come, whatever it answers.
    void datagramcame(const CameDatagram &datagram);
    /// The command of that number is not waited for any more; when it is not `isAwaited` it never was.
    void over(int number, bool isAwaited);

private:
    void UDPClient_DataArrival();
    enum class Outcome { NotAwaited, GivenUp, HadItsTime };
    [[nodiscard]] Outcome sendCopies(const QString &comm, BroughtBy by, int number, int &copiesSent);
    enum class Sent { Yes, Closing, NotConnected, NoRoute, Failed };
    [[nodiscard]] Sent send(const QString &comm, int number);
    void tellUnsent(Sent sent, BroughtBy by);
    void waitForReply(Waiting &wait);
    [[nodiscard]] int begin(const QString &comm);
    void rest(qint64 milliseconds, const std::function<bool()> &isOver);
    void awaitTurn(const QString &comm);
    /// In milliseconds. What has been sent was sent by now.
    qint64 timeSending();
    [[nodiscard]] qint64 milliseconds() const;
    void announceWait();
    [[nodiscard]] QByteArray sendText(const QString &text);
    [[nodiscard]] QString receive();
    void tellTruncated();

    Session &session;
    UDPClient &udpclient;
    const ServerFields &fields;
    Output &output;
    Prompts &prompts;
    const Clock &clock;
    QString lastPassword;
    QList<ReplyPiece> replyPieces;
    QList<Wait> waits;    ///< the outermost first
    QList<QDate> resting; ///< since when each handler does that waits, the outermost first
    Steps steps;
    bool isStep = false;
    const CodePage codePage;
    CommandPace pace;
    ReplyPiece arrived; ///< what the datagram that came last may lack
    int asked = 0;
    int yielding = 0; ///< handlers that let the event loop run once
    BroughtBy lastBy = BroughtBy::Person;
    bool yieldingInArrival = false;
    bool truncationTold = false;
    int quietOne = 0; ///< the number of the last command that brings no box
};
