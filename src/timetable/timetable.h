// SPDX-License-Identifier: MIT
#pragma once

#include "emptiness.h"
#include "timed_list.h"
#include "timed_runs.h"
#include "timetable_file.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QTimer>

#include <optional>

class IniFile;
class ServerCount;
class UDPClient;
struct Services;

/// Lists of commands and when they are sent. Nothing runs while all are switched off: the timer stands at the next time
/// that is due, and only a list that waits for an empty server has the players counted.
class Timetable final : public QObject {
    Q_OBJECT

public:
    /// `udpclient` is looked on at for the address of the server. Reads the file `molvark-timetable.json` beside the
    /// settings.
    Timetable(const Services &services_, const UDPClient &udpclient_, QObject *parent = nullptr);

    [[nodiscard]] static bool isKept(const IniFile &ini);

    [[nodiscard]] const QList<TimedList> &lists() const { return timed; }
    /// Adds a list at the end, if there is room. Like `change` and `remove` it returns false when that is not done: the
    /// lists may be others now, because another program has changed the file.
    [[nodiscard]] bool add(const TimedList &list);
    [[nodiscard]] bool change(qsizetype index, const TimedList &list);
    [[nodiscard]] bool remove(qsizetype index);

    /// Sends the commands of a list now; what comes of it is among the results.
    void run(qsizetype index);

    [[nodiscard]] bool isConnected() const { return runs.isConnected(); }
    /// When what comes next, as a sentence.
    [[nodiscard]] QString outlook() const;
    /// What came of each run, the newest at the end.
    [[nodiscard]] QStringList results() const { return runs.results(); }
    /// What is wrong with the file; empty when nothing is.
    [[nodiscard]] QString trouble() const { return file.fault(); }

public slots:
    void setConnected(bool on);
    /// What the server made of a command that has been sent.
    void takeVerdict(int number, bool isGood, const QString &word) { runs.takeVerdict(number, isGood, word); }

signals:
    /// The lists, what is due or the fault.
    void changed();
    void resultschanged();
    /// The newest result, or what is wrong with the file.
    void told(const QString &text);

private:
    struct Due {
        std::optional<QDateTime> at;
        QDateTime begun;       ///< since when minutes count
        bool wasEmpty = false; ///< it has been sent for this emptiness
    };

    [[nodiscard]] bool save();
    void plan();
    void arm();
    void noticeClock(const QDateTime &now);
    void count();
    void takeCount(std::optional<int> players);
    void tmrtimetable_Timer();

    const Services &services;
    const UDPClient &udpclient;
    TimetableFile file;
    QList<TimedList> timed;
    QList<Due> dues; ///< of each list
    TimedRuns runs;
    QTimer tmrtimetable;
    ServerCount *serverCount = nullptr; ///< built when it is needed
    Emptiness emptiness;
    QDateTime lastSeen; ///< the time, to notice a clock that is set back
};
