// SPDX-License-Identifier: MIT
#pragma once

#include "emptiness.h"
#include "timed_list.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QTimer>

#include <optional>

class ServerCount;
class UDPClient;
struct Services;

/// Lists of commands and when they are sent. Nothing runs while all are switched off: the timer stands at the next time
/// that is due, and only a list that waits for an empty server has the players counted.
class Timetable final : public QObject {
    Q_OBJECT

public:
    static constexpr qsizetype mostResults = 200;

    /// `udpclient` is looked on at for the address of the server. Reads the file `molvark-timetable.json` of the
    /// current directory; one that is broken is put aside.
    Timetable(const Services &services_, const UDPClient &udpclient_, QObject *parent = nullptr);

    [[nodiscard]] static bool isKept();

    [[nodiscard]] const QList<TimedList> &lists() const { return timed; }
    /// Adds a list at the end, if there is room.
    void add(const TimedList &list);
    void change(qsizetype index, const TimedList &list);
    void remove(qsizetype index);

    /// Sends the commands of a list now; what comes of it is among the results.
    void run(qsizetype index);

    [[nodiscard]] bool isConnected() const { return connected; }
    /// When what comes next, as a sentence.
    [[nodiscard]] QString outlook() const;
    /// What came of each run, the newest at the end.
    [[nodiscard]] QStringList results() const;
    /// What is wrong with the file; empty when nothing is.
    [[nodiscard]] QString trouble() const { return fault; }

public slots:
    void setConnected(bool on);
    /// What the server made of a command that has been sent.
    void takeVerdict(int number, bool isGood, const QString &word);

signals:
    /// The lists, what is due or the fault.
    void changed();
    void resultschanged();
    /// The newest result, or what is wrong with the file.
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
        QList<Sent> sent;
        QString ended; ///< why it ended before its time
        int postponed = 0;

        [[nodiscard]] QString result() const;
        /// False when that command is none of its.
        bool take(int number, bool isGood, const QString &verdict);
    };
    struct Due {
        std::optional<QDateTime> at;
        QDateTime begun;       ///< since when minutes count
        bool wasEmpty = false; ///< it has been sent for this emptiness
    };

    void load();
    void save();
    void putAside();
    [[nodiscard]] bool isChangedByAnother();
    void plan();
    void arm();
    void noticeClock(const QDateTime &now);
    void count();
    void takeCount(std::optional<int> players);
    void tmrtimetable_Timer();
    void begin(const TimedList &list, const QString &obstacle = {});
    void sendQueued();
    void dropQueue();
    void send(Run &run);
    void addResult(const Run &run);
    void tell(const QString &text);

    const Services &services;
    const UDPClient &udpclient;
    QList<TimedList> timed;
    QList<Due> dues; ///< of each list
    QList<Run> queue;
    std::optional<Run> underWay;
    QList<Run> runs; ///< the results, the newest at the end
    QTimer tmrtimetable;
    QTimer tmrpostponed;
    ServerCount *serverCount = nullptr; ///< built when it is needed
    Emptiness emptiness;
    QString fault;
    QByteArray lastText;    ///< of the file, as it was read or written last
    QDateTime lastSeen;     ///< the time, to notice a clock that is set back
    bool isReadable = true; ///< the file, as far as it is there
    bool connected = false;
    bool isSending = false;
};
