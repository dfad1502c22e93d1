// SPDX-License-Identifier: MIT
#include "console_panel.h"
#include "ui_console_panel.h"

#include "base/focus.h"
#include "console_history.h"
#include "conversation.h"

#include <QApplication>
#include <QLineEdit>

using namespace Qt::StringLiterals;

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
    // In some boxes Return and the button's key mean "on to the next field", never "send the console line".
    QWidget *focused = QApplication::focusWidget();
    if (focused && focused->property("returnMovesOn").toBool()) {
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
    focusLine();
}

void ConsolePanel::focusLine()
{
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
