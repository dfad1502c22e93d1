// SPDX-License-Identifier: MIT
#include "about_window.h"
#include "ui_about_window.h"

#include "base/keys.h"
#include "base/prompts.h"
#include "base/system_information.h"
#include "program_icon.h"
#include "web_links.h"

using namespace Qt::StringLiterals;

namespace {

const QString title = u"Molvark"_s;

} // namespace

AboutWindow::AboutWindow(Prompts &prompts_, QWidget *parent)
    : QWidget(parent), prompts(prompts_), ui(std::make_unique<Ui::AboutWindow>())
{
    ui->setupUi(this);
    setWindowTitle(u"About "_s + title);
    ui->picIcon->setPixmap(programIcon().pixmap(64, 64));
    ui->lblTitle->setText(title);
    ui->Label2->setText(u"The forum: see \"Visit forum\" in the Help menu. By mail: "_s +
                        ContactAddress::authors.toString());
    ui->Label3->setText(u"If the program is of use to you, please think of a donation to "_s +
                        ContactAddress::donations.toString());
    // Qt would open the window no larger than two thirds of a small screen.
    resize(minimumWidth(), heightForWidth(minimumWidth()));
    connect(ui->cmdOK, &QPushButton::clicked, this, &QWidget::close);
    ui->cmdOK->setShortcut(Qt::Key_Escape);
    addDefaultButton(*this, *ui->cmdOK);
    connect(ui->cmdSysInfo, &QPushButton::clicked, this, &AboutWindow::cmdSysInfo_Click);
}

AboutWindow::~AboutWindow() = default;

void AboutWindow::cmdSysInfo_Click()
{
    if (!startSystemInformation())
        prompts.ask({title, u"System Information Is Unavailable At This Time"_s, BoxIcon::None, BoxButtons::Ok});
}
