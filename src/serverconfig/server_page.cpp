// SPDX-License-Identifier: MIT
#include "server_page.h"
#include "ui_server_page.h"

#include "base/fault.h"
#include "base/numbers.h"
#include "base/password_eye.h"
#include "base/prompts.h"
#include "bound_variables.h"
#include "quick_commands.h"
#include "rcon/conversation.h"
#include "rcon/read_label.h"
#include "rcon/reading.h"
#include "rcon/services.h"

using namespace Qt::StringLiterals;

ServerPage::ServerPage(Services &services_, QWidget *parent)
    : QWidget(parent), services(services_), ui(std::make_unique<Ui::ServerPage>())
{
    ui->setupUi(this);
    addPasswordEye(ui->txtservpass);
    optff = {ui->optff_0, ui->optff_1, ui->optff_2, ui->optff_3};
    ui->txtbantime->setDataChanged(false); // Nobody has edited its initial text.
    ui->lblread_cmdservpop->watch(*this);
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
    Reading scope(services, {.door = &reading,
                             .note = u"Reading variables from the server..."_s,
                             .steps = 3,
                             .label = ui->lblread_cmdservpop});
    if (!scope)
        return;
    try {
        if (readVariables())
            scope.setAnswered();
    } catch (const Fault &) {
        // A value that is cut off or no number ends the reading. The boxes that have been filled stay as they are.
    }
}

bool ServerPage::readVariables()
{
    const Conversation talk(services);
    bool hasCome = readGroup(talk, u"sv_*"_s);
    for (TextBox *box : {ui->txtservername, ui->txtmaxclients, ui->txtmaxping, ui->txtmaxrate, ui->txtbantime})
        fill(talk, *box);

    hasCome = readGroup(talk, u"scr_*"_s) && hasCome;
    emit variablesread(talk.reply());
    fill(talk, *ui->txtservermotd);
    fillUnlessEmpty(talk, *ui->chkkillcam);
    fillUnlessEmpty(talk, *ui->chkteamicons);
    if (const QString mode = valueInReply(talk, ui->cmdff->tag); !mode.isEmpty()) {
        const auto index = static_cast<std::size_t>(toInteger16(mode));
        if (index >= optff.size())
            throw Fault(Fault::OutOfRange);
        optff.at(index)->setChecked(true);
    }
    fillUnlessEmpty(talk, *ui->chkteambal);
    fillUnlessEmpty(talk, *ui->chkspecenemy);
    fillUnlessEmpty(talk, *ui->chkvoting);

    hasCome = readGroup(talk, u"cl_free*"_s) && hasCome;
    fillUnlessEmpty(talk, *ui->chkfreelook);
    return hasCome;
}

void ServerPage::cmdservsetbasics_Click()
{
    // The answer makes no difference: the values are sent after "Cancel", too.
    services.prompts.ask({u"Send to Server?"_s, u"Only changed values will be sent.\rSend settings to server?"_s,
                          BoxIcon::Information, BoxButtons::OkCancel});
    const Conversation talk(services);
    const TimersHeldOff busy(services);
    sendIfChanged(talk, *ui->txtservername, ValueForm::Quoted, u"Server name updated."_s);
    sendIfChanged(talk, *ui->txtservermotd, ValueForm::Quoted, u"Server MOTD updated."_s);
    sendIfChanged(talk, *ui->chkkillcam, ValueForm::Plain, u"Kill cam updated"_s);
    sendIfChanged(talk, *ui->chkteamicons, ValueForm::Plain, u"Team Icons updated"_s);
    if (ui->chkvoting->dataChanged())
        sendVoting(talk);
    sendIfChanged(talk, *ui->txtmaxclients, ValueForm::Plain, u"Maximum clients updated"_s);
    sendIfChanged(talk, *ui->txtmaxping, ValueForm::Plain, u"Maximum client Ping updated"_s);
    sendIfChanged(talk, *ui->txtmaxrate, ValueForm::Plain, u"Maximum client Rate updated"_s);
    sendIfChanged(talk, *ui->chkfreelook, ValueForm::Plain, u"Free Look updated"_s);
    sendIfChanged(talk, *ui->chkteambal, ValueForm::Plain, u"Team Balance updated"_s);
    sendIfChanged(talk, *ui->chkspecenemy, ValueForm::Plain, u"Spectate Enemy updated"_s);
    sendIfChanged(talk, *ui->txtbantime, ValueForm::Plain, u"Temporary ban time updated"_s);
}

// The game has two variables for this switch. The second one gets what the box shows a second later.
void ServerPage::sendVoting(const Conversation &talk)
{
    const QString confirmation = u"Voting updated"_s;
    send(talk, *ui->chkvoting, ValueForm::Plain);
    talk.note(confirmation);
    talk.wait(1);
    ui->chkvoting->setDataChanged(false);
    talk.tell(u"g_allowvote "_s + ui->chkvoting->value());
    talk.note(confirmation);
}

void ServerPage::cmdservsetpass_Click()
{
    if (ui->txtservpass->text().isEmpty()) {
        services.prompts.inform(u"Use the Remove button to clear the server password"_s, u"No password given"_s);
        return;
    }
    const Conversation talk(services);
    const PageAtWork working(services);
    ui->txtservpass->setDataChanged(false);
    talk.tell(ui->txtservpass->tag + u" \""_s + ui->txtservpass->text() + u'"', true);
    talk.wait(3);
    talk.note(u"Server password added"_s);
    talk.tellWithoutWaiting(u"map_restart"_s);
}

void ServerPage::cmdservrempass_Click()
{
    const Conversation talk(services);
    const PageAtWork working(services);
    talk.tell(ui->txtservpass->tag + u" \"\""_s, true);
    talk.note(u"Server password Removed"_s);
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
