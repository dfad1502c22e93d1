// SPDX-License-Identifier: MIT
#include "modes_page.h"
#include "ui_modes_page.h"

#include "base/fault.h"
#include "base/numbers.h"
#include "base/prompts.h"
#include "quick_commands.h"
#include "rcon/conversation.h"
#include "rcon/reading.h"
#include "rcon/services.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr int longestTime = 1440; // in minutes, which is a day

bool isTimeLimit(QStringView text)
{
    if (!isNumeric(text))
        return false;
    const qint16 minutes = toInteger16(text);
    return minutes >= 0 && minutes <= longestTime;
}

/// Has `button` put the texts back into the boxes that stand there now: those of the form are the defaults.
void keepDefaults(const QPushButton *button, const QList<TextBox *> &boxes)
{
    for (TextBox *box : boxes)
        QObject::connect(button, &QPushButton::clicked, box, [box, text = box->text()] { box->setText(text); });
}

} // namespace

/// Something that the text of a box must be, and what the person is told when it is not.
struct ModesPage::Requirement {
    bool (*isMet)(QStringView text);
    QString complaint;
};

/// One value that is to be set on the server. What was checked is sent, even if the box has been changed meanwhile.
struct ModesPage::Limit {
    TextBox *box;
    QString name; ///< in the message list
    QList<Requirement> requirements;
    QString told = box->text(); ///< the value in the message list
    QString text = box->text();
};

/// A game type with two limits, and its buttons.
struct ModesPage::Mode {
    QString name;
    TextBox *score;
    TextBox *time;
    QPushButton *set;
    QPushButton *defaults;
};

ModesPage::ModesPage(Services &services_, QWidget *parent)
    : QWidget(parent), services(services_), ui(std::make_unique<Ui::ModesPage>())
{
    ui->setupUi(this);
    const std::array<Mode, 4> modes{
        {{u"DM"_s, ui->txtdmscorelim, ui->txtdmtimelim, ui->cmdsetdm, ui->cmddmdefault},
         {u"TDM"_s, ui->txttdmscorelim, ui->txttdmtimelim, ui->cmdsettdm, ui->cmdtdmdefault},
         {u"HQ"_s, ui->txthqscorelim, ui->txthqtimelim, ui->cmdsethq, ui->cmdhqdefault},
         {u"CTF"_s, ui->txtctfscorelim, ui->txtctftimelim, ui->cmdsetctf, ui->cmdctfdefault}}};
    for (const Mode &mode : modes) {
        connect(mode.set, &QPushButton::clicked, this, [this, mode] { setLimits(mode); });
        keepDefaults(mode.defaults, {mode.score, mode.time});
    }
    connect(ui->cmdsetsd, &QPushButton::clicked, this, &ModesPage::cmdsetsd_Click);
    keepDefaults(ui->cmdsddefaults, {ui->txtgrace, ui->txtroundlen, ui->txtroundlim, ui->txtscorelim, ui->txttimelim});

    for (TextBox *box : findChildren<TextBox *>())
        box->setDataChanged(false); // Nobody has edited the initial texts.

    const std::array cmdcod{ui->cmdcod_0, ui->cmdcod_1, ui->cmdcod_2, ui->cmdcod_3, ui->cmdcod_4};
    for (int index = 0; index < static_cast<int>(cmdcod.size()); ++index)
        connect(cmdcod.at(static_cast<std::size_t>(index)), &QPushButton::clicked, this,
                [this, index] { switchGameType(services, index); });
}

ModesPage::~ModesPage() = default;

void ModesPage::setLimits(const Mode &mode)
{
    const QList<Limit> limits{
        {mode.score, mode.name + u" score limit"_s, {{isNumeric, u"Score limit has to be a number"_s}}},
        {mode.time,
         mode.name + u" time limit"_s,
         {{isNumeric, u"Time limit has to be a positive number of minutes"_s},
          {isTimeLimit, u"Time limit has to be a number of minutes (0 - 1440)"_s}}}};
    if (areValid(limits))
        send(limits);
}

void ModesPage::cmdsetsd_Click()
{
    const QList<Limit> limits{
        {ui->txtgrace, u"S&D Grace period"_s, {{isNumeric, u"Grace period has to be a number of seconds"_s}}},
        // The line about the round length names the round limit.
        {ui->txtroundlen,
         u"S&D Round length"_s,
         {{isNumeric, u"Round length has to be a positive number of minutes"_s}},
         ui->txtroundlim->text()},
        {ui->txtroundlim,
         u"S&D Round limit"_s,
         {{isNumeric, u"Round limit has to be a number of round wins (0=unlimited)"_s}}},
        {ui->txtscorelim, u"S&D Score limit"_s, {{isNumeric, u"Score limit has to be a number of round wins"_s}}},
        {ui->txttimelim,
         u"S&D Time limit"_s,
         {{isTimeLimit, u"Time limit has to be a number of minutes (0 - 1440)"_s}}}};
    if (!areValid(limits))
        return;
    const Answer answer = services.prompts.ask(
        {u"Set server"_s, u"Set server with values in display?"_s, BoxIcon::Information, BoxButtons::OkCancel});
    if (answer == Answer::Cancel)
        return;
    send(limits);
}

bool ModesPage::areValid(const QList<Limit> &limits)
{
    try {
        for (const Limit &limit : limits) {
            for (const auto &[isMet, complaint] : limit.requirements) {
                if (isMet(limit.text))
                    continue;
                services.prompts.ask({u"Invalid value"_s, complaint, BoxIcon::None, BoxButtons::Ok});
                limit.box->setFocus();
                return false;
            }
        }
    } catch (const Fault &fault) {
        services.prompts.showFault(fault);
        return false;
    }
    return true;
}

void ModesPage::send(const QList<Limit> &limits)
{
    const Conversation talk(services);
    const PageAtWork working(services);
    for (const Limit &limit : limits) {
        if (&limit != &limits.first())
            talk.wait(1);
        if (limit.box->text() == limit.text && !talk.isSuperseded())
            limit.box->setDataChanged(false);
        talk.tell(limit.box->tag + u' ' + limit.text);
        talk.note(limit.name + u" updated to "_s + limit.told);
    }
}
