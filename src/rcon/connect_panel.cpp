// SPDX-License-Identifier: MIT
#include "connect_panel.h"
#include "ui_connect_panel.h"

#include "base/fault.h"
#include "base/focus.h"
#include "base/numbers.h"
#include "base/prompts.h"
#include "base/wire_text.h"
#include "exchange.h"
#include "output/output.h"
#include "server_info.h"
#include "services.h"
#include "session.h"
#include "settings/saved_servers.h"
#include "udp_client.h"

#include <QScopeGuard>
#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

namespace {

constexpr int queryWaits = 5; // seconds for the public status query

void rememberText(ComboBox *box)
{
    if (comboRemembers(box->entries(), box->currentText()))
        box->addItem(box->currentText());
}

} // namespace

ConnectPanel::ConnectPanel(Services &services_, QWidget *parent)
    : QWidget(parent), services(services_), ui(std::make_unique<Ui::ConnectPanel>())
{
    ui->setupUi(this);
    services.exchange.setPasswordReader([this] { return password(); });
    connect(ui->cmdconnect, &QPushButton::clicked, this, &ConnectPanel::cmdconnect_Click);
    connect(ui->txtPWD, &QLineEdit::returnPressed, this, &ConnectPanel::passwordentered);
    connect(ui->Label3, &ClickLabel::clicked, this, &ConnectPanel::modsitewanted);
    onLostFocus(ui->comserver, [this] { comserver_LostFocus(); });
    onLostFocus(ui->comport, [this] { comport_LostFocus(); });
}

ConnectPanel::~ConnectPanel() = default;

QString ConnectPanel::server() const
{
    return ui->comserver->currentText();
}

QString ConnectPanel::port() const
{
    return ui->comport->currentText();
}

QString ConnectPanel::password() const
{
    return ui->txtPWD->text();
}

void ConnectPanel::fill(const QString &server, const QString &port, const QString &password)
{
    ui->comserver->setEditText(server);
    ui->comport->setEditText(port);
    ui->txtPWD->setText(password);
}

void ConnectPanel::focusServer()
{
    ui->comserver->setFocus();
}

void ConnectPanel::comserver_LostFocus()
{
    rememberText(ui->comserver);
}

void ConnectPanel::comport_LostFocus()
{
    rememberText(ui->comport);
}

void ConnectPanel::cmdconnect_Click()
{
    if (services.session.connected) {
        disconnectFromServer();
        return;
    }
    if (proving) // a second click meanwhile is not a second connection
        return;
    try {
        connectToServer();
    } catch (const Fault &fault) {
        services.prompts.showFault(fault); // here and not further out, since start-up connects too and goes on
    }
}

void ConnectPanel::disconnectFromServer()
{
    services.udpclient.Close();
    ++connection;
    showConnected(false);
    emit disconnected();
}

void ConnectPanel::connectToServer()
{
    services.output.showprogress({}, Progress::Replace);
    if (!services.session.formloading)
        clearOutput();
    trimFields();
    if (server().isEmpty() || port().isEmpty() || password().isEmpty()) {
        services.prompts.refuse(u"Please provide all fields, Server, Port and password"_s, u"Error..."_s);
        return;
    }

    if (!enterSession())
        return;
    askServer(connection);
    if (!services.session.formloading)
        services.output.showprogress({}, Progress::Replace);
    services.session.rconcollect = false;
}

void ConnectPanel::clearOutput()
{
    Session &session = services.session;
    const auto saved = [&](auto save) {
        const QScopedValueRollback automatic(session.autoaction, true);
        (services.output.*save)(session.autoaction);
    };
    if (session.options.clearrconnew) {
        if (session.options.savercon)
            saved(&Output::savercon_Click);
        services.output.clearrcon();
    }
    if (session.options.clearmessnew) {
        if (session.options.savemessages)
            saved(&Output::savemessages_Click);
        services.output.clearmessages();
    }
}

void ConnectPanel::trimFields()
{
    fill(trimBlanks(server()), trimBlanks(port()), trimBlanks(password()));
}

// Opens the socket and proves the password; from then on the session counts as connected. Whatever comes of it, the
// notes about saving the logs are over.
bool ConnectPanel::enterSession()
{
    const QScopedValueRollback trying(proving, true);
    const auto progressClosed = qScopeGuard([this] { services.output.showprogress({}, Progress::Replace); });
    const QString host = server();
    const QString hostPort = port();
    services.udpclient.setRemoteHost(host);
    services.udpclient.setRemotePort(toInteger32(hostPort));
    services.udpclient.Bind();
    if (!passwordAccepted()) {
        services.udpclient.Close();
        return false;
    }

    // The fields could be edited while the server was asked.
    fill(host, hostPort, password());
    ++connection;
    showConnected(true);
    services.output.addmessage(u"Connected to server "_s + host + u':' + hostPort);
    emit connected();
    return true;
}

bool ConnectPanel::passwordAccepted()
{
    services.exchange.sendinfo(u"status"_s, true);
    services.exchange.waitseconds(1);
    if (services.session.closing || services.session.rconnoroute != 0)
        return false;
    if (refusesPassword(services.session.rconreply)) {
        services.prompts.refuse(u"Invalid Rcon password, no connection established"_s, u"No connection"_s);
        return false;
    }
    return true;
}

// Each step may find that the person has disconnected meanwhile, and perhaps connected anew; then the rest of this
// connection's questions is left out.
void ConnectPanel::askServer(int number)
{
    showStep(u"Asking server for status"_s, Progress::Replace);
    if (!askGame(number))
        return;
    showStep(u"Asking server for Map rotation"_s, Progress::Add);
    askRotation(number);
    if (!isCurrent(number))
        return;
    showStep(u"Asking server for cfg files"_s, Progress::Add);
    askCfgFiles(number);
    if (isCurrent(number))
        emit settled();
}

bool ConnectPanel::askGame(int number)
{
    Session &session = services.session;
    session.rconcollect = true;
    session.rconarrived = false;
    try {
        services.exchange.sendquery(u"getstatus"_s);
    } catch (const Fault &) {
        // Nothing will arrive, which is what the waits below find out.
    }
    for (int waits = 0; !session.rconarrived && waits < queryWaits && isCurrent(number); ++waits) {
        services.exchange.waitseconds(1);
        services.exchange.yield();
    }
    if (!session.rconarrived || !isCurrent(number))
        return false;
    services.output.addrcon(
        u"Server running game mode [%1] on map [%2]"_s.arg(gameType(session.rconreply), mapName(session.rconreply)));
    return true;
}

void ConnectPanel::askRotation(int number)
{
    services.exchange.sendinfo(u"dvarlist sv_maprotation"_s, true);
    services.exchange.waitseconds(1);
    if (services.session.rconarrived && isCurrent(number))
        emit rotationread();
}

void ConnectPanel::askCfgFiles(int number)
{
    services.exchange.sendinfo(u"fdir *.cfg"_s, true);
    services.exchange.waitseconds(1);
    if (services.session.rconarrived && isCurrent(number))
        emit cfgfilesread();
}

bool ConnectPanel::isCurrent(int number) const
{
    return connection == number && !services.session.closing;
}

void ConnectPanel::showConnected(bool on)
{
    services.session.connected = on;
    ui->cmdconnect->tag = on ? u"YES"_s : u"NO"_s;
    ui->cmdconnect->setText(on ? u"Disconnect"_s : u"Connect"_s);
    ui->comserver->setLocked(on);
    ui->comport->setLocked(on);
    lockLine(ui->txtPWD, on);
}

void ConnectPanel::showStep(const QString &text, Progress mode)
{
    if (!services.session.formloading)
        services.output.showprogress(text, mode);
}
