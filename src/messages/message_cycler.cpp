// SPDX-License-Identifier: MIT
#include "base/fault.h"
#include "base/focus.h"
#include "base/numbers.h"
#include "base/once.h"
#include "base/prompts.h"
#include "messages_page.h"
#include "rcon/connect_panel.h"
#include "rcon/exchange.h"
#include "rcon/services.h"
#include "rcon/session.h"
#include "rcon/udp_client.h"
#include "serverconfig/chat_prefix.h"
#include "serverconfig/dvar_reply.h"
#include "ui_messages_page.h"

#include <QScopedValueRollback>

#include <algorithm>

using namespace Qt::StringLiterals;

void MessagesPage::autoStart()
{
    const Preferences &options = services.session.options;
    ui->txtinterval->setText(QString::number(options.messagetime));
    ui->txtinterval->dataChanged = false;
    ui->txtfreesets->setText(QString::number(options.messageset)); // shown there, and nothing more
    const QScopedValueRollback initiative(services.session.autoaction, true);
    cmdmessstart_Click();
}

void MessagesPage::endCycle()
{
    if (!ui->cmdmessstart->isEnabled())
        setCycling(false);
}

void MessagesPage::txtinterval_LostFocus()
{
    if (!ui->txtinterval->dataChanged)
        return;
    ui->txtinterval->dataChanged = false;
    const QString text = ui->txtinterval->text();
    if (isNumeric(text) && toNumber(text) >= 1 && toNumber(text) <= 10) {
        cycle.sendNext();
        return;
    }
    services.prompts.inform(isNumeric(text) ? u"Value between 1 and 10 minutes"_s
                                            : u"Value between 1 and 10 only please"_s,
                            u"Invalid Entry"_s);
    ui->txtinterval->setFocus();
}

void MessagesPage::cmdmessstart_Click()
{
    const bool asks = !services.session.autoaction;
    if (!services.session.connected) {
        if (asks)
            services.prompts.inform(u"Please connect to server first"_s, u"Not Connected"_s);
        return;
    }
    if (hasUnsavedSets()) {
        services.prompts.refuse(u"Pending Save sets active\rPlease either Save or Discard changes\r"
                                "before starting message cycler"_s,
                                u"Pending Save Sets"_s);
        return;
    }
    const QString name = ui->commessset->currentText();
    if (asks) {
        const Answer answer =
            services.prompts.ask({u"Start Message Cycler"_s, u"Start message Cycle for set named:\r"_s + name,
                                  BoxIcon::Question, BoxButtons::OkCancel});
        if (answer == Answer::Cancel)
            return;
    }
    cycleset = sets.savedSlotOf(name);
    const bool isEmpty = cycleset < 0 || std::ranges::all_of(sets.savedMessages(cycleset), &QString::isEmpty);
    if (!isEmpty)
        setCycling(true);
    else if (asks)
        services.prompts.refuse(u"The message set does not contain any messages!\r Please make some messages first."_s,
                                u"No messages in set"_s);
}

void MessagesPage::cmdmessstop_Click()
{
    setCycling(false);
}

void MessagesPage::setCycling(bool on)
{
    if (on)
        tmrmessage.start();
    else
        tmrmessage.stop();
    ui->cmdmessstart->setEnabled(!on);
    ui->cmdmessstop->setEnabled(on);
}

void MessagesPage::tmrmessage_Timer()
{
    const Once once(tickingSince, services.clock);
    if (!once)
        return; // the last message, or a box that it brought, is still there
    if (!services.session.connected) {
        if (!programMinimised())
            services.prompts.inform(u"Please connect to server first"_s, u"Not Connected"_s);
        return;
    }
    const QString interval = ui->txtinterval->text();
    if (cycle.minutePassed(isNumeric(interval) ? toNumber(interval) : 0) && !services.session.rconbusy)
        sayNext();
}

void MessagesPage::sayNext()
{
    const std::optional<QString> chosen = cycle.next(sets.savedMessages(cycleset));
    if (!chosen)
        return;
    const int link = services.udpclient.link();
    QString message = fillPlaceholder(*chosen, u"%IP%"_s, connectPanel.server() + u':' + connectPanel.port());
    QString value;
    bool hasAsked = false;
    if (hasPlaceholder(message, u"%SN%"_s)) {
        value = askVariable(variables.servername);
        message = fillPlaceholder(message, u"%SN%"_s, value);
        hasAsked = true;
    }
    const auto isLeft = [this, link] { return !services.session.connected || services.udpclient.link() != link; };
    if (isLeft())
        return; // the message was meant for the server that has been left
    if (hasPlaceholder(message, u"%FF%"_s)) {
        // A mode without a word leaves the server's name in its place, if that has been asked for.
        value = friendlyFireWord(askVariable(variables.friendlyfire), value);
        message = fillPlaceholder(message, u"%FF%"_s, value);
        hasAsked = true;
    }
    if (isLeft())
        return;
    services.exchange.sendinfo(u"say "_s + chatPrefix + message, hasAsked);
    cycle.advance();
}

QString MessagesPage::askVariable(const QString &name)
{
    services.exchange.sendinfo(u"dvarlist "_s + name, true);
    services.exchange.waitseconds(1);
    try {
        return getdvar(services.session.rconreply, name);
    } catch (const Fault &) {
        return {}; // the reply was cut off: the message is said all the same
    }
}
