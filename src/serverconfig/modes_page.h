// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QWidget>

#include <memory>

struct Services;

namespace Ui {
class ModesPage;
}

/// The "COD2 Modes" tab: the limits of each game type, and the buttons that switch to another one.
class ModesPage final : public QWidget {
    Q_OBJECT

public:
    explicit ModesPage(Services &services_, QWidget *parent = nullptr);
    ~ModesPage() override;

private:
    struct Requirement;
    struct Limit;
    struct Mode;

    void setLimits(const Mode &mode);
    void cmdsetsd_Click();
    [[nodiscard]] bool areValid(const QList<Limit> &limits);
    void send(const QList<Limit> &limits);

    Services &services;
    std::unique_ptr<Ui::ModesPage> ui;
};
