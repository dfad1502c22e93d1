// SPDX-License-Identifier: MIT
#pragma once

#include "base/reentrancy_guard.h"

#include <QList>
#include <QWidget>

#include <memory>

class CheckBox;
class QBoxLayout;
struct Services;
struct Weapon;

namespace Ui {
class WeaponsPage;
}

/// The "Weapons" tab: which weapons the server allows, one check box for each, and two presets.
class WeaponsPage final : public QWidget {
    Q_OBJECT

public:
    explicit WeaponsPage(Services &services, QWidget *parent = nullptr);
    ~WeaponsPage() override;

private:
    void addBox(const Weapon &weapon, QBoxLayout *group);
    [[nodiscard]] CheckBox *box(const QString &name) const;

    void cmdpopwep_Click();
    void readWeapons();
    void cmdwepsetserv_Click();
    void setAll(bool allowed);
    void cmdriflesonly_Click();
    void cmdnosnipers_Click();

    Services &services;
    std::unique_ptr<Ui::WeaponsPage> ui;
    QList<CheckBox *> boxes; ///< in the order of the table
    ReentrancyGuard::Door reading;
};
