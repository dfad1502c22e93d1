// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/// A copy of a command that has gone out.
struct SentCopy {
    int number = 0; ///< the same for the copies of one command, greater for each later command
    QString comm;
    QString password;
    QByteArray datagram;
};

/// A datagram that has come from the server.
struct CameDatagram {
    QByteArray head; ///< its first bytes, which say of what kind it is
    QString text;    ///< as far as it could be taken, without the header of a reply
    qint64 size = 0; ///< on the wire, in bytes
};
