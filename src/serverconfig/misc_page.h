// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <array>
#include <memory>

class QPlainTextEdit;
class QPushButton;
struct Services;

namespace Ui {
class MiscPage;
}

/// The "Misc" tab: the server's map rotation as it was on connecting, a rotation to edit, and the server's CFG files.
class MiscPage final : public QWidget {
    Q_OBJECT

public:
    explicit MiscPage(Services &services_, QWidget *parent = nullptr);
    ~MiscPage() override;

public slots:
    /// Puts the texts that stand until the server has told its rotation and its files.
    void awaitServer();
    /// `listing` holds the variable with the rotation.
    void showRotation(const QString &listing);
    void showCfgFiles(const QString &listing);
    void forgetServer();

private:
    void cmdsmrpaste_Click(int index);
    void cmdsetservedit_Click();
    void lblsmrnotes_Click();
    void cmdcfgexec_Click();
    void setRotation(const QString &text, bool told);

    Services &services;
    std::unique_ptr<Ui::MiscPage> ui;
    std::array<QPlainTextEdit *, 2> txtcurmaprot;
    std::array<QPushButton *, 2> cmdsmrpaste;
};
