// SPDX-License-Identifier: MIT
#include "server_page.h"
#include "ui_server_page.h"

#include "base/fault.h"
#include "base/numbers.h"
#include "base/once.h"
#include "base/prompts.h"
#include "bound_variables.h"
#include "output/output.h"
#include "quick_commands.h"
#include "rcon/exchange.h"
#include "rcon/services.h"
#include "rcon/session.h"

using namespace Qt::StringLiterals;

ServerPage::ServerPage(Services &services_, QWidget *parent)
    : QWidget(parent), services(services_), ui(std::make_unique<Ui::ServerPage>())
{
    ui->setupUi(this);
    optff = {ui->optff_0, ui->optff_1, ui->optff_2, ui->optff_3};
    ui->txtbantime->dataChanged = false; // its initial text is nobody's edit
    connect(ui->cmdservpop, &QPushButton::clicked, this, &ServerPage::cmdservpop_Click);
    connect(ui->cmdservsetbasics, &QPushButton::clicked, this, &ServerPage::cmdservsetbasics_Click);
    connect(ui->cmdservsetpass, &QPushButton::clicked, this, &ServerPage::cmdservsetpass_Click);
    connect(ui->cmdservrempass, &QPushButton::clicked, this, &ServerPage::cmdservrempass_Click);
    connect(ui->cmdff, &QPushButton::clicked, this, &ServerPage::cmdff_Click);
}

ServerPage::~ServerPage() = default;

PlaceholderVariables ServerPage::placeholderVariables() const
{
    return {ui->txtservername->tag, ui->cmdff->tag};
}

void ServerPage::cmdservpop_Click()
{
    const Once once(readingSince, services.clock);
    if (!once)
        return;
    if (!requireConnection(services))
        return;

    Session &session = services.session;
    session.rconcollect = true;
    services.output.showprogress(tr("Reading variables from the server..."), Progress::Replace);
    session.rconbusy = true;
    try {
        readVariables();
    } catch (const Fault &) {
        // A value that is cut off or no number ends the reading; what has been filled stays.
    }
    session.rconcollect = false;
    services.output.showprogress({}, Progress::Replace);
    session.rconbusy = false;
}

void ServerPage::readVariables()
{
    readGroup(services, u"sv_*"_s);
    for (TextBox *box : {ui->txtservername, ui->txtmaxclients, ui->txtmaxping, ui->txtmaxrate, ui->txtbantime})
        fill(services, *box);

    readGroup(services, u"scr_*"_s);
    fill(services, *ui->txtservermotd);
    fillUnlessEmpty(services, *ui->chkkillcam);
    fillUnlessEmpty(services, *ui->chkteamicons);
    if (const QString mode = valueInReply(services, ui->cmdff->tag); !mode.isEmpty()) {
        const auto index = static_cast<std::size_t>(toInteger16(mode));
        if (index >= optff.size())
            throw Fault(Fault::OutOfRange);
        optff.at(index)->setChecked(true);
    }
    fillUnlessEmpty(services, *ui->chkteambal);
    fillUnlessEmpty(services, *ui->chkspecenemy);
    fillUnlessEmpty(services, *ui->chkvoting);

    readGroup(services, u"cl_free*"_s);
    fillUnlessEmpty(services, *ui->chkfreelook);
}

void ServerPage::cmdservsetbasics_Click()
{
    // Cancel sends all the same.
    services.prompts.ask({tr("Send to Server?"), tr("Only changed values will be sent.\rSend settings to server?"),
                          BoxIcon::Information, BoxButtons::OkCancel});
    services.session.rconbusy = true;
    sendIfChanged(services, *ui->txtservername, ValueForm::Quoted, tr("Server name updated."));
    sendIfChanged(services, *ui->txtservermotd, ValueForm::Quoted, tr("Server MOTD updated."));
    sendIfChanged(services, *ui->chkkillcam, ValueForm::Plain, tr("Kill cam updated"));
    sendIfChanged(services, *ui->chkteamicons, ValueForm::Plain, tr("Team Icons updated"));
    if (ui->chkvoting->dataChanged)
        sendVoting();
    sendIfChanged(services, *ui->txtmaxclients, ValueForm::Plain, tr("Maximum clients updated"));
    sendIfChanged(services, *ui->txtmaxping, ValueForm::Plain, tr("Maximum client Ping updated"));
    sendIfChanged(services, *ui->txtmaxrate, ValueForm::Plain, tr("Maximum client Rate updated"));
    sendIfChanged(services, *ui->chkfreelook, ValueForm::Plain, tr("Free Look updated"));
    sendIfChanged(services, *ui->chkteambal, ValueForm::Plain, tr("Team Balance updated"));
    sendIfChanged(services, *ui->chkspecenemy, ValueForm::Plain, tr("Spectate Enemy updated"));
    sendIfChanged(services, *ui->txtbantime, ValueForm::Plain, tr("Temporary ban time updated"));
    services.session.rconbusy = false;
}

// The game has the switch twice; the second one takes what the box shows a second later.
void ServerPage::sendVoting()
{
    const QString confirmation = tr("Voting updated");
    send(services, *ui->chkvoting, ValueForm::Plain);
    services.output.addmessage(confirmation);
    services.exchange.waitseconds(1);
    ui->chkvoting->dataChanged = false;
    services.exchange.sendinfo(u"g_allowvote "_s + ui->chkvoting->value());
    services.output.addmessage(confirmation);
}

void ServerPage::cmdservsetpass_Click()
{
    if (ui->txtservpass->text().isEmpty()) {
        services.prompts.inform(tr("Use the Remove button to clear the server password"), tr("No password given"));
        return;
    }
    services.exchange.sendinfo(ui->txtservpass->tag + u" \""_s + ui->txtservpass->text() + u'"', true);
    services.exchange.waitseconds(3);
    services.output.addmessage(tr("Server password added"));
    services.session.rconnowait = true; // a server that loads a map does not answer
    services.exchange.sendinfo(u"map_restart"_s, true);
}

void ServerPage::cmdservrempass_Click()
{
    services.exchange.sendinfo(ui->txtservpass->tag + u" \"\""_s, true);
    services.output.addmessage(tr("Server password Removed"));
}

void ServerPage::cmdff_Click()
{
    for (int mode = 0; mode < static_cast<int>(optff.size()); ++mode) {
        if (optff.at(static_cast<std::size_t>(mode))->isChecked()) {
            setFriendlyFire(services, mode);
            return;
        }
    }
}
