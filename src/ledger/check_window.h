// SPDX-License-Identifier: MIT
#pragma once

#include "check_runner.h"

#include <QWidget>

#include <memory>

class Clock;
class ServerFields;

namespace Ui {
class CheckWindow;
}

/// The window `frmcheck`: what works and what does not on the way to the server that the connection fields name. It
/// begins when it is opened and ends when it is closed.
class CheckWindow final : public QWidget {
    Q_OBJECT

public:
    CheckWindow(const ServerFields &fields_, const Clock &clock_, QWidget *parent = nullptr);
    ~CheckWindow() override;

    /// See `CheckRunner`.
    [[nodiscard]] bool isLookingUp() const { return runner.isLookingUp(); }

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void begin();
    void show(const CheckStep &step);
    void cmdcheckcopy_Click();

    const ServerFields &fields;
    const Clock &clock;
    std::unique_ptr<Ui::CheckWindow> ui;
    CheckRunner runner;
    QString heading;
    QList<CheckStep> steps;
};
