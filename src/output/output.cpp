// SPDX-License-Identifier: MIT
#include "output.h"

#include "base/clock.h"
#include "base/focus.h"
#include "base/memory.h"
#include "base/prompts.h"
#include "base/replaced_file.h"
#include "log_file.h"
#include "message_list.h"
#include "rcon_pane.h"

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

Output::Output(Prompts &prompts_, const Clock &clock_) : prompts(prompts_), clock(clock_)
{
    toBottom.setSingleShot(true);
    tmrnote.setObjectName(u"tmrnote"_s);
    tmrnote.setSingleShot(true);
    tmrnote.setInterval(3s);
    QObject::connect(&tmrnote, &QTimer::timeout, &frmprogress, [this] { closeNote(); });
    QObject::connect(&frmprogress, &ProgressWindow::dismissed, &frmprogress, [this] {
        isDismissed = true;
        closeNote();
    });
}

void Output::attach(RconPane &pane, MessageList &list)
{
    txtoutput = &pane;
    lstmessages = &list;
    QObject::connect(&toBottom, &QTimer::timeout, lstmessages, &MessageList::scrollToBottom);
}

void Output::addrcon(const QString &text)
{
    txtoutput->append(text);
}

void Output::addmessage(const QString &text)
{
    lstmessages->append(u"Time: "_s + clock.shortTime() + u' ' + text);
    toBottom.start(0); // each scrolling lays out the whole list
}

void Output::showprogress(const QString &text, Progress mode)
{
    tmrnote.stop();
    isFailure = isFailure && mode == Progress::Add && !text.isEmpty();
    isDismissed = isDismissed && mode == Progress::Add && !text.isEmpty();
    if (text.isEmpty()) {
        frmprogress.setNote({});
        frmprogress.hide();
        return;
    }
    if (programMinimised())
        return;
    frmprogress.setNote(mode == Progress::Add ? frmprogress.note() + u"\r\n"_s + text : text);
    if (!isDismissed)
        frmprogress.showOver(txtoutput ? txtoutput->window() : nullptr);
}

bool Output::closeNote()
{
    if (works > 0 || frmprogress.note().isEmpty())
        return false;
    showprogress({}, Progress::Replace);
    return true;
}

void Output::closeNoteSoon()
{
    if (!isFailure)
        tmrnote.start();
}

void Output::clearrcon_Click()
{
    if (prompts.ask({u"Clear"_s, u"Clear the RCON window?"_s, BoxIcon::Question, BoxButtons::YesNo}) != Answer::No)
        clearrcon();
}

void Output::clearmessage_Click()
{
    if (prompts.ask({u"Clear"_s, u"Clear the message window?"_s, BoxIcon::Question, BoxButtons::YesNo}) != Answer::No)
        clearmessages();
}

void Output::clearrcon()
{
    txtoutput->clear();
    giveBackMemory();
}

void Output::clearmessages()
{
    lstmessages->clear();
    giveBackMemory();
}

void Output::savercon_Click(bool autoaction)
{
    saveLog({u"molvark_rcon_"_s, u"Saving RCON output..."_s, u"Rcon log not written"_s,
             [this] { return txtoutput->text() + u"\r\n"_s; }},
            autoaction);
}

void Output::savemessages_Click(bool autoaction)
{
    // "molvar", not "molvark": the two kinds of log have different stems.
    saveLog({u"molvar_messages_"_s, u"Saving Message output..."_s, u"Message log not written"_s,
             [this] { return messages(); }},
            autoaction);
}

void Output::saveLog(const Log &log, bool autoaction)
{
    QString file = log.prefix + logDate(clock.now().date());
    if (!autoaction)
        file = prompts.askFileName(u"Save file as..."_s, file, u"log"_s);
    if (file.isEmpty())
        return;

    const Work work(*this);
    showprogress(log.note, autoaction ? Progress::Add : Progress::Replace);
    if (autoaction)
        file += u".log"_s;
    if (const std::optional<Fault> fault = appendToLog(file, log.text())) {
        isFailure = true;
        tellUnwritten(prompts, *fault, log.failure);
        return;
    }
    if (!autoaction)
        showprogress({}, Progress::Replace);
}

QString Output::messages() const
{
    QString lines;
    for (int row = 0; row < lstmessages->count(); ++row)
        lines += lstmessages->item(row)->text() + u"\r\n"_s;
    return lines;
}
