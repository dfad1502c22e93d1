// SPDX-License-Identifier: MIT
#pragma once

#include "list999.h"
#include "player_table.h"

#include <QDate>
#include <QTimer>
#include <QWidget>

#include <memory>

class ConnectPanel;
class Fault;
struct GetstatusRow;
struct Services;
struct StatusRow;

namespace Ui {
class PlayersPage;
}

/// The "Players" tab: who is on the server, what can be done with the one that is selected, and the automatic refresh
/// with its kick at ping 999.
class PlayersPage final : public QWidget {
    Q_OBJECT

public:
    PlayersPage(Services &services, const ConnectPanel &connectPanel_, QWidget *parent = nullptr);
    ~PlayersPage() override;

    /// Sets the check boxes as the preferences have them.
    void showPreferences();

public slots:
    /// Starts the refresh on a new connection when the preferences want it.
    void startRefresh();
    /// Ends a running refresh, for the rest of the run.
    void endRefresh();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    struct Dismissal;

    void cmdplypop_Click();
    void listByStatus(bool isTold);
    void listByQuery();
    void add(const StatusRow &row);
    void add(const GetstatusRow &row);
    [[nodiscard]] bool awaitRest(bool isTold, int &tries);
    void complayersort_Click();

    void cmdplykick_Click();
    void cmdplyban_Click();
    void cmdtempban_Click();
    void dismiss(const Dismissal &dismissal);
    void cmdplymessage_Click();
    void cmdsavenames_Click();
    [[nodiscard]] QString csvRows() const;

    void chkautoupdate_Click();
    void startTimer();
    void tmrplayer_Timer();
    void kickHanging(int link);
    void check999(const QString &name, const QString &ping, const QString &num);

    [[nodiscard]] QString shownName(const QString &name) const;
    [[nodiscard]] int selectedRow() const;
    void removeRow(int row);
    [[nodiscard]] bool isAskedByHand() const;
    [[nodiscard]] bool isOnLink(int link) const;

    Services &services;
    const ConnectPanel &connectPanel;
    std::unique_ptr<Ui::PlayersPage> ui;
    PlayerTable players;
    List999 list999;
    QTimer tmrplayer;
    QDate populatingSince;
    QDate refreshingSince;
    QList<QPersistentModelIndex> dismissed; ///< players whose kick or ban is under way
};
