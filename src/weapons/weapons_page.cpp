// SPDX-License-Identifier: MIT
#include "weapons_page.h"
#include "ui_weapons_page.h"

#include "base/controls.h"
#include "base/fault.h"
#include "base/prompts.h"
#include "output/output.h"
#include "rcon/conversation.h"
#include "rcon/read_label.h"
#include "rcon/reading.h"
#include "rcon/services.h"
#include "serverconfig/bound_variables.h"
#include "weapon_table.h"

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

WeaponsPage::WeaponsPage(Services &services_, QWidget *parent)
    : QWidget(parent), services(services_), ui(std::make_unique<Ui::WeaponsPage>())
{
    ui->setupUi(this);
    // These are in the order of WeaponGroup.
    const std::array<QBoxLayout *, 5> groups{ui->british, ui->russian, ui->allies, ui->german, ui->others};
    for (const Weapon &weapon : weapons())
        rows.push_back({weapon, addBox(weapon, groups.at(static_cast<std::size_t>(weapon.group)))});
    for (QBoxLayout *group : groups)
        group->addStretch();
    orderTabs(groups);
    ui->lblread_cmdpopwep->watch(*this);

    connect(ui->cmdpopwep, &QPushButton::clicked, this, &WeaponsPage::cmdpopwep_Click);
    connect(ui->cmdwepsetserv, &QPushButton::clicked, this, &WeaponsPage::cmdwepsetserv_Click);
    connect(ui->cmdwepselall, &QPushButton::clicked, this, [this] { setAll(true); });
    connect(ui->cmdwepunselall, &QPushButton::clicked, this, [this] { setAll(false); });
    connect(ui->cmdriflesonly, &QPushButton::clicked, this, &WeaponsPage::cmdriflesonly_Click);
    connect(ui->cmdnosnipers, &QPushButton::clicked, this, &WeaponsPage::cmdnosnipers_Click);
}

WeaponsPage::~WeaponsPage() = default;

CheckBox *WeaponsPage::addBox(const Weapon &weapon, QBoxLayout *group)
{
    auto *box = new CheckBox(this);
    box->setObjectName(weapon.box);
    box->setText(weapon.caption);
    box->setToolTip(weapon.toolTip);
    box->tag = weapon.variable;
    group->addWidget(box);
    return box;
}

// The boxes were made in the order in which they are sent. One reads them frame by frame.
void WeaponsPage::orderTabs(std::span<QBoxLayout *const> groups)
{
    QWidget *before = ui->cmdriflesonly;
    for (const QBoxLayout *group : groups) {
        for (int place = 0; place < group->count(); ++place) {
            if (QWidget *box = group->itemAt(place)->widget())
                setTabOrder(std::exchange(before, box), box);
        }
    }
}

CheckBox *WeaponsPage::boxOf(QLatin1StringView name) const
{
    return std::ranges::find_if(rows, [name](const Row &row) { return row.weapon.box == name; })->box;
}

void WeaponsPage::cmdpopwep_Click()
{
    Reading scope(services, {.door = &reading,
                             .note = u"Reading variables from the server...\r\nAllies..."_s,
                             .label = ui->lblread_cmdpopwep});
    if (!scope)
        return;
    try {
        if (readWeapons())
            scope.setAnswered();
    } catch (const Fault &) {
        services.prompts.refuse(u"The server is not responding quickly enough\r"
                                "or a server side mod has replaced the rcon variables\r"
                                "Try populate again"_s,
                                u"Slow Server Response"_s);
    }
}

bool WeaponsPage::readWeapons()
{
    // These are in the order of WeaponGroup.
    const std::array notes{u"British..."_s, u"Russians..."_s, u"Allies..."_s, u"German..."_s, u"Others..."_s};
    const Conversation talk(services);
    const bool hasCome = readGroup(talk, u"scr_allow_*"_s);
    WeaponGroup group = rows.front().weapon.group;
    for (const auto &[weapon, box] : rows) {
        if (std::exchange(group, weapon.group) != weapon.group)
            services.output.showprogress(notes.at(static_cast<std::size_t>(group)), Progress::Add);
        fill(talk, *box);
    }
    return hasCome;
}

void WeaponsPage::cmdwepsetserv_Click()
{
    const Answer answer = services.prompts.ask({u"Send to Server?"_s,
                                                u"Send weapon settings to server?\rOnly changed values will be sent."_s,
                                                BoxIcon::Information, BoxButtons::OkCancel});
    if (answer == Answer::Cancel)
        return;
    const Conversation talk(services);
    const TimersHeldOff busy(services);
    for (const auto &[weapon, box] : rows)
        sendIfChanged(talk, *box, ValueForm::Quoted, weapon.confirmation);
}

void WeaponsPage::setAll(bool allowed)
{
    for (const Row &row : rows)
        row.box->setChecked(allowed);
}

void WeaponsPage::cmdriflesonly_Click()
{
    const Answer answer = services.prompts.ask({u"Rifles only?"_s,
                                                u"Set weapons to rifles only on server?\r"
                                                "Screen will reflect changes"_s,
                                                BoxIcon::Information, BoxButtons::OkCancel});
    if (answer == Answer::Cancel)
        return;
    const Conversation talk(services);
    const PageAtWork working(services);
    // All are sent, whether they have changed or not: the server may have other values than the boxes show.
    for (const auto &[name, allowed] : riflesOnly()) {
        if (talk.isSuperseded())
            return;
        CheckBox &box = *boxOf(name);
        box.setChecked(allowed);
        send(talk, box, ValueForm::Quoted);
    }
    talk.note(u"Server set to rifles only"_s);
}

void WeaponsPage::cmdnosnipers_Click()
{
    const Answer answer = services.prompts.ask(
        {u"No Snipers"_s, u"Disable snipers on server"_s, BoxIcon::Question, BoxButtons::OkCancel});
    if (answer == Answer::Cancel)
        return;
    const Conversation talk(services);
    const PageAtWork working(services);
    const std::array scoped{boxOf("chkspringfield"_L1), boxOf("chknagantsniper"_L1), boxOf("chkkar98ksniper"_L1),
                            boxOf("chkenfieldsniper"_L1)};
    for (CheckBox *box : scoped)
        box->setChecked(false);
    // Only those that changed are sent: the other weapons' boxes keep their marks for the next sending.
    for (CheckBox *box : scoped) {
        if (box->dataChanged())
            send(talk, *box, ValueForm::Quoted);
    }
    talk.note(u"No snipers set on server."_s);
}
