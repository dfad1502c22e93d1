// SPDX-License-Identifier: MIT
#pragma once

#include "connected_program.h"
#include "exchange_boxes.h"

/// The request datagram of one console command, byte for byte.
inline QByteArray request(const QByteArray &command, const QByteArray &password = "practice")
{
    return QByteArray("\xFF\xFF\xFF\xFF") + "rcon " + password + ' ' + command;
}

/// A reply datagram as a server prints it.
inline QByteArray printed(const QByteArray &text)
{
    return QByteArray("\xFF\xFF\xFF\xFF") + "print\n" + text;
}

/// The running program with its socket open to a practice server, but without the questions that connecting asks.
struct Link final : ConnectedProgram {
    explicit Link(const PracticeOptions &options = {})
        : ConnectedProgram({.practice = options, .settings = {}, .prepare = {}, .connects = false})
    {
        program.setText(QStringLiteral("txtPWD"), QStringLiteral("practice"));
        open();
    }

    void open()
    {
        program.udpclient.setRemoteHost(QStringLiteral("127.0.0.1"));
        program.udpclient.setRemotePort(server.port());
        program.udpclient.Bind();
    }

    /// Does `action` once, while the next request is on the server's table and not yet answered.
    template <typename Action>
    void onNextRequest(Action action)
    {
        QObject::connect(&server, &PracticeServer::requested, &server, action, Qt::SingleShotConnection);
    }

    Exchange &exchange = program.exchange;
    Session &session = program.session;
};
