// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <memory>

struct Services;
enum class Progress;

namespace Ui {
class ConnectPanel;
}

/// The connection fields and the button that connects to the server and disconnects from it.
/// The other rooms hear of a connection's steps by signal and do their own part at once.
class ConnectPanel final : public QWidget {
    Q_OBJECT

public:
    explicit ConnectPanel(Services &services, QWidget *parent = nullptr);
    ~ConnectPanel() override;

    [[nodiscard]] QString server() const;
    [[nodiscard]] QString port() const;
    [[nodiscard]] QString password() const;
    /// Fills the three fields, also while they are locked.
    void fill(const QString &server, const QString &port, const QString &password);
    void focusServer();

public slots:
    void cmdconnect_Click();

signals:
    /// The password was accepted, or the server stayed silent; the fields are locked.
    void connected();
    /// The session's reply holds the variable listing with the map rotation.
    void rotationread();
    /// The session's reply holds the listing of CFG files.
    void cfgfilesread();
    /// The server has been asked for everything.
    void settled();
    void disconnected();
    /// Return was pressed in the password box.
    void passwordentered();
    void modsitewanted();

private:
    void comserver_LostFocus();
    void comport_LostFocus();
    void connectToServer();
    void disconnectFromServer();
    void clearOutput();
    void trimFields();
    [[nodiscard]] bool passwordAccepted();
    [[nodiscard]] bool enterSession();
    void askServer(int number);
    [[nodiscard]] bool askGame(int number);
    void askRotation(int number);
    void askCfgFiles(int number);
    [[nodiscard]] bool isCurrent(int number) const;
    void showConnected(bool on);
    void showStep(const QString &text, Progress mode);

    Services &services;
    std::unique_ptr<Ui::ConnectPanel> ui;
    bool proving = false; ///< the password is being proved
    int connection = 0;   ///< counts connecting and disconnecting
};
