// SPDX-License-Identifier: MIT
#include "server_errand.h"

#include "base/fault.h"
#include "cli_output.h"

#include <utility>

using namespace Qt::StringLiterals;

ServerErrand::ServerErrand(CliOutput &output_, Asking asking_) : Errand(output_), asking(std::move(asking_))
{
    connect(&client, &RconClient::answered, this, &ServerErrand::take);
    connect(&client, &RconClient::unanswered, this, &ServerErrand::endUnanswered);
}

void ServerErrand::begin()
{
    try {
        client.open(asking.server.host, asking.server.port);
    } catch (const Fault &fault) {
        if (isOver())
            return;
        output.note(fault.number() == Fault::HostNotFound
                        ? u"No address was found for %1."_s.arg(asking.server.host)
                        : u"%1 cannot be asked: %2"_s.arg(asking.server.host, fault.description()));
        finish(ExitStatus::NoAnswer);
        return;
    }
    goOn();
}

void ServerErrand::askConsole(const QString &command, int copies)
{
    isConsoleAsked = true;
    client.ask(rconQuestion(command, asking.password, copies, asking.timeout));
}

// The public query is not counted like a command.
std::chrono::milliseconds ServerErrand::untilHeard() const
{
    return isConsoleAsked ? client.untilHeard() : std::chrono::milliseconds(0);
}

void ServerErrand::endUnanswered(const QString &why)
{
    if (why.isEmpty()) {
        takeSilence();
        return;
    }
    output.note(u"The question could not be sent: %1"_s.arg(why));
    takeSilence();
}
