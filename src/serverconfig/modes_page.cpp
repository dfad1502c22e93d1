// SPDX-License-Identifier: MIT
#include "modes_page.h"
#include "ui_modes_page.h"

#include "base/fault.h"
#include "base/numbers.h"
#include "base/prompts.h"
#include "quick_commands.h"
#include "rcon/conversation.h"
#include "rcon/services.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int longestTime = 1440; // minutes: a day

bool isTimeLimit(const QString &text)
{
    const qint16 minutes = toInteger16(text);
    return minutes >= 0 && minutes <= longestTime;
}

} // namespace

ModesPage::ModesPage(Services &services_, QWidget *parent)
    : QWidget(parent), services(services_), ui(std::make_unique<Ui::ModesPage>())
{
    ui->setupUi(this);
    connect(ui->cmdsetdm, &QPushButton::clicked, this, &ModesPage::cmdsetdm_Click);
    connect(ui->cmdsettdm, &QPushButton::clicked, this, &ModesPage::cmdsettdm_Click);
    connect(ui->cmdsethq, &QPushButton::clicked, this, &ModesPage::cmdsethq_Click);
    connect(ui->cmdsetctf, &QPushButton::clicked, this, &ModesPage::cmdsetctf_Click);
    connect(ui->cmdsetsd, &QPushButton::clicked, this, &ModesPage::cmdsetsd_Click);
    connect(ui->cmddmdefault, &QPushButton::clicked, this, &ModesPage::cmddmdefault_Click);
    connect(ui->cmdtdmdefault, &QPushButton::clicked, this, &ModesPage::cmdtdmdefault_Click);
    connect(ui->cmdhqdefault, &QPushButton::clicked, this, &ModesPage::cmdhqdefault_Click);
    connect(ui->cmdctfdefault, &QPushButton::clicked, this, &ModesPage::cmdctfdefault_Click);
    connect(ui->cmdsddefaults, &QPushButton::clicked, this, &ModesPage::cmdsddefaults_Click);

    const std::array cmdcod{ui->cmdcod_0, ui->cmdcod_1, ui->cmdcod_2, ui->cmdcod_3, ui->cmdcod_4};
    for (int index = 0; index < static_cast<int>(cmdcod.size()); ++index)
        connect(cmdcod.at(static_cast<std::size_t>(index)), &QPushButton::clicked, this,
                [this, index] { switchGameType(services, index); });
}

ModesPage::~ModesPage() = default;

void ModesPage::cmdsetdm_Click()
{
    setLimits(*ui->txtdmscorelim, *ui->txtdmtimelim, u"DM"_s);
}

void ModesPage::cmdsettdm_Click()
{
    setLimits(*ui->txttdmscorelim, *ui->txttdmtimelim, u"TDM"_s);
}

void ModesPage::cmdsethq_Click()
{
    setLimits(*ui->txthqscorelim, *ui->txthqtimelim, u"HQ"_s);
}

void ModesPage::cmdsetctf_Click()
{
    setLimits(*ui->txtctfscorelim, *ui->txtctftimelim, u"CTF"_s);
}

void ModesPage::setLimits(TextBox &score, TextBox &time, const QString &mode)
{
    const QString scoreText = score.text();
    const QString timeText = time.text();
    try {
        if (isInvalid(isNumeric(scoreText), score, u"Score limit has to be a number"_s) ||
            isInvalid(isNumeric(timeText), time, u"Time limit has to be a positive number of minutes"_s) ||
            isInvalid(isTimeLimit(timeText), time, u"Time limit has to be a number of minutes (0 - 1440)"_s))
            return;
    } catch (const Fault &fault) {
        services.prompts.showFault(fault);
        return;
    }
    // What was checked is sent, also when it is edited meanwhile.
    const Conversation talk(services);
    talk.tell(score.tag + u' ' + scoreText);
    talk.note(mode + u" score limit updated to "_s + scoreText);
    talk.wait(1);
    talk.tell(time.tag + u' ' + timeText);
    talk.note(mode + u" time limit updated to "_s + timeText);
}

void ModesPage::cmdsetsd_Click()
{
    const QString grace = ui->txtgrace->text();
    const QString roundLength = ui->txtroundlen->text();
    const QString roundLimit = ui->txtroundlim->text();
    const QString score = ui->txtscorelim->text();
    const QString time = ui->txttimelim->text();
    try {
        if (isInvalid(isNumeric(grace), *ui->txtgrace, u"Grace period has to be a number of seconds"_s) ||
            isInvalid(isNumeric(roundLength), *ui->txtroundlen,
                      u"Round length has to be a positive number of minutes"_s) ||
            isInvalid(isNumeric(roundLimit), *ui->txtroundlim,
                      u"Round limit has to be a number of round wins (0=unlimited)"_s) ||
            isInvalid(isNumeric(score), *ui->txtscorelim, u"Score limit has to be a number of round wins"_s) ||
            isInvalid(isNumeric(time) && isTimeLimit(time), *ui->txttimelim,
                      u"Time limit has to be a number of minutes (0 - 1440)"_s))
            return;
    } catch (const Fault &fault) {
        services.prompts.showFault(fault);
        return;
    }
    const Answer answer = services.prompts.ask(
        {u"Set server"_s, u"Set server with values in display?"_s, BoxIcon::Information, BoxButtons::OkCancel});
    if (answer == Answer::Cancel)
        return;

    const Conversation talk(services);
    const auto send = [&talk](const TextBox *box, const QString &text, const QString &confirmation) {
        talk.tell(box->tag + u' ' + text);
        talk.note(confirmation);
    };
    send(ui->txtgrace, grace, u"S&D Grace period updated to "_s + grace);
    talk.wait(1);
    // The line about the round length names the round limit.
    send(ui->txtroundlen, roundLength, u"S&D Round length updated to "_s + roundLimit);
    talk.wait(1);
    send(ui->txtroundlim, roundLimit, u"S&D Round limit updated to "_s + roundLimit);
    talk.wait(1);
    send(ui->txtscorelim, score, u"S&D Score limit updated to "_s + score);
    talk.wait(1);
    send(ui->txttimelim, time, u"S&D Time limit updated to "_s + time);
}

bool ModesPage::isInvalid(bool valid, TextBox &box, const QString &complaint)
{
    if (valid)
        return false;
    services.prompts.ask({u"Invalid value"_s, complaint, BoxIcon::None, BoxButtons::Ok});
    box.setFocus();
    return true;
}

void ModesPage::cmddmdefault_Click()
{
    ui->txtdmscorelim->setText(u"50"_s);
    ui->txtdmtimelim->setText(u"30"_s);
}

void ModesPage::cmdtdmdefault_Click()
{
    ui->txttdmscorelim->setText(u"100"_s);
    ui->txttdmtimelim->setText(u"30"_s);
}

void ModesPage::cmdhqdefault_Click()
{
    ui->txthqscorelim->setText(u"450"_s);
    ui->txthqtimelim->setText(u"30"_s);
}

void ModesPage::cmdctfdefault_Click()
{
    ui->txtctfscorelim->setText(u"5"_s);
    ui->txtctftimelim->setText(u"30"_s);
}

void ModesPage::cmdsddefaults_Click()
{
    ui->txtgrace->setText(u"15"_s);
    ui->txtroundlen->setText(u"4"_s);
    ui->txtroundlim->setText(u"0"_s);
    ui->txtscorelim->setText(u"10"_s);
    ui->txttimelim->setText(u"0"_s);
}
