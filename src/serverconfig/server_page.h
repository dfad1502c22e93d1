// SPDX-License-Identifier: MIT
#pragma once

#include "base/reentrancy_guard.h"
#include "placeholder_variables.h"

#include <QWidget>

#include <array>
#include <memory>

class Conversation;
class QRadioButton;
struct Services;

namespace Ui {
class ServerPage;
}

/// The "Server" tab: the server's everyday variables, its join password and its friendly fire.
class ServerPage final : public QWidget {
    Q_OBJECT

public:
    explicit ServerPage(Services &services_, QWidget *parent = nullptr);
    ~ServerPage() override;

    [[nodiscard]] PlaceholderVariables placeholderVariables() const;

signals:
    /// The game's variables have been asked for; `listing` is what has come.
    void variablesread(const QString &listing);

private:
    void cmdservpop_Click();
    bool readVariables();
    void cmdservsetbasics_Click();
    void sendVoting(const Conversation &talk);
    void cmdservsetpass_Click();
    void cmdservrempass_Click();
    void cmdff_Click();

    Services &services;
    std::unique_ptr<Ui::ServerPage> ui;
    std::array<QRadioButton *, 4> optff{}; ///< by friendly-fire mode
    ReentrancyGuard::Door reading;
};
