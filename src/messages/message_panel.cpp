// SPDX-License-Identifier: MIT
#include "message_panel.h"
#include "ui_message_panel.h"

#include "base/focus.h"
#include "base/placeholder.h"
#include "base/prompts.h"
#include "chat_preview.h"
#include "rcon/conversation.h"
#include "rcon/services.h"
#include "serverconfig/chat_prefix.h"
#include "settings/ini_file.h"

using namespace Qt::StringLiterals;

namespace {

const QString section = u"Remoteuser"_s;
const QString key = u"user"_s;
constexpr int nameBuffer = 50;
const QString usualName = u"RemoteUser"_s;

} // namespace

MessagePanel::MessagePanel(Services &services_, QWidget *parent)
    : QWidget(parent), services(services_), ui(std::make_unique<Ui::MessagePanel>())
{
    ui->setupUi(this);
    const QFontMetrics metrics = ui->txtprefix->fontMetrics();
    ui->txtprefix->setMinimumWidth(metrics.horizontalAdvance(usualName) + metrics.height());
    showPlaceholder(ui->lstmessages);
    connect(ui->cmdmessage, &QPushButton::clicked, this, &MessagePanel::cmdmessage_Click);
    onLostFocus(ui->txtprefix, [this] { txtprefix_LostFocus(); });
}

MessagePanel::~MessagePanel() = default;

MessageList &MessagePanel::list() const
{
    return *ui->lstmessages;
}

void MessagePanel::load(const IniText &ini)
{
    const QString name = ini.value(section, key, nameBuffer);
    ui->txtprefix->setText(name.isEmpty() ? usualName : name);
    ui->txtprefix->setDataChanged(false);
}

void MessagePanel::cmdmessage_Click()
{
    const Conversation talk(services);
    const QString typed = services.prompts.askText(u"Type message to send to server"_s, u"Server Message"_s,
                                                   u"Welcome to our server, enjoy your stay"_s,
                                                   [this](QLineEdit *line) { return preview(line); });
    if (typed.isEmpty())
        return;
    const QString message = signedText(typed);
    talk.tell(u"say "_s + chatPrefix + message);
    talk.note(u"Message to server>> "_s + message);
}

QString MessagePanel::signedText(const QString &typed) const
{
    return ui->txtprefix->text() + u' ' + oneLine(typed); // the server reads no further than a line break
}

QWidget *MessagePanel::preview(QLineEdit *line) const
{
    auto *seen = new ChatPreview;
    seen->keepRoom();
    seen->follow(line, [this](const QString &typed) { return chatPrefix + signedText(typed); });
    return seen;
}

void MessagePanel::txtprefix_LostFocus()
{
    if (!ui->txtprefix->dataChanged())
        return;
    const std::optional<Fault> fault = services.ini.write({{section, key, ui->txtprefix->text()}});
    ui->txtprefix->setDataChanged(fault.has_value()); // what was not written is tried again
    if (fault)
        services.prompts.showWriteFailure(u"user prefix to INI file"_s, *fault);
}
