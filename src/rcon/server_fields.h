// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

/// What stands in the three connection fields: typed, taken from the saved list, or put back by connecting. Whoever
/// wants to know the address or the password asks here; the panel shows what is set.
class ServerFields final : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    [[nodiscard]] const QString &server() const { return serverText; }
    [[nodiscard]] const QString &port() const { return portText; }
    /// Read at every send.
    [[nodiscard]] const QString &password() const { return passwordText; }
    /// Server and port with a colon between them.
    [[nodiscard]] QString address() const { return serverText + u':' + portText; }

    void set(const QString &server, const QString &port, const QString &password);
    void setServer(const QString &server) { serverText = server; }
    void setPort(const QString &port) { portText = port; }
    void setPassword(const QString &password) { passwordText = password; }

signals:
    /// The program has set all three.
    void changed();

private:
    QString serverText;
    QString portText;
    QString passwordText;
};
