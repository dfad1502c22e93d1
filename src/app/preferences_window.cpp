// SPDX-License-Identifier: MIT
#include "preferences_window.h"
#include "ui_preferences_window.h"

#include "base/fault.h"
#include "base/keys.h"
#include "base/numbers.h"
#include "base/password_eye.h"
#include "base/prompts.h"
#include "rcon/services.h"
#include "rcon/session.h"
#include "settings/ini_file.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString textOf(bool value)
{
    return value ? u"1"_s : u"0"_s;
}

QString textOf(qint16 value)
{
    return QString::number(value);
}

QString textOf(const QString &value)
{
    return value;
}

void set(bool &field, const QString &text)
{
    field = text == u"1";
}

void set(qint16 &field, const QString &text)
{
    field = toInteger16(text);
}

void set(QString &field, const QString &text)
{
    field = text;
}

} // namespace

PreferencesWindow::PreferencesWindow(Services &services_, QWidget *parent)
    : QWidget(parent), services(services_), ui(std::make_unique<Ui::PreferencesWindow>())
{
    ui->setupUi(this);
    addPasswordEye(ui->txtpass);
    fields = {{{&Preferences::savercon, ui->moptsr},
               {&Preferences::savemessages, ui->moptsm},
               {&Preferences::clearrconnew, ui->chkclearRnews},
               {&Preferences::clearmessnew, ui->chkclearMnews},
               {&Preferences::removeid, ui->moptrc},
               {&Preferences::usequery, ui->moptqp},
               {&Preferences::autoqplayer, ui->chkautoplayer},
               {&Preferences::autoqplayerint, ui->chkautoplayer, ui->sldautoplayer},
               {&Preferences::autokick999, ui->chkauto999},
               {&Preferences::autokick999int, ui->chkauto999, ui->sldauto999},
               {&Preferences::autoconnect, ui->chkautoconnect},
               {&Preferences::autoconnectserv, ui->txtserv},
               {&Preferences::autoconnectport, ui->txtport},
               {&Preferences::autoconnectrcon, ui->txtpass},
               {&Preferences::automessage, ui->chkautomessages},
               {&Preferences::messageset, ui->txtmesset},
               {&Preferences::messagetime, ui->txtmessint}}};
    connect(ui->sldautoplayer, &QSlider::valueChanged, ui->lblautoplayer, qOverload<int>(&QLabel::setNum));
    connect(ui->sldauto999, &QSlider::valueChanged, ui->lblauto999, qOverload<int>(&QLabel::setNum));
    connect(ui->chkautoplayer, &QCheckBox::toggled, this, &PreferencesWindow::chkautoplayer_Click);
    connect(ui->chkauto999, &QCheckBox::toggled, this, &PreferencesWindow::chkauto999_Click);
    connect(ui->chkautoconnect, &QCheckBox::toggled, this, &PreferencesWindow::chkautoconnect_Click);
    connect(ui->chkautomessages, &QCheckBox::toggled, this, &PreferencesWindow::chkautomessages_Click);
    connect(ui->cmdsave, &QPushButton::clicked, this, &PreferencesWindow::cmdsave_Click);
    connect(ui->cmdexit, &QPushButton::clicked, this, &PreferencesWindow::cmdexit_Click);
    ui->cmdexit->setShortcut(Qt::Key_Escape);
    addDefaultButton(*this, *ui->cmdsave);
    Form_Load();
}

PreferencesWindow::~PreferencesWindow() = default;

const PreferencesWindow::Field &PreferencesWindow::fieldOf(const PreferenceKey &preference) const
{
    return *std::ranges::find(fields, preference.member, &Field::member);
}

void PreferencesWindow::Form_Load()
{
    for (const Field &field : fields) {
        const QString text =
            std::visit([this](auto member) { return textOf(services.session.options.*member); }, field.member);
        if (field.slider)
            field.slider->setValue(text.toInt()); // The slider shows its least value for a smaller number.
        else
            field.box->setValue(text);
    }
    for (const Field &field : fields)
        field.box->setDataChanged(false);
    chkautoplayer_Click();
    chkauto999_Click();
    chkautoconnect_Click();
    chkautomessages_Click();
}

void PreferencesWindow::chkautoplayer_Click()
{
    ui->sldautoplayer->setEnabled(ui->chkautoplayer->isChecked());
    ui->lblautoplayer->setEnabled(ui->chkautoplayer->isChecked());
}

void PreferencesWindow::chkauto999_Click()
{
    ui->sldauto999->setEnabled(ui->chkauto999->isChecked());
    ui->lblauto999->setEnabled(ui->chkauto999->isChecked());
}

void PreferencesWindow::chkautoconnect_Click()
{
    for (TextBox *box : {ui->txtserv, ui->txtport, ui->txtpass})
        box->setEnabled(ui->chkautoconnect->isChecked());
}

void PreferencesWindow::chkautomessages_Click()
{
    for (TextBox *box : {ui->txtmesset, ui->txtmessint})
        box->setEnabled(ui->chkautomessages->isChecked());
}

void PreferencesWindow::cmdsave_Click()
{
    const Answer answer =
        services.prompts.ask({u"Save Changes"_s, u"Save any changes made"_s, BoxIcon::Question, BoxButtons::OkCancel});
    if (answer == Answer::Cancel)
        return;
    try {
        if (save())
            services.prompts.inform(u"Preferences saved."_s, u"Saved"_s);
        close();
    } catch (const Fault &fault) {
        // The number of the message set or its interval is none. What stands before it has been saved.
        services.prompts.showFault(fault);
    }
}

bool PreferencesWindow::save()
{
    for (const PreferenceKey &preference : preferenceKeys) {
        const Field &field = fieldOf(preference);
        if (!field.box->dataChanged())
            continue;
        const QString text = field.slider ? QString::number(field.slider->value()) : field.box->value();
        std::visit([&](auto member) { set(services.session.options.*member, text); }, preference.member);
        emit changed();
        const std::optional<Fault> fault =
            services.ini.write({{preferenceSection.toString(), preference.key.toString(), text}});
        // Whether the other keys could be written is not looked at.
        if (fault && &preference == &preferenceKeys.front()) {
            services.prompts.showWriteFailure(u"save rcon to INI file"_s, *fault);
            return false;
        }
    }
    return true;
}

void PreferencesWindow::cmdexit_Click()
{
    const Answer answer = services.prompts.ask({u"Have you Saved?"_s,
                                                u"Exit preferences?\r\rThis will cancel any changes made\r\r"
                                                "Please select Save first if any changes"_s,
                                                BoxIcon::Information, BoxButtons::OkCancel});
    if (answer == Answer::Ok)
        close();
}
