// SPDX-License-Identifier: MIT
#pragma once

#include "base/reentrancy_guard.h"
#include "player_check.h"

#include <QObject>

#include <functional>
#include <optional>

class Conversation;
class Reading;
struct CheckedDeed;
struct Services;

/// Does to a player what is asked for only when a new list of the server says in which slot he is. A slot number alone
/// is not enough: players come and go, and a digit of it may have been lost on the way.
class CheckedActions final : public QObject {
    Q_OBJECT

public:
    CheckedActions(const Services &services_, QObject *parent) : QObject(parent), services(services_) {}

    /// Looks for the player; where he stands the command is sent with `text` behind the slot number, once. It ends with
    /// a box that says what was found instead, or with an answer. Does nothing while it is at it already.
    void act(const CheckedDeed &deed, WantedPlayer wanted, const QString &text = {});
    /// What came of the last one is not told any more.
    void forget() { emit answered({}); }

signals:
    /// What the server said, and then what its list says, or why nothing was sent; for the status bar.
    void answered(const QString &answer);
    /// This command is about to be sent to get rid of him.
    void dismissing(const WantedPlayer &wanted, const QString &command);
    /// That command has had its time, whether it has gone out or not.
    void dismissed(const QString &command);
    /// The list says that he is not there any more.
    void left(const WantedPlayer &wanted);

private:
    struct NewerList;
    struct Seen;
    using Look = std::function<Sighting(const QList<StatusRow> &rows)>;

    [[nodiscard]] std::optional<Sighting> actOnce(const CheckedDeed &deed, const WantedPlayer &wanted,
                                                  const QString &text);
    [[nodiscard]] NewerList readList(const Conversation &talk, const Reading &scope) const;
    [[nodiscard]] Seen look(const Conversation &talk, const Reading &scope, const Look &lookAt) const;
    void carryOut(const Conversation &talk, const Reading &scope, const CheckedDeed &deed, const WantedPlayer &wanted,
                  const QString &text);
    void tellWhetherGone(const Conversation &talk, const Reading &scope, const WantedPlayer &wanted);
    void tellHasLeft(const CheckedDeed &deed, const WantedPlayer &wanted, const Sighting &sighting);
    [[nodiscard]] bool isWantedThere(const CheckedDeed &deed, const WantedPlayer &wanted, const Sighting &sighting);

    const Services &services;
    ReentrancyGuard::Door acting;
};
