// SPDX-License-Identifier: MIT
#include "check_errand.h"

#include "cli_output.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

CheckPatience patienceOf(const Asking &asking)
{
    const CheckPatience::Question each{static_cast<int>(std::max(asking.timeout, AskSchedule::betweenCopies).count()),
                                       asking.copies};
    return {each, each, each};
}

} // namespace

CheckErrand::CheckErrand(CliOutput &output_, const Asking &asking_)
    : Errand(output_),
      asking(asking_),
      runner(patienceOf(asking_), {[this] { return qint64{untilHeard().count()}; }, [this] { sinceCommand.start(); }})
{
    lookUp.setSingleShot(true);
    connect(&lookUp, &QTimer::timeout, this, &CheckErrand::endLookUp);
    connect(&runner, &CheckRunner::stepped, this, &CheckErrand::print);
    connect(&runner, &CheckRunner::ended, this, &CheckErrand::takeEnd);
}

void CheckErrand::begin()
{
    lookUp.start(longestLookUp);
    runner.start(asking.server.host, QString::number(asking.server.port), asking.password);
}

void CheckErrand::print(const CheckStep &step)
{
    lookUp.stop();
    output.print(u"%1\n    %2\n"_s.arg(step.result, step.advice));
}

// Without an answer of the console there was none that counts: the server is there for commands.
void CheckErrand::takeEnd()
{
    const std::optional<QString> &words = runner.consoleWords();
    if (!words)
        finish(ExitStatus::NoAnswer);
    else
        finish(refusesInAnyWording(*words) ? ExitStatus::PasswordRefused : statusOfReply(u"g_gametype", *words));
}

void CheckErrand::endLookUp()
{
    runner.stop();
    print(lookUpStep(asking.server.host, {}, longestLookUp.count()));
    finish(ExitStatus::NoAnswer);
}

std::chrono::milliseconds CheckErrand::untilHeard() const
{
    const AskSchedule::Time passed(sinceCommand.isValid() ? sinceCommand.elapsed()
                                                          : AskSchedule::betweenCopies.count());
    return std::max(AskSchedule::betweenCopies - passed, 0ms);
}

void CheckErrand::stop()
{
    lookUp.stop();
    runner.stop();
}
