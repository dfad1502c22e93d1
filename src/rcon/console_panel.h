// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <memory>

struct Services;

namespace Ui {
class ConsolePanel;
}

/// The console line with its history, and the two buttons that ask the server about itself.
class ConsolePanel final : public QWidget {
    Q_OBJECT

public:
    explicit ConsolePanel(Services &services_, QWidget *parent = nullptr);
    ~ConsolePanel() override;

    /// Puts the keyboard on the console line, with what stands there selected.
    void focusLine();

public slots:
    void cmdsend_Click();

private:
    void cmdstatus_Click();
    void cmsserverinfo_Click();

    Services &services;
    std::unique_ptr<Ui::ConsolePanel> ui;
};
