// SPDX-License-Identifier: MIT
#include "hob_window.h"
#include "ui_hob_window.h"

#include "base/fault.h"
#include "base/focus.h"
#include "base/keys.h"
#include "base/numbers.h"
#include "base/prompts.h"
#include "rcon/conversation.h"
#include "rcon/read_label.h"
#include "rcon/reading.h"
#include "rcon/services.h"
#include "serverconfig/bound_variables.h"

#include <QIcon>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QSignalBlocker>

#include <optional>

using namespace Qt::StringLiterals;

// The resources of a static library are not found without this. It stands at global scope, because the function of
// the resource does.
static void loadPictures()
{
    Q_INIT_RESOURCE(mods);
}

namespace {

std::optional<int> percentage(const QString &text)
{
    try {
        const int number = toInteger16(text);
        return number >= 0 && number <= 100 ? std::optional(number) : std::nullopt;
    } catch (const Fault &) {
        return {};
    }
}

void setBar(QScrollBar *bar, int number)
{
    const QSignalBlocker silent(bar); // The text that the number came from stays as it was typed.
    bar->setValue(number);
}

} // namespace

HobWindow::HobWindow(Services &services_, QWidget *parent)
    : QWidget(parent), services(services_), ui(std::make_unique<Ui::HobWindow>())
{
    loadPictures();
    ui->setupUi(this);
    ui->pichob->setPixmap(QIcon(u":/mods/hob.png"_s).pixmap(60, 40));
    percentages = {{{ui->txtsniper, ui->vssniper, u"Sniper allow "_s, u"Sniper percentage changed."_s},
                    {ui->txtsmg, ui->vssmg, u"SMG allow "_s, u"Smg percentage changed."_s},
                    {ui->txtsup, ui->vssup, u"Support allow "_s, u"Support percentage changed."_s},
                    {ui->txtrifle, ui->vsrifle, u"Rifle allow "_s, u"Rifle percentage changed."_s}}};
    wirePercentages();
    wireHints();
    ui->lblread_cmdhobpop->watch(*this);
    connect(ui->cmdhobpop, &QPushButton::clicked, this, &HobWindow::cmdhobpop_Click);
    connect(ui->cmdhobset, &QPushButton::clicked, this, &HobWindow::cmdhobset_Click);
    connect(ui->cmdsethob, &QPushButton::clicked, this, &HobWindow::cmdsethob_Click);
    connect(ui->cmdexit, &QPushButton::clicked, this, &QWidget::close);
    onLostFocus(ui->txtwave, [this] { txtwave_LostFocus(); });
    addCloseKey(*this);
    auto *populate = new QShortcut(Qt::Key_F5, this);
    populate->setAutoRepeat(false);
    connect(populate, &QShortcut::activated, ui->cmdhobpop, &QPushButton::click);
}

HobWindow::~HobWindow() = default;

void HobWindow::wirePercentages()
{
    for (const Percentage &each : percentages) {
        each.box->setDataChanged(false); // Nobody has edited its initial text.
        connect(each.bar, &QScrollBar::valueChanged, each.box,
                [box = each.box](int number) { box->setText(QString::number(number)); });
        // The sniper's box is checked when it is left, the others at every change.
        if (each.box == ui->txtsniper)
            onLostFocus(each.box, [this, &each] { check(each); });
        else
            connect(each.box, &QLineEdit::textChanged, this, [this, &each] { check(each); });
    }
}

void HobWindow::wireHints()
{
    const auto onClick = [this](QCheckBox *box, const QString &hint) {
        connect(box, &QCheckBox::clicked, this, [this, hint] { ui->txtmess->setText(hint); });
    };
    onClick(ui->chkspawn, u"Spawn Zone protection (Requires HOB compliant maps)"_s);
    onClick(ui->chkdb, u"Bomb plant/Defuse limiting.(Based on # of people on server)"_s);
    onClick(ui->chkdf, u"Flag capping limiting.(Based on # of people on server)"_s);
    onClick(ui->chkdw, u"Weapon limiting (Based on # of people on server)"_s);
    onClick(ui->chkshell, u"Shell shock from nearly grenades."_s);
    onClick(ui->chkdrop, u"Drop the weapon when shot in arm."_s);
    onClick(ui->chkshot, u"Enable/Disable Foot/Leg tripping Code."_s);
    onClick(ui->chkobi, u"Show Obitory when people Die."_s);
    onClick(ui->chkannouncespawn, u"Announce spawn campers."_s);
    for (QLineEdit *box : {ui->txtrifle, ui->txtsup, ui->txtsmg, ui->txtsniper, ui->txtwave})
        box->installEventFilter(this);
}

bool HobWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn && !keepsHint) {
        const std::array<std::pair<QObject *, QString>, 5> hints{
            {{ui->txtrifle, u"Rifle allowed percentage 0 to 100"_s},
             {ui->txtsup, u"Support allowed percentage 0 to 100"_s},
             {ui->txtsmg, u"SMG allowed percentage 0 to 100"_s},
             {ui->txtsniper, u"Sniper allowed percentage 0 to 100"_s},
             {ui->txtwave, u"Wave respawn time interval, 1 to 30 seconds"_s}}};
        for (const auto &[box, hint] : hints) {
            if (box == watched)
                ui->txtmess->setText(hint);
        }
    }
    return QWidget::eventFilter(watched, event);
}

void HobWindow::cmdhobpop_Click()
{
    const QScopedValueRollback atWork(busy, true);
    Reading scope(services, {.door = &reading,
                             .note = u"Heat of Battle MOD...\nReading variables from the server..."_s,
                             .holdsTimersOff = false,
                             .label = ui->lblread_cmdhobpop});
    if (!scope)
        return;
    const PageAtWork working(services);
    scope.leaveCollecting(); // Most pages do not do this.
    try {
        if (readVariables())
            scope.setAnswered();
    } catch (const Fault &) {
        // A switch that the reply lacks ends the reading. The boxes that have been filled stay as they are.
    }
}

bool HobWindow::readVariables()
{
    const Conversation talk(services);
    const bool hasCome = readGroup(talk, u"scr_hob_*"_s);
    fill(talk, *ui->txtwave);
    for (CheckBox *box : {ui->chkobi, ui->chkshot, ui->chkdrop, ui->chkshell, ui->chkdw, ui->chkdf, ui->chkdb,
                          ui->chkspawn, ui->chkannouncespawn})
        fill(talk, *box);
    for (const Percentage &each : percentages) {
        const QString value = valueInReply(talk, each.box->tag);
        const std::optional<int> number = percentage(value);
        const QSignalBlocker unchecked(each.box); // The person has made no mistake when the server holds a wrong value.
        each.box->setText(number ? value : u"0"_s);
        each.box->setDataChanged(false);
        setBar(each.bar, number.value_or(0));
    }
    return hasCome;
}

void HobWindow::cmdhobset_Click()
{
    // The answer makes no difference: the values are sent after "Cancel", too.
    services.prompts.ask({u"Send to Server?"_s, u"Only changed values will be sent.\rSend settings to server?"_s,
                          BoxIcon::Information, BoxButtons::OkCancel});
    Reading scope(services,
                  {.note = u"Heat of Battle MOD...\nSending variables to the server..."_s, .holdsTimersOff = false});
    if (!scope)
        return;
    scope.leaveCollecting(); // Most pages do not do this.
    const QScopedValueRollback atWork(busy, true);
    const PageAtWork working(services);
    sendChanges();
}

void HobWindow::sendChanges()
{
    const Conversation talk(services);
    const auto sendOne = [&talk](BoundControl &control, const QString &confirmation) {
        sendIfChanged(talk, control, ValueForm::Quoted, confirmation);
        talk.yield();
    };
    sendOne(*ui->chkobi, u"Show Obituory changed."_s);
    sendOne(*ui->chkshot, u"Foot/Leg shot changed."_s);
    sendOne(*ui->txtwave, u"Wave respawn changed to ["_s + ui->txtwave->text() + u']');
    sendOne(*ui->chkdrop, u"Drop weapon on arm/leg shot changed."_s);
    sendOne(*ui->chkshell, u"Shell Shock changed."_s);
    sendOne(*ui->chkdw, u"Dynamic Weapons changed."_s);
    sendOne(*ui->chkdf, u"Dynamic flags changed."_s);
    sendOne(*ui->chkdb, u"Dynamic bombs changed."_s);
    sendOne(*ui->chkspawn, u"Spawn protection changed."_s);
    sendOne(*ui->chkannouncespawn, u"Annouce Spawn campers changed."_s);
    for (const Percentage &each : percentages)
        sendOne(*each.box, each.confirmation);
}

void HobWindow::cmdsethob_Click()
{
    const QScopedValueRollback sending(busy, true);
    const Conversation talk(services);
    const PageAtWork working(services);
    talk.tell(u"set g_gametype hob"_s, true);
    talk.wait(1);
    talk.note(u"Mode changed to HOB"_s);
    talk.tellWithoutWaiting(u"map_restart"_s);
}

void HobWindow::check(const Percentage &each)
{
    if (!isVisible())
        return; // The box has lost the focus because the window was closed.
    if (const std::optional<int> number = percentage(each.box->text())) {
        setBar(each.bar, *number);
        return;
    }
    const QScopedValueRollback keeping(keepsHint, true);
    setBar(each.bar, 0);
    each.box->setText(u"0"_s);
    ui->txtmess->setText(each.weapons + u"Value should be a percentage between 0 and 100"_s);
    each.box->setFocus();
}

void HobWindow::txtwave_LostFocus()
{
    if (!isVisible() || !ui->txtwave->dataChanged())
        return;
    const QString text = ui->txtwave->text();
    if (!isNumeric(text))
        services.prompts.inform(u"Numeric value between 1 and 30 please"_s, u"Number Field"_s);
    else if (toNumber(text) < 1 || toNumber(text) > 30)
        services.prompts.inform(u"Value between 1 and 30 please"_s, u"Invalid Value"_s);
    else
        return;
    ui->txtwave->setFocus();
}
