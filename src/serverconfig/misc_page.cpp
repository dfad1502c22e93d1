// SPDX-License-Identifier: MIT
#include "misc_page.h"
#include "ui_misc_page.h"

#include "base/fault.h"
#include "base/prompts.h"
#include "dvar_reply.h"
#include "file_listing.h"
#include "output/output.h"
#include "rcon/conversation.h"
#include "rcon/reading.h"
#include "rcon/services.h"
#include "rotation_text.h"

#include <QTextCursor>

using namespace Qt::StringLiterals;

MiscPage::MiscPage(Services &services_, QWidget *parent)
    : QWidget(parent), services(services_), ui(std::make_unique<Ui::MiscPage>())
{
    ui->setupUi(this);
    txtcurmaprot = {ui->txtcurmaprot_0, ui->txtcurmaprot_1};
    cmdsmrpaste = {ui->cmdsmrpaste_0, ui->cmdsmrpaste_1};
    ui->txtsmrnotes->hide();
    connect(ui->cmdsmrpaste_0, &QPushButton::clicked, this, [this] { cmdsmrpaste_Click(0); });
    connect(ui->cmdsmrpaste_1, &QPushButton::clicked, this, [this] { cmdsmrpaste_Click(1); });
    connect(ui->cmdsetservedit, &QPushButton::clicked, this, &MiscPage::cmdsetservedit_Click);
    connect(ui->lblsmrnotes, &ClickLabel::clicked, this, &MiscPage::lblsmrnotes_Click);
    connect(ui->cmdcfgexec, &QPushButton::clicked, this, &MiscPage::cmdcfgexec_Click);
}

MiscPage::~MiscPage() = default;

std::optional<QString> MiscPage::serverRotation() const
{
    return isRotationTold ? std::optional(txtcurmaprot[0]->toPlainText()) : std::nullopt;
}

QString MiscPage::editedRotation() const
{
    return txtcurmaprot[1]->toPlainText();
}

void MiscPage::editRotation(const QString &text)
{
    QTextCursor all(txtcurmaprot[1]->document());
    all.select(QTextCursor::Document);
    all.insertText(text);
}

void MiscPage::awaitServer()
{
    setRotation(u"Server did not give rotation."_s, false);
    ui->lstcfgs->clear();
    ui->lstcfgs->addItem(u"No CFGs on server"_s);
    ui->cmdcfgexec->setEnabled(false);
}

void MiscPage::showRotation(const QString &listing)
{
    try {
        const QString rotation = getdvar(listing, u"sv_maprotation");
        if (rotation.size() <= longestRotation)
            setRotation(rotation, true);
    } catch (const Fault &) {
        return; // The value was cut off. The box goes on saying that the server gave no rotation.
    }
}

void MiscPage::showCfgFiles(const QString &listing)
{
    if (!listing.contains(u'\n'))
        services.output.addmessage(u"Server has no CFG files - Disabling fields..."_s);
    ui->lstcfgs->clear();
    ui->lstcfgs->addItems(cfgFiles(listing));
    // The button can be pressed even when there is no file, although the line in the message list says otherwise.
    ui->cmdcfgexec->setEnabled(true);
}

void MiscPage::forgetServer()
{
    isRotationTold = false;
    txtcurmaprot[0]->clear();
    ui->lstcfgs->clear();
    ui->cmdcfgexec->setEnabled(false);
}

void MiscPage::cmdsmrpaste_Click(int index)
{
    txtcurmaprot[1]->setPlainText(index == 0 ? txtcurmaprot[0]->toPlainText() : QString());
}

void MiscPage::cmdsetservedit_Click()
{
    // The server reads one line only, so a rotation that was typed on several lines is joined.
    const QString rotation = txtcurmaprot[1]->toPlainText().replace(u'\n', u' ');
    if (rotation.isEmpty())
        return;
    const Conversation talk(services);
    const PageAtWork working(services);
    talk.tell(rotationCommand(rotation));
    talk.note(u"Set Map rotation to Custom choice."_s);
}

void MiscPage::lblsmrnotes_Click()
{
    const bool show = ui->txtsmrnotes->isHidden();
    ui->txtsmrnotes->setVisible(show);
    ui->lblsmrnotes->setText(show ? u"Click to remove"_s : u"Click for Notes"_s);
    ui->lstcfgs->setHidden(show);
    ui->cmdcfgexec->setHidden(show);
}

void MiscPage::cmdcfgexec_Click()
{
    const Conversation talk(services);
    const Answer answer = services.prompts.ask({u"Exec CFG"_s,
                                                u"Are you sure you want to Exec the selected CFG file\r"
                                                "Executing CFGs is at your own risk!\r"
                                                "\r"
                                                "Please ensure you know what the file performs"_s,
                                                BoxIcon::Question, BoxButtons::OkCancel});
    if (answer == Answer::Cancel)
        return;

    const PageAtWork working(services);
    const QString shown = ui->lstcfgs->currentText();
    const QString file = shown.endsWith(u".cfg", Qt::CaseInsensitive) ? shown : shown + u".cfg"_s;
    talk.tell(u"exec "_s + file, true);
    talk.wait(1);
    talk.note(u"Performed EXEC of "_s + shown);
}

void MiscPage::setRotation(const QString &text, bool told)
{
    isRotationTold = told;
    QFont font = txtcurmaprot[0]->font();
    font.setBold(!told);
    txtcurmaprot[0]->setFont(font);
    txtcurmaprot[0]->setPlainText(text);
    for (QPushButton *button : cmdsmrpaste)
        button->setEnabled(told);
}
