// SPDX-License-Identifier: MIT
#include "traffic_mask.h"

#include "rcon/datagram_header.h"
#include "rcon/reply_piece.h"
#include "rcon/shown_command.h"

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

namespace {

const QByteArray requestHead = datagramHeader + "rcon ";
const QByteArray replyHead = datagramHeader + "print\n";

constexpr auto longestHeldBack = 10s; // later no piece of the same reply comes

// What tells one kind of datagram from another is no password, whatever the password is.
qsizetype bodyBegin(const QByteArray &datagram)
{
    for (const QByteArray &head :
         {requestHead, replyHead, datagramHeader + "getstatus", datagramHeader + "getinfo",
          datagramHeader + "statusResponse", datagramHeader + "infoResponse", datagramHeader}) {
        if (datagram.startsWith(head))
            return head.size();
    }
    return 0;
}

/// Characters stand for bytes here.
QByteArray starredBytes(const QByteArray &command)
{
    return starredCommand(QString::fromLatin1(command), {}).toLatin1();
}

bool isLosing(const QByteArray &datagram)
{
    return datagram.size() == ReplyPiece::losingSize;
}

} // namespace

void TrafficMask::hide(const QByteArray &password)
{
    passwords.add(QString::fromLatin1(password));
}

QByteArray TrafficMask::sent(Time at, const QByteArray &datagram, const QByteArray &password)
{
    hide(password);
    QByteArray masked = datagram;
    const QByteArray head = requestHead + password + ' ';
    if (datagram.startsWith(head)) {
        const QByteArray command = datagram.sliced(head.size());
        passwords.addFrom(QString::fromLatin1(command));
        masked = head + starredBytes(command);
    }
    star(masked, bodyBegin(masked));
    endOld(at);
    lines.append({.at = at, .isSent = true, .datagram = masked});
    return ready();
}

QByteArray TrafficMask::received(Time at, const QByteArray &datagram, Link link)
{
    const qsizetype begin = bodyBegin(datagram);
    QString body = QString::fromLatin1(datagram.sliced(begin));
    if (Line *last = awaited(link)) {
        const qsizetype lastBegin = bodyBegin(last->datagram);
        QString before = QString::fromLatin1(last->datagram.sliced(lastBegin));
        passwords.starNext(before, body, isLosing(last->datagram));
        last->datagram = last->datagram.first(lastBegin) + before.toLatin1();
        last->mayGoOn = false;
    } else {
        passwords.star(body);
    }
    const bool mayGoOn = isLosing(datagram) || passwords.mayGoOn(body);
    if (isLosing(datagram))
        passwords.starLosingEnd(body);
    endOld(at);
    lines.append({at, false, datagram.first(begin) + body.toLatin1(), link, mayGoOn});
    return ready();
}

QByteArray TrafficMask::rest()
{
    for (Line &line : lines)
        line.mayGoOn = false;
    return ready();
}

void TrafficMask::star(QByteArray &datagram, qsizetype from) const
{
    QString body = QString::fromLatin1(datagram.sliced(from));
    passwords.star(body);
    datagram = datagram.first(from) + body.toLatin1();
}

/// The line that the next datagram on that link may go on.
TrafficMask::Line *TrafficMask::awaited(Link link)
{
    const auto found =
        std::ranges::find_if(lines, [link](const Line &line) { return line.mayGoOn && line.link == link; });
    return found == lines.end() ? nullptr : &*found;
}

void TrafficMask::endOld(Time at)
{
    for (Line &line : lines)
        line.mayGoOn = line.mayGoOn && at - line.at <= longestHeldBack;
}

/// Takes the lines off that stand before any that is held back.
QByteArray TrafficMask::ready()
{
    QByteArray text;
    while (!lines.isEmpty() && !lines.constFirst().mayGoOn) {
        const Line line = lines.takeFirst();
        text += "{\"us\":" + QByteArray::number(line.at.count()) + ",\"way\":\"" + (line.isSent ? "out" : "in") +
                "\",\"data\":\"" + line.datagram.toBase64() + "\"}\n";
    }
    return text;
}
