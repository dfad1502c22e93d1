// SPDX-License-Identifier: MIT
#pragma once

#include "words_file.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>

class ConsoleWords;
class Conversation;
class Exchange;
class Reading;
struct Services;

/// Asks the server for all its variables and commands, one question after the other, so that the console line knows
/// them. It brings no box and keeps out of the way: while somebody else speaks to the server or waits for an answer,
/// while a settings page is read or written and while a box is open it waits for its turn.
class Learning final : public QObject {
    Q_OBJECT

public:
    Learning(const Services &services_, const Exchange &exchange, ConsoleWords &words_, QObject *parent);

    [[nodiscard]] bool isRunning() const { return tmrlearn.isActive(); }

public slots:
    /// Begins, or stops what has begun; what has been learned by then is kept.
    void mlearn_Click();
    /// Likewise, because the server is left.
    void stop();

signals:
    void runningchanged(bool isRunning);
    /// How far it is; empty when it is over.
    void progressed(const QString &text);

private:
    enum class Outcome { Whole, Torn, Silent, Unsent, Displaced, Refused };

    void begin();
    void tmrlearn_Timer();
    [[nodiscard]] bool isMyTurn() const;
    void askNext();
    [[nodiscard]] Outcome ask(const Conversation &talk, const QString &comm);
    void takeOutcome(Outcome outcome);
    void takeReply(const Conversation &talk);
    void goOn();
    void end(const QString &how);
    void showProgress(bool isPaused);
    void noteSending(const QString &comm);

    const Services &services;
    ConsoleWords &words;
    QTimer tmrlearn{this};
    QString address; ///< of the server that is asked
    ServerWords found;
    Reading *silence = nullptr; ///< in which the answer to it is awaited
    QString asking;             ///< the question that is under way
    int run = 0;                ///< tells one learning from the next
    int step = 0;               ///< how many questions are done
    int attempts = 0;           ///< at this question
    int unanswered = 0;         ///< questions in a row
    int torn = 0;               ///< questions without a whole answer
    std::chrono::microseconds othersSentAt{};
    bool haveOthersSent = false; ///< since the question that is under way was begun
    bool hasSent = false;        ///< the question under way has gone out
};
