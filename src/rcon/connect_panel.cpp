// SPDX-License-Identifier: MIT
#include "connect_panel.h"
#include "ui_connect_panel.h"

#include "base/focus.h"
#include "base/password_eye.h"
#include "connecting.h"
#include "server_fields.h"
#include "settings/saved_servers.h"

using namespace Qt::StringLiterals;

namespace {

void rememberText(ComboBox *box)
{
    if (comboRemembers(box->entries(), box->currentText()))
        box->addItem(box->currentText());
}

} // namespace

ConnectPanel::ConnectPanel(ServerFields &fields_, Connecting &connecting_, QWidget *parent)
    : QWidget(parent), fields(fields_), connecting(connecting_), ui(std::make_unique<Ui::ConnectPanel>())
{
    ui->setupUi(this);
    addPasswordEye(ui->txtPWD);
    fields.set(ui->comserver->currentText(), ui->comport->currentText(), ui->txtPWD->text());
    connect(ui->comserver, &QComboBox::editTextChanged, &fields, &ServerFields::setServer);
    connect(ui->comport, &QComboBox::editTextChanged, &fields, &ServerFields::setPort);
    connect(ui->txtPWD, &QLineEdit::textChanged, &fields, &ServerFields::setPassword);
    connect(&fields, &ServerFields::changed, this, &ConnectPanel::showFields);
    connect(ui->cmdconnect, &QPushButton::clicked, this, &ConnectPanel::cmdconnect_Click);
    connect(ui->txtPWD, &QLineEdit::returnPressed, this, &ConnectPanel::passwordentered);
    connect(ui->Label3, &ClickLabel::clicked, this, &ConnectPanel::modsitewanted);
    connect(&connecting, &Connecting::connected, this, [this] { showConnected(true); });
    connect(&connecting, &Connecting::disconnected, this, [this] { showConnected(false); });
    onLostFocus(ui->comserver, [this] { comserver_LostFocus(); });
    onLostFocus(ui->comport, [this] { comport_LostFocus(); });
}

ConnectPanel::~ConnectPanel() = default;

void ConnectPanel::focusServer()
{
    ui->comserver->setFocus();
}

void ConnectPanel::cmdconnect_Click()
{
    connecting.toggle();
}

void ConnectPanel::comserver_LostFocus()
{
    rememberText(ui->comserver);
}

void ConnectPanel::comport_LostFocus()
{
    rememberText(ui->comport);
}

// Also while they are locked.
void ConnectPanel::showFields()
{
    ui->comserver->setEditText(fields.server());
    ui->comport->setEditText(fields.port());
    ui->txtPWD->setText(fields.password());
}

void ConnectPanel::showConnected(bool on)
{
    ui->cmdconnect->tag = on ? u"YES"_s : u"NO"_s;
    ui->cmdconnect->setText(on ? u"Disconnect"_s : u"Connect"_s);
    ui->comserver->setLocked(on);
    ui->comport->setLocked(on);
    lockLine(ui->txtPWD, on);
}
