// SPDX-License-Identifier: MIT
#pragma once

#include "traffic_mask.h"

#include <QFile>
#include <QObject>

#include <memory>
#include <optional>

class Clock;
class Exchange;
class Fault;
class KnownPasswords;
class Output;
class Prompts;
class UDPClient;

/// Writes every datagram to a file, from when the person says so until he says so again, passwords masked. It listens
/// only while it records.
class Recorder final : public QObject {
    Q_OBJECT

public:
    /// `passwords_`: those known when a recording begins are not to be seen in it.
    Recorder(const Exchange &exchange_, const UDPClient &udpclient_, const KnownPasswords &passwords_, Output &output_,
             Prompts &prompts_, const Clock &clock_, QObject *parent = nullptr);
    ~Recorder() override;

    /// Begins to record, to a file for which it asks, or ends it.
    void mrecord_Click();
    [[nodiscard]] bool isRecording() const { return file.isOpen(); }
    /// Ends it, if it goes on, with what has been held back.
    void stop();

public slots:
    /// Datagrams of the connection check, which has a link and a password of its own; nothing happens while it does not
    /// record.
    void takeCheckSent(const QByteArray &datagram, const QString &password);
    void takeCheckRead(const QByteArray &datagram);

signals:
    void recordingchanged(bool isRecording);

private:
    void begin(const QString &name);
    [[nodiscard]] std::optional<Fault> open(const QString &name);
    void end();
    [[nodiscard]] std::optional<Fault> write(const QByteArray &lines);
    void writeOrEnd(const QByteArray &lines);
    [[nodiscard]] QByteArray sentPassword() const;
    [[nodiscard]] TrafficMask::Time sinceStart() const;

    const Exchange &exchange;
    const UDPClient &udpclient;
    const KnownPasswords &passwords;
    Output &output;
    Prompts &prompts;
    const Clock &clock;
    QFile file;
    TrafficMask mask;
    TrafficMask::Time start{};
};
