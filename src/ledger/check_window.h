// SPDX-License-Identifier: MIT
#pragma once

#include "check_runner.h"

#include <QWidget>

#include <memory>

struct Services;

namespace Ui {
class CheckWindow;
}

/// The window `frmcheck`: what works and what does not on the way to the server that the connection fields name. It
/// begins when it is opened and ends when it is closed.
class CheckWindow final : public QWidget {
    Q_OBJECT

public:
    explicit CheckWindow(const Services &services_, QWidget *parent = nullptr);
    ~CheckWindow() override;

    /// See `CheckRunner`.
    [[nodiscard]] bool isLookingUp() const { return runner.isLookingUp(); }

signals:
    /// See `CheckRunner`.
    void datagramsent(const QByteArray &datagram, const QString &password);
    void datagramread(const QByteArray &datagram);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void begin();
    void show(const CheckStep &step);
    void cmdcheckcopy_Click();

    const Services &services;
    std::unique_ptr<Ui::CheckWindow> ui;
    CheckRunner runner;
    QString heading;
    QList<CheckStep> steps;
};
