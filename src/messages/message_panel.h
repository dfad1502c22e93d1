// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <memory>

class IniText;
class MessageList;
class QLineEdit;
struct Services;

namespace Ui {
class MessagePanel;
}

/// The message list with, below it, the one-off message to everybody on the server and the name that signs it.
class MessagePanel final : public QWidget {
    Q_OBJECT

public:
    explicit MessagePanel(Services &services_, QWidget *parent = nullptr);
    ~MessagePanel() override;

    [[nodiscard]] MessageList &list() const;
    /// Fills the signing name from the settings file.
    void load(const IniText &ini);

private:
    void cmdmessage_Click();
    /// What is said of a typed line, behind the program's own prefix.
    [[nodiscard]] QString signedText(const QString &typed) const;
    [[nodiscard]] QWidget *preview(QLineEdit *line) const;
    void txtprefix_LostFocus();

    Services &services;
    std::unique_ptr<Ui::MessagePanel> ui;
};
