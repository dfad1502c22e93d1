// SPDX-License-Identifier: MIT
#include "script_errand.h"

#include "cli_output.h"
#include "masking.h"
#include "players/player_check.h"
#include "rcon/shown_command.h"

using namespace Qt::StringLiterals;

ScriptErrand::ScriptErrand(CliOutput &output_, const Asking &asking_, const QList<ScriptStep> &steps_,
                           int copiesOfQuestion_)
    : ServerErrand(output_, asking_), steps(steps_), copiesOfQuestion(copiesOfQuestion_)
{
    pause.setSingleShot(true);
    pause.setTimerType(Qt::PreciseTimer);
    connect(&pause, &QTimer::timeout, this, [this] { endStep(ExitStatus::Done); });
}

void ScriptErrand::stop()
{
    pause.stop();
    ServerErrand::stop();
}

void ScriptErrand::goOn()
{
    if (next == steps.size())
        finish(first);
    else
        beginStep(steps.at(next));
}

void ScriptErrand::beginStep(const ScriptStep &step)
{
    switch (step.kind) {
    case ScriptStep::Kind::Sleep:
        pause.start(step.pause);
        return;
    case ScriptStep::Kind::Query:
        return ask(statusQuery(copiesOfQuestion, asking.timeout));
    case ScriptStep::Kind::Command:
        if (mayBeCut(step.command, asking.password))
            output.note(u"With its password the request has more than 1,023 bytes, and many servers read no more: "_s +
                        shown());
        return askConsole(step.command, asksForPlayers(step.command) ? copiesOfQuestion : asking.copies);
    }
}

void ScriptErrand::take(const RconReply &reply)
{
    print(reply);
    if (steps.at(next).kind == ScriptStep::Kind::Query) {
        endStep(ExitStatus::Done);
        return;
    }
    const QString &command = steps.at(next).command;
    const ExitStatus status = statusOfReply(command, reply.text, reply.copies);
    if (status == ExitStatus::PasswordRefused)
        output.note(u"The server refused the password."_s);
    else if (status == ExitStatus::NotDone)
        output.note(u"The server did not do it: "_s + shown());
    else if (status != statusOfReply(command, reply.text))
        output.note(u"An earlier copy may have done it: "_s + shown());
    else if (asksForPlayers(command) && !wholeTable(reply.text, reply.pieces))
        output.note(u"The list of players did not come whole."_s);
    endStep(status);
}

void ScriptErrand::print(const RconReply &reply)
{
    output.printReply(maskedReply(reply.text, reply.pieces, asking.password));
    if (reply.isEndless)
        output.note(u"The answer had no end, and the rest of it was left out."_s);
}

void ScriptErrand::takeSilence()
{
    output.note(u"No answer to: "_s + shown());
    endStep(ExitStatus::NoAnswer);
}

// Who does not answer, or does not take the password, will not take the rest either.
void ScriptErrand::endStep(ExitStatus status)
{
    if (first == ExitStatus::Done)
        first = status;
    ++next;
    if (status == ExitStatus::NoAnswer || status == ExitStatus::PasswordRefused)
        finish(first);
    else
        goOn();
}

QString ScriptErrand::shown() const
{
    const ScriptStep &step = steps.at(next);
    return step.kind == ScriptStep::Kind::Query ? u"getstatus"_s : starredCommand(step.command, asking.password);
}
