// SPDX-License-Identifier: MIT
#pragma once

#include "base/reentrancy_guard.h"
#include "exchange.h"
#include "output/output.h"
#include "server_link.h"

#include <QString>

#include <optional>

class ReadLabel;
struct Services;

/// Sets a flag of the session. Of nested holders the one that ends last clears it, whatever it was before: the
/// outermost, unless that has ended before its time. Holders of another day or another server do not count.
class FlagHolder final {
public:
    FlagHolder(ServerLink::HeldFlag &flag_, const ServerLink::Epoch &epoch_);
    ~FlagHolder();
    Q_DISABLE_COPY_MOVE(FlagHolder)

    /// The flag stays set after this holder's end.
    void leaveSet() { isLeftSet = true; }

private:
    ServerLink::HeldFlag &flag;
    const ServerLink::Epoch epoch;
    bool isLeftSet = false;
};

/// A scope in which a page sends or reads the server's variables: the two timers skip their ticks.
class TimersHeldOff final {
public:
    explicit TimersHeldOff(const Services &services);

private:
    FlagHolder busy;
};

/// A scope in which a page sends or reads the server's variables while the two timers go on: what must not come between
/// is kept off.
class PageAtWork final {
public:
    explicit PageAtWork(const Services &services);
    ~PageAtWork();
    Q_DISABLE_COPY_MOVE(PageAtWork)

private:
    ServerLink &link;
    const ServerLink::Epoch epoch;
};

/// The scope in which a page reads from the server. Its begin lets one reading in at a time, says when nothing is
/// connected, has replies gathered silently, shows a note and holds the two timers off; its end takes all that back,
/// but for what a reading around it still needs. Clicking another page's button meanwhile nests a second reading.
class Reading final {
public:
    struct Style {
        ReentrancyGuard::Door *door = nullptr; ///< the handler's own; without it readings of one handler nest, too
        QString note;                          ///< for the progress window, which is left alone when this is empty
        bool needsConnection = true;           ///< else each command says by its own box that nothing is connected
        bool holdsTimersOff = true;
        BroughtBy by = BroughtBy::Person; ///< a tick brings no box that is open already
        int steps = 1;                    ///< how often it asks the server something
        ReadLabel *label = nullptr;       ///< says afterwards whether and when the page was read
    };

    Reading(const Services &services_, const Style &style);
    ~Reading();
    Q_DISABLE_COPY_MOVE(Reading)

    /// False when the handler is at it already, or nothing is connected.
    explicit operator bool() const { return isBegun; }

    /// False when the same handler has been let in once more, while a box held this one up: what is read is his.
    [[nodiscard]] bool isLatest() const { return !guard || guard->isLatest(); }

    /// The server has answered all that was asked of it.
    void setAnswered() { isAnswered = true; }
    /// Replies are shown again from now on, but for those to a reading inside this one.
    void endCollecting() { collecting.reset(); }
    /// Replies stay silent afterwards, until another reading ends.
    void leaveCollecting() { collecting->leaveSet(); }
    /// The timers stay held off afterwards, until another reading or sending ends.
    void leaveTimersHeldOff() { busy->leaveSet(); }

private:
    void showNote(const QString &note, const ServerLink::Epoch &epoch);
    void endNote();
    void endLabel();

    const Services &services;
    ReadLabel *const label;
    bool isBegun = false;
    bool isAnswered = false;
    std::optional<ReentrancyGuard> guard;
    std::optional<FlagHolder> collecting;
    std::optional<FlagHolder> busy;
    Steps stepsBefore;
    std::optional<Output::Work> noted;
    QString noteBefore; ///< of the reading around this one
};
