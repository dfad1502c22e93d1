// SPDX-License-Identifier: MIT
#include "other_page.h"
#include "ui_other_page.h"

#include "base/fault.h"
#include "base/prompts.h"
#include "bound_variables.h"
#include "chat_prefix.h"
#include "rcon/conversation.h"
#include "rcon/read_label.h"
#include "rcon/reading.h"
#include "rcon/services.h"

using namespace Qt::StringLiterals;

namespace {

// The fifth is sent as it stands here, without a blank in its name.
constexpr std::array clanBaseRules{
    "scr_sd_roundlimit 10"_L1,  "scr_sd_roundlength 4"_L1,
    "scr_sd_graceperiod 15"_L1, "scr_sd_timelimit 0"_L1,
    "setfriendlyfire 1"_L1,     "scr_allow_vote 0"_L1,
    "scr_drawfriend 1"_L1,      "sv_minPing 0"_L1,
    "sv_maxPing 0"_L1,          "sv_pure 1"_L1,
    "sv_cheats 0"_L1,           "g_allowVote 0"_L1,
    "scr_killcam 0"_L1,         "scr_spectateenemy 0"_L1,
    "scr_freelook 0"_L1,        "logfile 1"_L1,
};

} // namespace

OtherPage::OtherPage(Services &services_, QWidget *parent)
    : QWidget(parent), services(services_), ui(std::make_unique<Ui::OtherPage>())
{
    ui->setupUi(this);
    chkCodOther = {ui->chkCodOther_0, ui->chkCodOther_1};
    // Only the message list shows their captions. The labels beside them say what they switch.
    for (CheckBox *box : chkCodOther)
        box->setFixedWidth(style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, box) + 2);
    ui->lblread_cmdCodOther_1->watch(*this);
    connect(ui->cmdCodOther_0, &QPushButton::clicked, this, [this] { cmdCodOther_Click(0); });
    connect(ui->cmdCodOther_1, &QPushButton::clicked, this, [this] { cmdCodOther_Click(1); });
}

OtherPage::~OtherPage() = default;

void OtherPage::cmdCodOther_Click(int index)
{
    if (index == 0)
        sendChanges();
    else
        populate();
}

void OtherPage::populate()
{
    Reading scope(
        services,
        {.door = &reading, .note = u"\r\nReading variables from the server..."_s, .label = ui->lblread_cmdCodOther_1});
    if (!scope)
        return;
    scope.leaveCollecting(); // Other pages do not do this.
    try {
        const Conversation talk(services);
        const bool hasCome = readGroup(talk, u"scr_allow_*"_s);
        for (CheckBox *box : chkCodOther) {
            const QString value = valueInReply(talk, box->tag);
            box->setValue(value.isEmpty() ? u"0"_s : value);
            box->setDataChanged(false);
        }
        if (hasCome)
            scope.setAnswered();
    } catch (const Fault &) {
        // A value that is cut off or no number ends the reading. The boxes that have been filled stay as they are.
    }
}

void OtherPage::sendChanges()
{
    // The answer makes no difference: the values are sent after "Cancel", too.
    services.prompts.ask({u"Send to Server?"_s, u"Only changed values will be sent.\rSend other settings to server?"_s,
                          BoxIcon::Information, BoxButtons::OkCancel});
    const Conversation talk(services);
    const TimersHeldOff busy(services);
    for (CheckBox *box : chkCodOther)
        sendIfChanged(talk, *box, ValueForm::Quoted, box->text() + u" updated."_s);
}

void OtherPage::setclanbase()
{
    const Answer answer = services.prompts.ask({u"Change settings?"_s,
                                                u"Are you sure you want to set as Clan Base rules\r"
                                                "Check popup rules to see what variables will change"_s,
                                                BoxIcon::Information, BoxButtons::OkCancel});
    if (answer == Answer::Cancel)
        return;
    const Conversation talk(services);
    const PageAtWork working(services);
    talk.note(u"Setting server to Clanbase rules....."_s);
    for (const QLatin1StringView rule : clanBaseRules) {
        talk.tell(rule, true);
        talk.yield();
    }
    talk.tell(u"say "_s + chatPrefix + u"Server Set for ^2Clan Base ^7Rules"_s, true);
}
