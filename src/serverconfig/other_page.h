// SPDX-License-Identifier: MIT
#pragma once

#include "base/reentrancy_guard.h"

#include <QWidget>

#include <array>
#include <memory>

class CheckBox;
struct Services;

namespace Ui {
class OtherPage;
}

/// The "COD2 other" tab: the grenade switches. It also has the Clan Base preset, for which it shows no control.
class OtherPage final : public QWidget {
    Q_OBJECT

public:
    explicit OtherPage(Services &services_, QWidget *parent = nullptr);
    ~OtherPage() override;

public slots:
    /// Asks, then puts the server on the rules of the Clan Base league and announces it.
    void setclanbase();

private:
    void cmdCodOther_Click(int index);
    void populate();
    void sendChanges();

    Services &services;
    std::unique_ptr<Ui::OtherPage> ui;
    std::array<CheckBox *, 2> chkCodOther{};
    ReentrancyGuard::Door reading;
};
