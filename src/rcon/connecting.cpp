// SPDX-License-Identifier: MIT
#include "connecting.h"

#include "base/fault.h"
#include "base/numbers.h"
#include "base/prompts.h"
#include "base/wire_text.h"
#include "conversation.h"
#include "exchange.h"
#include "output/output.h"
#include "reading.h"
#include "server_fields.h"
#include "server_info.h"
#include "services.h"
#include "session.h"
#include "udp_client.h"

#include <QScopeGuard>

using namespace Qt::StringLiterals;

void Connecting::toggle()
{
    begin(false);
}

void Connecting::connectAtStart()
{
    const FlagHolder silence(services.link.collecting, services.link.epoch(services.clock));
    begin(true);
}

void Connecting::begin(bool formloading)
{
    if (services.session.connected) {
        disconnectFromServer();
        return;
    }
    const Attempt wanted = attemptWanted();
    if (attempt == wanted)
        return; // one click too many
    try {
        connectToServer(wanted, formloading);
    } catch (const Fault &fault) {
        services.prompts.showFault(fault); // here and not further out, since start-up connects too and goes on
    }
}

Connecting::Attempt Connecting::attemptWanted() const
{
    const ServerFields &fields = services.fields;
    return {trimBlanks(fields.server()), trimBlanks(fields.port()), trimBlanks(fields.password()),
            services.clock.now().date()};
}

Connecting::State Connecting::state() const
{
    if (services.session.connected)
        return State::Connected;
    return attempt ? State::Connecting : State::NotConnected;
}

void Connecting::announceState()
{
    switch (state()) {
    case State::NotConnected:
        return emit statechanged(State::NotConnected, {});
    case State::Connecting:
        return emit statechanged(State::Connecting, attempt->server + u':' + attempt->port);
    case State::Connected:
        return emit statechanged(State::Connected, address);
    }
}

void Connecting::closeLink()
{
    services.link.udpclient.Close();
}

void Connecting::disconnectFromServer()
{
    closeLink();
    services.session.connected = false;
    emit disconnected();
    announceState();
}

void Connecting::connectToServer(const Attempt &wanted, bool formloading)
{
    emit beginning();
    const Output::Work work(services.output);
    services.output.showprogress({}, Progress::Replace);
    if (!formloading)
        clearOutput();
    services.fields.set(wanted.server, wanted.port, wanted.password);
    if (wanted.server.isEmpty() || wanted.port.isEmpty() || wanted.password.isEmpty()) {
        services.prompts.refuse(u"Please provide all fields, Server, Port and password"_s, u"Error..."_s);
        services.output.closeNoteSoon();
        return;
    }
    if (openLink(wanted))
        survey(formloading);
}

void Connecting::clearOutput()
{
    const Preferences &options = services.session.options;
    if (options.clearrconnew) {
        if (options.savercon)
            services.output.savercon_Click(true);
        services.output.clearrcon();
    }
    if (options.clearmessnew) {
        if (options.savemessages)
            services.output.savemessages_Click(true);
        services.output.clearmessages();
    }
}

// Opens the socket and proves the password; from then on the session counts as connected. Whatever comes of it, the
// notes about saving the logs are over. An attempt that is going on is given up: the link is another one's.
bool Connecting::openLink(const Attempt &wanted)
{
    attempt = wanted;
    const int number = ++attempts;
    const auto isGivenUp = [&] { return number != attempts; };
    const auto ended = qScopeGuard([&] {
        if (isGivenUp())
            return;
        attempt.reset();
        services.output.showprogress({}, Progress::Replace);
        announceState();
    });
    announceState();
    UDPClient &udpclient = services.link.udpclient;
    try {
        udpclient.Abandon();
        udpclient.setRemoteHost(wanted.server);
        udpclient.setRemotePort(toInteger32(wanted.port));
        udpclient.Bind();
    } catch (const Fault &) {
        if (isGivenUp())
            return false;
        throw;
    }
    const Conversation talk(services);
    QString password;
    const bool isAccepted = passwordAccepted(talk, password);
    if (isGivenUp())
        return false;
    if (!isAccepted) {
        closeLink();
        return false;
    }

    // What it was proved with, whatever was typed meanwhile.
    services.fields.set(wanted.server, wanted.port, password);
    services.session.connected = true;
    address = services.fields.address();
    services.output.addmessage(u"Connected to server "_s + address);
    emit connected();
    return true;
}

bool Connecting::passwordAccepted(const Conversation &talk, QString &password)
{
    talk.tell(u"status"_s, true);
    password = services.link.exchange.sentPassword();
    talk.wait(1);
    if (talk.isSuperseded() || services.session.closing || services.session.rconnoroute != 0)
        return false;
    if (refusesPassword(talk.reply())) {
        services.prompts.refuse(u"Invalid Rcon password, no connection established"_s, u"No connection"_s);
        return false;
    }
    return true;
}

// Each step may find that the person has disconnected meanwhile, and perhaps connected anew; then the rest of this
// connection's questions is left out.
void Connecting::survey(bool formloading)
{
    const auto addNote = [this, formloading](const QString &note) {
        if (!formloading)
            services.output.showprogress(note, Progress::Add);
    };
    const Conversation talk(services);
    const Reading reading(
        services,
        {.note = formloading ? QString() : u"Asking server for status"_s, .holdsTimersOff = false, .steps = 3});
    if (!askGame(talk))
        return;
    addNote(u"Asking server for Map rotation"_s);
    if (talk.ask(u"dvarlist sv_maprotation"_s) && talk.isOpen())
        emit rotationread(talk.reply());
    if (!talk.isOpen())
        return;
    addNote(u"Asking server for cfg files"_s);
    if (talk.ask(u"fdir *.cfg"_s) && talk.isOpen())
        emit cfgfilesread(talk.reply());
    if (talk.isOpen())
        emit surveyed();
}

bool Connecting::askGame(const Conversation &talk)
{
    try {
        talk.sendQuery(u"getstatus"_s);
    } catch (const Fault &) {
        // Nothing will come, which is what the wait finds out.
    }
    if (!talk.awaitAnswer())
        return false;
    services.output.addrcon(
        u"Server running game mode [%1] on map [%2]"_s.arg(gameType(talk.reply()), mapName(talk.reply())));
    return true;
}
