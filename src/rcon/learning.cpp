// SPDX-License-Identifier: MIT
#include "learning.h"

#include "base/clock.h"
#include "base/prompts.h"
#include "console_words.h"
#include "conversation.h"
#include "exchange.h"
#include "output/output.h"
#include "reading.h"
#include "refusals.h"
#include "server_listing.h"
#include "services.h"
#include "session.h"

#include <QScopedValueRollback>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int betweenQuestions = 750; // milliseconds; the strictest servers hear one command in half a second
constexpr int letters = 26;
constexpr int questions = letters + 1;
constexpr int mostAttempts = 3;
constexpr int mostUnanswered = 2; // questions in a row, each with all its attempts

// Nobody waits for the answer to a console line or to a timed command, but it is to be seen: it has this long to come.
constexpr std::chrono::microseconds answerTime = 1500ms;

QString question(int step)
{
    return step < letters ? u"dvarlist %1*"_s.arg(QChar(u'a' + step)) : u"cmdlist"_s;
}

QString wordCount(qsizetype count)
{
    return count == 1 ? u"1 word"_s : u"%1 words"_s.arg(count);
}

} // namespace

Learning::Learning(const Services &services_, const Exchange &exchange, ConsoleWords &words_, QObject *parent)
    : QObject(parent), services(services_), words(words_)
{
    tmrlearn.setObjectName(u"tmrlearn"_s);
    tmrlearn.setInterval(betweenQuestions);
    connect(&tmrlearn, &QTimer::timeout, this, &Learning::tmrlearn_Timer);
    connect(&exchange, &Exchange::sending, this, &Learning::noteSending);
}

void Learning::mlearn_Click()
{
    if (isRunning())
        stop();
    else
        begin();
}

void Learning::begin()
{
    if (!services.session.connected)
        return;
    ++run;
    address = words.address();
    found = {};
    step = 0;
    attempts = 0;
    unanswered = 0;
    torn = 0;
    tmrlearn.start();
    emit runningchanged(true);
    showProgress(false);
}

void Learning::stop()
{
    if (isRunning())
        end(u"Learning stopped: %1 from server %2"_s);
}

void Learning::end(const QString &how)
{
    tmrlearn.stop();
    const bool isAll = step == questions && torn == 0;
    if (found.count() > 0)
        words.learn(address, found, isAll);
    const QString missing =
        torn > 0 ? u", %1 of %2 questions without a whole answer"_s.arg(torn).arg(questions) : QString();
    services.output.addmessage(how.arg(wordCount(found.count()), address) + missing);
    emit progressed({});
    emit runningchanged(false);
}

void Learning::tmrlearn_Timer()
{
    if (!isRunning() || !asking.isEmpty())
        return;
    const bool isOn = isMyTurn();
    showProgress(!isOn);
    if (isOn)
        askNext();
}

bool Learning::isMyTurn() const
{
    const bool isElsewhere = Conversation(services, BroughtBy::Tick).isElsewhere();
    const bool isAnswerDue = services.clock.elapsed() - othersSentAt < answerTime;
    return !isElsewhere && !isAnswerDue && services.prompts.openCount() == 0;
}

void Learning::askNext()
{
    const int mine = run;
    const Conversation talk(services);
    asking = question(step);
    const Outcome outcome = ask(talk, asking);
    asking.clear();
    const bool isStopped = run != mine || !isRunning() || services.session.closing;
    if (!isStopped)
        takeOutcome(outcome);
}

// What comes is not shown: it would be thousands of lines.
Learning::Outcome Learning::ask(const Conversation &talk, const QString &comm)
{
    hasSent = false;
    haveOthersSent = false;
    const int mine = run;
    Reading silent(services, {.note = {}, .needsConnection = false, .holdsTimersOff = false});
    const QScopedValueRollback silencing(silence, &silent);
    const Fate fate = talk.tellOnce(comm, isWholeListing, true);
    if (fate == Fate::Unsent)
        return Outcome::Unsent;
    if (fate == Fate::Silent && !haveOthersSent && run == mine)
        return Outcome::Silent;
    if (fate != Fate::Answered || haveOthersSent || run != mine)
        return Outcome::Displaced;
    if (isRefusal(talk.reply()))
        return Outcome::Refused;
    takeReply(talk);
    return isWholeListing(talk.reply()) ? Outcome::Whole : Outcome::Torn;
}

void Learning::takeReply(const Conversation &talk)
{
    if (step < letters)
        found.add({{}, listedVariables(talk.reply(), talk.pieces())});
    else
        found.add({listedCommands(talk.reply(), talk.pieces()), {}});
}

void Learning::takeOutcome(Outcome outcome)
{
    if (outcome == Outcome::Displaced)
        return;
    if (outcome == Outcome::Unsent)
        return end(u"The server cannot be reached, learning stopped: %1 from server %2"_s);
    if (outcome == Outcome::Refused)
        return end(u"The server refuses the password, learning stopped: %1 from server %2"_s);
    const bool isLast = ++attempts == mostAttempts;
    if (outcome == Outcome::Whole)
        return goOn();
    if (!isLast)
        return;
    ++torn;
    unanswered = outcome == Outcome::Silent ? unanswered + 1 : 0;
    if (unanswered == mostUnanswered)
        end(u"The server does not answer, learning stopped: %1 from server %2"_s);
    else
        goOn();
}

void Learning::goOn()
{
    attempts = 0;
    ++step;
    if (step == questions)
        end(u"Learned %1 from server %2"_s);
    else
        showProgress(false);
}

void Learning::showProgress(bool isPaused)
{
    const QString state = isPaused ? u"waiting for its turn"_s : question(step);
    emit progressed(
        u"Learning: %1 (%2 of %3), %4"_s.arg(state).arg(step + 1).arg(questions).arg(wordCount(found.count())));
}

void Learning::noteSending(const QString &comm)
{
    if (!asking.isEmpty() && comm == asking && !hasSent) {
        hasSent = true;
        return;
    }
    if (silence && !haveOthersSent)
        silence->endCollecting(); // their answer is to be seen
    haveOthersSent = true;
    othersSentAt = services.clock.elapsed();
}
