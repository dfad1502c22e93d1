// SPDX-License-Identifier: MIT
#pragma once

#include <QDate>
#include <QObject>
#include <QString>

#include <optional>

class Conversation;
struct Services;

/// Connects to the server that the connection fields name and disconnects from it: opens the link, proves the password,
/// and asks for what the window shows of a server. The rooms hear of each step by signal and do their own part at once.
class Connecting final : public QObject {
    Q_OBJECT

public:
    explicit Connecting(Services &services_) : services(services_) {}

    /// Connects, or disconnects when connected. While connecting it does nothing when the fields are still the same;
    /// with other fields it gives up and begins anew. Shows a box for what goes wrong, faults too.
    void toggle();
    /// Connects as start-up does it: clears no pane, shows no notes and not the reply to "status" either.
    void connectAtStart();
    enum class State { NotConnected, Connecting, Connected };
    [[nodiscard]] State state() const;
    /// True while connected or connecting.
    [[nodiscard]] bool hasBegun() const { return state() != State::NotConnected; }
    /// Closes the link without telling anybody.
    void closeLink();

signals:
    /// It is about to connect.
    void beginning();
    /// The password was accepted, or the server stayed silent.
    void connected();
    /// The variable listing with the map rotation has come.
    void rotationread(const QString &listing);
    /// The listing of CFG files has come.
    void cfgfilesread(const QString &listing);
    /// The server has been asked for everything.
    void surveyed();
    void disconnected();
    /// `address` is that of the server, as HOST:PORT; empty when not connected.
    void statechanged(Connecting::State state, const QString &address);

private:
    /// An attempt to connect, which goes on until the password is accepted or refused.
    struct Attempt {
        QString server;
        QString port;
        QString password;
        QDate day; ///< on another one it is stuck in a wait that ran across midnight

        bool operator==(const Attempt &) const = default;
    };

    [[nodiscard]] Attempt attemptWanted() const;
    void begin(bool formloading);
    void connectToServer(const Attempt &wanted, bool formloading);
    void disconnectFromServer();
    void clearOutput();
    void announceState();
    [[nodiscard]] bool openLink(const Attempt &wanted);
    [[nodiscard]] bool passwordAccepted(const Conversation &talk, QString &password);
    void survey(bool formloading);
    [[nodiscard]] bool askGame(const Conversation &talk);

    Services &services;
    std::optional<Attempt> attempt; ///< the one that is going on
    int attempts = 0;
    QString address; ///< of the server that is connected
};
