// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "fuzz.h"
#include "ledger/known_passwords.h"
#include "ledger/ledger_entry.h"
#include "ledger/traffic_mask.h"
#include "rcon/refusals.h"
#include "rcon/request_size.h"
#include "rcon/shown_command.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QByteArray requestHead = "\xFF\xFF\xFF\xFFrcon ";
const QByteArray replyHead = "\xFF\xFF\xFF\xFFprint\n";

/// A password, a command, and the texts of the datagrams that answer it.
struct Exchanged {
    QByteArray password;
    QByteArray command;
    QByteArrayList answers;

    [[nodiscard]] QByteArray request() const { return requestHead + password + ' ' + command; }
    /// Asterisks hide no asterisks.
    [[nodiscard]] bool isHidden(const QByteArray &text) const
    {
        return password.isEmpty() || password.contains('*') || !text.contains(password);
    }
};

Exchanged exchanged(const QByteArray &input)
{
    const QByteArrayList parts = input.split('\x01');
    return {parts.value(0), parts.value(1), parts.mid(2)};
}

void keep(const Exchanged &all)
{
    KnownPasswords passwords;
    passwords.add(fromAnsi(all.password));
    LedgerEntry entry({1, fromAnsi(all.command), fromAnsi(all.password), all.request()}, passwords, {}, 0s);
    require(entry.command.size() == all.command.size(), "each character keeps its place");
    require(all.isHidden(toAnsi(entry.command)), "no command shows the password");
    require(entry.readPart.has_value() == (all.request().size() > 4 + longestRequest), "1,023 bytes are read");
    qsizetype size = 0;
    bool isRefused = false; // in words that anybody can know
    for (const QByteArray &answer : all.answers) {
        entry.take({replyHead, fromAnsi(answer), answer.size()}, passwords, 1s);
        isRefused = isRefused || isUsualRefusal(fromAnsi(answer));
        size += answer.size();
    }
    require(entry.reply.size() == size && entry.bytes == size, "all of a reply is kept");
    require(isRefused || all.isHidden(toAnsi(entry.reply)), "no reply shows the password");
    require(size > 0 || all.answers.isEmpty() || entry.readPart || entry.judged() == Verdict::Acknowledged,
            "an empty answer is an acknowledgement");
}

void record(const Exchanged &all)
{
    TrafficMask mask;
    QByteArray lines = mask.sent(0us, all.request(), all.password);
    for (const QByteArray &answer : all.answers)
        lines += mask.received(1us, replyHead + answer);
    lines += mask.rest();
    QByteArrayList recorded = lines.split('\n');
    recorded.removeLast();
    require(recorded.size() == 1 + all.answers.size(), "each datagram is a line");
    for (qsizetype line = 0; line < recorded.size(); ++line) {
        const QJsonObject object = QJsonDocument::fromJson(recorded.at(line)).object();
        const QByteArray datagram = QByteArray::fromBase64(object.value("data"_L1).toString().toLatin1());
        const QByteArray plain = line == 0 ? all.request() : replyHead + all.answers.at(line - 1);
        const QByteArray &head = line == 0 ? requestHead : replyHead;
        require(datagram.size() == plain.size() && datagram.startsWith(head), "asterisks change no size");
        require(all.isHidden(datagram.sliced(head.size())), "no line shows the password");
    }
}

} // namespace

void fuzz(const QByteArray &input)
{
    const Exchanged all = exchanged(input);
    keep(all);
    record(all);
}
