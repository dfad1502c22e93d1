// SPDX-License-Identifier: MIT
#pragma once

#include "exchange_boxes.h"
#include "output/message_list.h"
#include "output/output.h"
#include "output/rcon_pane.h"
#include "rcon/exchange.h"
#include "rcon/server_fields.h"
#include "rcon/session.h"
#include "rcon/udp_client.h"
#include "scripted_prompts.h"

#include "base/clock.h"

#include <QCoreApplication>

#include <functional>
#include <utility>

/// A clock that goes on by the same step at each reading, whatever the machine does meanwhile.
class SteppingClock final : public Clock {
public:
    explicit SteppingClock(const QTime &start, qint64 milliseconds = 10) : step(milliseconds) { set(start); }

    void set(const QTime &start)
    {
        next = QDateTime(QDate(2006, 3, 5), start);
        last = next;
    }

    [[nodiscard]] QDateTime now() const override
    {
        last = next;
        next = next.addMSecs(step);
        ++readings;
        return last;
    }

    void rest(double) const override { QCoreApplication::processEvents(); }

    mutable QDateTime last; ///< the last reading, or the time set
    mutable int readings = 0;

private:
    qint64 step;
    mutable QDateTime next;
};

/// The socket with a hand on its sending: `beforeSend` may note what goes out, or throw.
class WatchedClient final : public UDPClient {
public:
    void SendData(const QByteArray &bytes) override
    {
        sent.append(bytes);
        if (beforeSend)
            beforeSend();
        UDPClient::SendData(bytes);
    }

    QList<QByteArray> sent;
    std::function<void()> beforeSend;
};

/// The exchange with a clock that is exact to a hundredth of a second, without the main window.
struct Bench final {
    explicit Bench(const QTime &start = QTime(12, 0), qint64 step = 10, CodePage page = {})
        : clock(start, step), codePage(std::move(page))
    {
        output.attach(txtoutput, lstmessages);
        fields.setPassword(QStringLiteral("practice"));
    }

    void open(quint16 port)
    {
        udpclient.setRemoteHost(QStringLiteral("127.0.0.1"));
        udpclient.setRemotePort(port);
        udpclient.Bind();
    }

    [[nodiscard]] QString pane() const { return output.pane().text(); }

    SteppingClock clock;
    CodePage codePage;
    ScriptedPrompts prompts;
    Session session;
    WatchedClient udpclient;
    ServerFields fields;
    RconPane txtoutput;
    MessageList lstmessages;
    Output output{prompts, clock};
    Exchange exchange{session, udpclient, fields, output, prompts, clock, codePage};
};
