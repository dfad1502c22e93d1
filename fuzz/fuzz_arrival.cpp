// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "fuzz.h"
#include "output/rcon_pane.h"
#include "server_side.h"

#include <QEventLoop>
#include <QUdpSocket>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QByteArray separator("<next>"); // between the datagrams of one input
constexpr qsizetype mostDatagrams = 32;

/// The program with its socket open to a server that sends what it is told to.
class Link final {
public:
    Link()
    {
        require(server.bind(QHostAddress::LocalHost), "the server gets a port");
        program.udpclient.setRemoteHost(u"127.0.0.1"_s);
        program.udpclient.setRemotePort(server.localPort());
        program.udpclient.Bind();
        QObject::connect(&program.udpclient, &UDPClient::DataArrival, &server, [this] {
            if (--awaited == 0)
                wait.quit();
        });
    }

    /// Asks something, has these datagrams come for an answer, and waits for the last of them.
    void answer(const QList<QByteArray> &datagrams)
    {
        program.output.clearrcon();
        program.session.rconnowait = true;
        program.exchange.sendinfo(u"status"_s, true);
        quint16 port = 0;
        require(server.readDatagram(nullptr, 0, nullptr, &port) >= 0, "the question goes out");

        awaited = datagrams.size();
        for (const QByteArray &datagram : datagrams)
            require(server.writeDatagram(datagram, QHostAddress::LocalHost, port) == datagram.size(), "an answer");
        wait.exec(); // a datagram that is lost here is told as a hang
    }

    ServerSide program;

private:
    QUdpSocket server;
    QEventLoop wait; // on Windows processEvents() waits on although something has been posted
    qsizetype awaited = 0;
};

/// The bytes of a datagram that become text: the first 8,192, without the head that a server prints.
QByteArray text(const QByteArray &datagram)
{
    return datagram.left(8192).replace("\xFF\xFF\xFF\xFFprint\n", "");
}

QByteArray squeezed(const QByteArray &bytes)
{
    QByteArray all;
    for (const char byte : bytes) {
        if (byte != ' ' || !all.endsWith(' '))
            all += byte;
    }
    return all;
}

void answer(const QList<QByteArray> &datagrams, bool collects)
{
    static Link link;
    link.program.session.rconcollect = collects;
    link.answer(datagrams);

    QByteArray reply;
    QByteArray pane;
    for (const QByteArray &datagram : datagrams) {
        const QByteArray bytes = text(datagram);
        reply += collects ? squeezed(bytes) : QByteArray(bytes).replace('\n', "\r\n");
        if (!collects) // a carriage return alone also ends a line on the screen
            pane += QByteArray(bytes).replace('\r', '\n').replace('\n', "\r\n");
    }
    require(link.program.session.rconreply == fromAnsi(reply),
            "the reply is what was sent, one datagram after another");
    require(link.program.session.rconarrived, "an answer has arrived");
    require(link.program.output.pane().text() == fromAnsi(pane), "the pane shows it as plain text, or nothing of it");

    const bool tooLarge = std::ranges::any_of(datagrams, [](const QByteArray &one) { return one.size() > 8192; });
    require(link.program.prompts.takeBoxes().size() == (tooLarge ? 1 : 0), "one box tells of what was cut off");
}

} // namespace

void fuzz(const QByteArray &input)
{
    QList<QByteArray> datagrams;
    for (qsizetype from = 0; from <= input.size() && datagrams.size() < mostDatagrams;) {
        constexpr qsizetype largest = 65'507; // bytes in one datagram
        const qsizetype end = std::min(input.size(), from + largest);
        const qsizetype found = input.indexOf(separator, from);
        const qsizetype next = found < 0 ? end : std::min(found, end);
        datagrams.append(input.sliced(from, next - from));
        from = next == found ? next + separator.size() : next + 1;
    }
    answer(datagrams, false);
    answer(datagrams, true);
}
