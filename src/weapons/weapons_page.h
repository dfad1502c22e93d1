// SPDX-License-Identifier: MIT
#pragma once

#include "base/reentrancy_guard.h"

#include <QWidget>

#include <memory>
#include <span>
#include <vector>

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
    explicit WeaponsPage(Services &services_, QWidget *parent = nullptr);
    ~WeaponsPage() override;

private:
    struct Row {
        const Weapon &weapon;
        CheckBox *box;
    };

    [[nodiscard]] CheckBox *addBox(const Weapon &weapon, QBoxLayout *group);
    [[nodiscard]] CheckBox *boxOf(QLatin1StringView name) const;

    void orderTabs(std::span<QBoxLayout *const> groups);
    void cmdpopwep_Click();
    bool readWeapons();
    void cmdwepsetserv_Click();
    void setAll(bool allowed);
    void cmdriflesonly_Click();
    void cmdnosnipers_Click();

    Services &services;
    std::unique_ptr<Ui::WeaponsPage> ui;
    std::vector<Row> rows; ///< in the order of the table
    ReentrancyGuard::Door reading;
};
