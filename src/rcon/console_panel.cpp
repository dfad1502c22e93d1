// SPDX-License-Identifier: MIT
#include "console_panel.h"
#include "ui_console_panel.h"

#include "base/focus.h"
#include "console_history.h"
#include "conversation.h"

#include <QApplication>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace {

// In these boxes Return and the button's key mean "on to the next field", never "send the console line".
const QStringList tabbedBoxes{u"txtmess"_s, u"commessset"_s, u"txtPWD"_s};

} // namespace

ConsolePanel::ConsolePanel(Services &services_, QWidget *parent)
    : QWidget(parent), services(services_), ui(std::make_unique<Ui::ConsolePanel>())
{
    ui->setupUi(this);
    connect(ui->cmdsend, &QPushButton::clicked, this, &ConsolePanel::cmdsend_Click);
    connect(ui->cmdstatus, &QPushButton::clicked, this, &ConsolePanel::cmdstatus_Click);
    connect(ui->cmsserverinfo, &QPushButton::clicked, this, &ConsolePanel::cmsserverinfo_Click);
    connect(ui->comdirect->lineEdit(), &QLineEdit::returnPressed, this, &ConsolePanel::cmdsend_Click);
}

ConsolePanel::~ConsolePanel() = default;

void ConsolePanel::cmdsend_Click()
{
    QWidget *focused = QApplication::focusWidget();
    if (focused && tabbedBoxes.contains(focused->objectName())) {
        pressTab(focused);
        return;
    }

    const QString command = ui->comdirect->currentText();
    if (command.isEmpty())
        return;
    if (historyTakes(ui->comdirect->entries(), command))
        ui->comdirect->addItem(command);
    const Conversation talk(services);
    talk.tellWithoutWaiting(command);
    talk.note(command);
    ui->comdirect->lineEdit()->selectAll();
    ui->comdirect->setFocus();
}

void ConsolePanel::cmdstatus_Click()
{
    const Conversation talk(services);
    talk.tell(u"Status"_s, true);
    talk.note(u"Server Status requested"_s);
}

void ConsolePanel::cmsserverinfo_Click()
{
    const Conversation talk(services);
    talk.tell(u"serverinfo"_s, true);
    talk.note(u"Server Info requested"_s);
}
