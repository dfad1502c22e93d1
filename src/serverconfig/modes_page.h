// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QWidget>

#include <memory>

class TextBox;
struct Services;

namespace Ui {
class ModesPage;
}

/// The "COD2 Modes" tab: the limits of each game type, and the buttons that switch to another one.
class ModesPage final : public QWidget {
    Q_OBJECT

public:
    explicit ModesPage(Services &services, QWidget *parent = nullptr);
    ~ModesPage() override;

private:
    void cmdsetdm_Click();
    void cmdsettdm_Click();
    void cmdsethq_Click();
    void cmdsetctf_Click();
    void cmdsetsd_Click();
    void cmddmdefault_Click();
    void cmdtdmdefault_Click();
    void cmdhqdefault_Click();
    void cmdctfdefault_Click();
    void cmdsddefaults_Click();

    void setLimits(TextBox &score, TextBox &time, const QString &mode);
    [[nodiscard]] bool isInvalid(bool valid, TextBox &box, const QString &complaint);

    Services &services;
    std::unique_ptr<Ui::ModesPage> ui;
};
