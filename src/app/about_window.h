// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <memory>

class Prompts;

namespace Ui {
class AboutWindow;
}

/// The window `frmAbout`: what the program is, whom to ask, and the way to the system's information tool.
class AboutWindow final : public QWidget {
    Q_OBJECT

public:
    explicit AboutWindow(Prompts &prompts_, QWidget *parent = nullptr);
    ~AboutWindow() override;

private:
    void cmdSysInfo_Click();

    Prompts &prompts;
    std::unique_ptr<Ui::AboutWindow> ui;
};
