// SPDX-License-Identifier: MIT
#include "recorder.h"

#include "base/clock.h"
#include "base/prompts.h"
#include "base/replaced_file.h"
#include "base/system_error.h"
#include "base/wire_text.h"
#include "known_passwords.h"
#include "output/log_file.h"
#include "output/output.h"
#include "rcon/exchange.h"
#include "rcon/udp_client.h"

using namespace Qt::StringLiterals;

Recorder::Recorder(const Exchange &exchange_, const UDPClient &udpclient_, const KnownPasswords &passwords_,
                   Output &output_, Prompts &prompts_, const Clock &clock_, QObject *parent)
    : QObject(parent),
      exchange(exchange_),
      udpclient(udpclient_),
      passwords(passwords_),
      output(output_),
      prompts(prompts_),
      clock(clock_)
{
}

Recorder::~Recorder()
{
    if (isRecording())
        (void)write(mask.rest());
}

void Recorder::stop()
{
    if (!isRecording())
        return;
    writeOrEnd(mask.rest());
    end();
}

void Recorder::mrecord_Click()
{
    if (isRecording()) {
        stop();
    } else {
        begin(askReplacedFile(prompts, {u"Record traffic to..."_s, u"molvark_traffic_"_s + logDate(clock.now().date()),
                                        u"jsonl"_s, u"Record traffic"_s}));
    }
}

void Recorder::begin(const QString &name)
{
    if (name.isEmpty() || isRecording())
        return; // or the item has been chosen again while a box was open
    if (const std::optional<Fault> fault = open(name)) {
        tellUnwritten(prompts, *fault, u"Nothing is recorded"_s);
        return;
    }
    start = clock.elapsed();
    mask = {};
    for (const QString &password : passwords.all())
        mask.hide(toAnsi(password));
    connect(&udpclient, &UDPClient::datagramsent, this,
            [this](const QByteArray &datagram) { writeOrEnd(mask.sent(sinceStart(), datagram, sentPassword())); });
    connect(&udpclient, &UDPClient::datagramread, this,
            [this](const QByteArray &datagram) { writeOrEnd(mask.received(sinceStart(), datagram)); });
    emit recordingchanged(true);
}

std::optional<Fault> Recorder::open(const QString &name)
{
    if (const std::optional<Fault> fault = faultOfNoFile(name))
        return fault;
    file.setFileName(name);
    clearSystemError();
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
        return lastSystemError(file.errorString());
    return {};
}

void Recorder::end()
{
    if (!isRecording())
        return;
    udpclient.disconnect(this);
    file.close();
    emit recordingchanged(false);
}

void Recorder::takeCheckSent(const QByteArray &datagram, const QString &password)
{
    if (isRecording())
        writeOrEnd(mask.sent(sinceStart(), datagram, toAnsi(password)));
}

void Recorder::takeCheckRead(const QByteArray &datagram)
{
    if (isRecording())
        writeOrEnd(mask.received(sinceStart(), datagram, TrafficMask::OfCheck));
}

std::optional<Fault> Recorder::write(const QByteArray &lines)
{
    const qint64 before = file.size();
    clearSystemError();
    if (file.write(lines) == lines.size())
        return {};
    Fault fault = lastSystemError(file.errorString());
    file.resize(before); // or the last line would break off
    return fault;
}

// A line in the message list, no box: datagrams come whenever they like.
void Recorder::writeOrEnd(const QByteArray &lines)
{
    if (lines.isEmpty())
        return;
    if (const std::optional<Fault> fault = write(lines)) {
        end();
        output.addmessage(u"The recording has ended, err %1: %2"_s.arg(fault->number()).arg(fault->description()));
    }
}

QByteArray Recorder::sentPassword() const
{
    return toAnsi(exchange.sentPassword());
}

TrafficMask::Time Recorder::sinceStart() const
{
    return clock.elapsed() - start;
}
