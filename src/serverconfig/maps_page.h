// SPDX-License-Identifier: MIT
#pragma once

#include "base/reentrancy_guard.h"

#include <QWidget>

#include <memory>

class QModelIndex;
struct Services;

namespace Ui {
class MapsPage;
}

/// The "Maps" tab: a list of maps, the game's own or the server's, from which one is loaded.
class MapsPage final : public QWidget {
    Q_OBJECT

public:
    explicit MapsPage(Services &services_, QWidget *parent = nullptr);
    ~MapsPage() override;

signals:
    /// The server has listed its maps.
    void mapsread(const QStringList &maps);

private:
    void cmddefmaps_Click();
    void cmdpopmaps_Click();
    void cmdmapload_Click();
    void showMenu(const QModelIndex &map, QPoint place);

    Services &services;
    std::unique_ptr<Ui::MapsPage> ui;
    ReentrancyGuard::Door reading;
};
