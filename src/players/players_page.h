// SPDX-License-Identifier: MIT
#pragma once

#include "base/reentrancy_guard.h"
#include "checked_actions.h"
#include "player_actions.h"
#include "player_reader.h"
#include "player_refresh.h"
#include "player_table.h"

#include <QWidget>

#include <memory>
#include <optional>

class PlayerView;
struct CheckedDeed;
struct GetstatusRow;
struct Services;
struct StatusRow;

namespace Ui {
class PlayersPage;
}

/// The "Players" tab: the grid of who is on the server, and what can be done with the one that is selected.
class PlayersPage final : public QWidget {
    Q_OBJECT

public:
    explicit PlayersPage(Services &services_, QWidget *parent = nullptr);
    ~PlayersPage() override;

    /// Sets the check boxes as the preferences have them.
    void showPreferences();
    /// The grid, for its columns.
    [[nodiscard]] PlayerView &view() const;
    /// Puts the keyboard into the filter of the list.
    void focusFilter();

public slots:
    /// Starts the refresh on a new connection when the preferences want it.
    void startRefresh();
    /// Ends a running refresh, for the rest of the run.
    void endRefresh();
    /// Marks the rows of these players, and no others.
    void showRemarks(const QList<RemarkedPlayer> &remarked) { players.setRemarks(remarked); }
    /// The preferences have been saved.
    void takePreferences() { refresh.takePreferences(); }

signals:
    /// The list is read anew every so many seconds from now on; 0 when it is not any more.
    void refreshchanged(int seconds);
    /// What came of a checked action so far; empty when another one begins.
    void checkanswered(const QString &answer);
    /// The list has been read anew, whole and with all that can be known of each player.
    void populated(const QList<StatusRow> &rows);
    /// A command that gets rid of this player is about to be sent.
    void acting(const WantedPlayer &wanted, const QString &command);
    /// The same by itself, for a ping of 999: the command was meant for whoever was counted under the name, and meets
    /// the player who stands under that number in the list.
    void kicking(const QString &command, const WantedPlayer &counted, const WantedPlayer &listed);
    /// A command of either kind has had its time, whether it has gone out or not.
    void acted(const QString &command);
    /// The person wants to know who this is.
    void whowanted(const WantedPlayer &wanted);

private:
    void wireList();
    void wireActions();
    [[nodiscard]] WantedPlayer countedAs(const QString &name, const QString &num) const;
    void cmdplypop_Click();
    /// False when it is being done already, nothing is connected, or it has been done anew meanwhile.
    bool populate(BroughtBy by);
    void add(const StatusRow &row);
    void add(const GetstatusRow &row);
    void complayersort_Click();
    void sortOn(int column);
    void showSorting();
    void chkautoupdate_Click();
    void offerActions(bool on);

    void checkAndAct(const CheckedDeed &deed, const WantedPlayer &wanted);
    void cmdsavenames_Click();

    [[nodiscard]] bool isAskedByHand() const;

    Services &services;
    std::unique_ptr<Ui::PlayersPage> ui;
    PlayerTable players;
    PlayerReader reader;
    PlayerRefresh refresh;
    CheckedActions checkedActions;
    std::optional<PlayerActions> actions; ///< from when there are controls
    ReentrancyGuard::Door populating;
    QList<StatusRow> rows; ///< of the list that is being read, or was read last
    int populates = 0;
    int scrolled = 0;   ///< how far the list that is being replaced was
    bool tells = false; ///< boxes say what is wrong with the list that is being read
};
