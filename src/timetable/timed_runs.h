// SPDX-License-Identifier: MIT
#pragma once

#include "timed_list.h"

#include <QList>
#include <QObject>
#include <QTimer>

#include <optional>

struct Services;

/// Sends lists of commands, one after the other, and keeps what came of each.
class TimedRuns final : public QObject {
    Q_OBJECT

public:
    static constexpr qsizetype mostResults = 200;

    TimedRuns(const Services &services_, QObject *parent);

    /// What the person wants waits for others that speak to the server; what is due by itself is missed then.
    enum class WantedBy { Person, Itself };
    void begin(const TimedList &list, WantedBy by);
    /// It was due, and has not been sent for that reason.
    void miss(const TimedList &list, const QString &reason);

    [[nodiscard]] bool isConnected() const { return connected; }
    void setConnected(bool on);
    /// What the server made of a command that has been sent.
    void takeVerdict(int number, bool isGood, const QString &word);
    /// What came of each run, the newest at the end.
    [[nodiscard]] QStringList results() const;

signals:
    void resultschanged();
    /// The newest result.
    void told(const QString &text);

private:
    struct Sent {
        QString command; ///< as it may be shown
        int number = 0;
        QString verdict = {};
        bool isGood = false;
    };
    struct Run {
        QString heading; ///< when, and which list
        QStringList commands;
        bool canWait = false;
        QList<Sent> sent = {};
        QString ended = {}; ///< why it ended before its time
        int postponed = 0;

        [[nodiscard]] QString result() const;
        /// False when that command is none of its.
        bool take(int number, bool isGood, const QString &verdict);
    };

    [[nodiscard]] Run newRun(const TimedList &list) const;
    [[nodiscard]] bool areOthersAtWork() const;
    void sendQueued();
    void dropQueue();
    void send(Run &run) const;
    void addResult(const Run &run);
    void addUnsent(Run run, const QString &reason);

    const Services &services;
    QList<Run> queue;
    std::optional<Run> underWay;
    QList<Run> runs; ///< the results, the newest at the end
    QTimer tmrpostponed;
    bool connected = false;
    bool isSending = false;
};
