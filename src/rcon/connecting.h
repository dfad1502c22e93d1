// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class Conversation;
struct Services;

/// Connects to the server that the connection fields name and disconnects from it: opens the link, proves the password,
/// and asks for what the window shows of a server. The rooms hear of each step by signal and do their own part at once.
class Connecting final : public QObject {
    Q_OBJECT

public:
    explicit Connecting(Services &services_) : services(services_) {}

    /// Connects, or disconnects when connected; nothing while the password is being proved. Shows a box for what goes
    /// wrong, faults too.
    void toggle();
    /// Connects as start-up does it: clears no pane, shows no notes and not the reply to "status" either.
    void connectAtStart();
    /// Closes the link at the end of the run; nobody is told.
    void closeLink();

signals:
    /// The password was accepted, or the server stayed silent.
    void connected();
    /// The variable listing with the map rotation has come.
    void rotationread(const QString &listing);
    /// The listing of CFG files has come.
    void cfgfilesread(const QString &listing);
    /// The server has been asked for everything.
    void surveyed();
    void disconnected();

private:
    void connectToServer();
    void disconnectFromServer();
    void clearOutput();
    [[nodiscard]] bool openLink();
    [[nodiscard]] bool passwordAccepted();
    void survey();
    [[nodiscard]] bool askGame(const Conversation &talk);

    Services &services;
    bool proving = false;     ///< the password is being proved
    bool formloading = false; ///< start-up is connecting
};
