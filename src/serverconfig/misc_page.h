// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <array>
#include <memory>
#include <optional>

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

    /// What the server has told of its rotation; nothing when it has told nothing.
    [[nodiscard]] std::optional<QString> serverRotation() const;
    [[nodiscard]] QString editedRotation() const;
    /// As if the person had typed it.
    void editRotation(const QString &text);

public slots:
    /// Shows the texts that stand there until the server has told its rotation and its files.
    void awaitServer();
    /// Shows the rotation that `listing`, a list of server variables, holds.
    void showRotation(const QString &listing);
    /// Shows the CFG files in `listing`, the server's list of its files.
    void showCfgFiles(const QString &listing);
    /// Empties what the server has told.
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
    bool isRotationTold = false;
};
