// SPDX-License-Identifier: MIT
#include "rcon_client.h"

#include "base/fault.h"
#include "base/wire_text.h"
#include "players/player_check.h"
#include "rcon/datagram_header.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

bool isWholeStatus(const RconReply &reply)
{
    return reply.text.endsWith("\n\n"_L1) && wholeTable(reply.text, reply.pieces);
}

} // namespace

RconClient::RconClient()
{
    running.start();
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    connect(&timer, &QTimer::timeout, this, &RconClient::goOn);
    connect(&link, &UDPClient::datagramread, this, &RconClient::take);
}

void RconClient::open(const QString &host, qint32 port)
{
    QTimer limit;
    limit.setSingleShot(true);
    connect(&limit, &QTimer::timeout, &link, &UDPClient::Close);
    limit.start(longestLookUp);
    link.setRemoteHost(host);
    link.setRemotePort(port);
    link.Bind();
}

void RconClient::close()
{
    isAsking = false;
    timer.stop();
    link.Close();
}

void RconClient::ask(const RconQuestion &question_)
{
    question = question_;
    reply = {};
    isAsking = true;
    schedule.begin(question.copies, question.timeout);
    goOn();
}

void RconClient::goOn()
{
    if (!isAsking)
        return;
    switch (schedule.step(now())) {
    case AskSchedule::Step::Wait:
        timer.start(std::max(schedule.due() - now(), 0ms));
        return;
    case AskSchedule::Step::Send:
        return send();
    case AskSchedule::Step::Answered:
        isAsking = false;
        reply.copies = schedule.copies();
        reply.isEndless = reply.isEndless || schedule.isEndless();
        emit answered(std::exchange(reply, {}));
        return;
    case AskSchedule::Step::Silent:
        isAsking = false;
        emit unanswered({});
        return;
    }
}

void RconClient::send()
{
    try {
        link.SendData(datagramHeader + question.request);
    } catch (const Fault &fault) {
        isAsking = false;
        emit unanswered(fault.description());
        return;
    }
    schedule.sent(now());
    goOn();
}

void RconClient::take(const QByteArray &datagram)
{
    const QByteArray head = datagramHeader + question.head;
    if (!isAsking || !schedule.isAsked() || !datagram.startsWith(head))
        return;
    add(datagram.sliced(head.size()), datagram.size());
    schedule.came(now(), reply.isEndless || (question.isWhole && question.isWhole(reply)));
    timer.start(std::max(schedule.due() - now(), 0ms)); // not from here: the socket is still being read
}

void RconClient::add(const QByteArray &text, qsizetype size)
{
    const QString come = fromAnsi(text);
    const qsizetype room = largestReply - reply.text.size();
    reply.isEndless |= come.size() > room;
    if (!come.isEmpty() && room > 0)
        reply.pieces.append({reply.text.size(), size == ReplyPiece::losingSize});
    reply.text += come.left(room);
}

RconQuestion rconQuestion(const QString &command, const QString &password, int copies, AskSchedule::Time timeout)
{
    RconQuestion question{toAnsi(u"rcon %1 "_s.arg(password) + command), "print\n", copies, timeout, {}};
    if (asksForPlayers(command))
        question.isWhole = isWholeStatus;
    return question;
}

RconQuestion statusQuery(int copies, AskSchedule::Time timeout)
{
    return {"getstatus", "statusResponse\n", copies, timeout, [](const RconReply &) { return true; }};
}

bool asksForPlayers(const QString &command)
{
    return trimBlanks(command).compare("status"_L1, Qt::CaseInsensitive) == 0;
}
