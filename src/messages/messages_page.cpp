// SPDX-License-Identifier: MIT
#include "messages_page.h"
#include "ui_messages_page.h"

using namespace Qt::StringLiterals;

MessagesPage::MessagesPage(QWidget *parent)
    : QWidget(parent), ui(std::make_unique<Ui::MessagesPage>()), tmrmessage(this)
{
    ui->setupUi(this);
    tmrmessage.setObjectName(u"tmrmessage"_s);
    for (QPushButton *button : {ui->cmdsetsave, ui->cmdmessstart, ui->cmdmessstop})
        button->hide();
}

MessagesPage::~MessagesPage() = default;

bool MessagesPage::hasUnsavedSets() const
{
    return ui->cmdsetsave->isEnabled();
}

void MessagesPage::endCycle()
{
    if (ui->cmdmessstart->isEnabled())
        return;
    tmrmessage.stop();
    ui->cmdmessstop->setEnabled(false);
    ui->cmdmessstart->setEnabled(true);
}
