// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>
#include <QWidget>

#include <memory>

struct Services;

namespace Ui {
class PlayersPage;
}

/// The "Players" tab. So far it holds only the switch of the automatic refresh, which connecting and disconnecting
/// act on; the page shows it once there is a list to refresh.
class PlayersPage final : public QWidget {
    Q_OBJECT

public:
    explicit PlayersPage(Services &services, QWidget *parent = nullptr);
    ~PlayersPage() override;

public slots:
    /// Starts the refresh on a new connection when the preferences want it.
    void startRefresh();
    /// Ends a running refresh, for the rest of the run.
    void endRefresh();

private:
    void chkautoupdate_Click();
    void startTimer();

    Services &services;
    std::unique_ptr<Ui::PlayersPage> ui;
    QTimer tmrplayer;
};
