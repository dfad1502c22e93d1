// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <memory>

class Connecting;
class ServerFields;

namespace Ui {
class ConnectPanel;
}

/// The three connection fields, which are locked while connected, and the button that connects and disconnects.
class ConnectPanel final : public QWidget {
    Q_OBJECT

public:
    ConnectPanel(ServerFields &fields_, Connecting &connecting_, QWidget *parent = nullptr);
    ~ConnectPanel() override;

    void focusServer();

signals:
    /// Return was pressed in the password box.
    void passwordentered();
    void modsitewanted();

private:
    void cmdconnect_Click();
    void comserver_LostFocus();
    void comport_LostFocus();
    void showFields();
    void showConnected(bool on);

    ServerFields &fields;
    Connecting &connecting;
    std::unique_ptr<Ui::ConnectPanel> ui;
};
