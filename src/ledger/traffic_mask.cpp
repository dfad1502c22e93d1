// SPDX-License-Identifier: MIT
#include "traffic_mask.h"

#include "rcon/shown_command.h"

#include <algorithm>
#include <utility>

namespace {

const QByteArray header("\xFF\xFF\xFF\xFF");
const QByteArray requestHead = header + "rcon ";
const QByteArray replyHead = header + "print\n";

QByteArray line(TrafficMask::Time at, const char *way, const QByteArray &datagram)
{
    return "{\"us\":" + QByteArray::number(at.count()) + ",\"way\":\"" + way + "\",\"data\":\"" + datagram.toBase64() +
           "\"}\n";
}

QByteArray stars(qsizetype count)
{
    return {count, '*'};
}

// What tells one kind of datagram from another is no password, whatever the password is.
qsizetype bodyBegin(const QByteArray &datagram)
{
    for (const QByteArray &head : {replyHead, header}) {
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

} // namespace

void TrafficMask::hide(const QByteArray &password)
{
    if (!password.isEmpty() && !passwords.contains(password))
        passwords.append(password);
}

QByteArray TrafficMask::sent(Time at, const QByteArray &datagram, const QByteArray &password)
{
    hide(password);
    QByteArray masked = datagram;
    const QByteArray head = requestHead + password + ' ';
    if (datagram.startsWith(head))
        masked = head + starredBytes(datagram.sliced(head.size()));
    hideAll(masked, masked.startsWith(requestHead) ? requestHead.size() : bodyBegin(masked));
    if (!held)
        return line(at, "out", masked);
    held->behind += line(at, "out", masked);
    return {};
}

QByteArray TrafficMask::received(Time at, const QByteArray &datagram)
{
    QByteArray masked = datagram;
    hideAll(masked, bodyBegin(masked));
    if (held)
        hideParted(held->datagram, masked);
    const QByteArray before = rest();
    if (!mayGoOn(masked))
        return before + line(at, "in", masked);
    held = Held{at, masked, {}};
    return before;
}

QByteArray TrafficMask::rest()
{
    const std::optional<Held> last = std::exchange(held, std::nullopt);
    return last ? line(last->at, "in", last->datagram) + last->behind : QByteArray();
}

void TrafficMask::hideAll(QByteArray &datagram, qsizetype from) const
{
    QByteArray body = datagram.sliced(from);
    for (const QByteArray &password : passwords)
        body.replace(password, stars(password.size()));
    datagram = datagram.first(from) + body;
}

/// Whether it ends as a password begins.
bool TrafficMask::mayGoOn(const QByteArray &datagram) const
{
    return std::ranges::any_of(passwords, [&datagram](const QByteArray &password) {
        for (qsizetype size = 1; size < password.size(); ++size) {
            if (datagram.endsWith(password.first(size)))
                return true;
        }
        return false;
    });
}

void TrafficMask::hideParted(QByteArray &before, QByteArray &after) const
{
    const qsizetype begin = bodyBegin(after);
    for (const QByteArray &password : passwords) {
        for (qsizetype size = 1; size < password.size(); ++size) {
            const qsizetype behind = password.size() - size;
            if (!before.endsWith(password.first(size)) || !after.sliced(begin).startsWith(password.sliced(size)))
                continue;
            before.replace(before.size() - size, size, stars(size));
            after.replace(begin, behind, stars(behind));
        }
    }
}
