// SPDX-License-Identifier: MIT
#include "player_actions.h"

#include "base/clock.h"
#include "base/colour_codes.h"
#include "base/controls.h"
#include "base/fault.h"
#include "base/prompts.h"
#include "dismissals.h"
#include "player_table.h"
#include "player_view.h"
#include "rcon/conversation.h"
#include "rcon/services.h"

#include <QAbstractButton>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

void PlayerActions::dismiss(const Dismissal &dismissal)
{
    QLatin1StringView section = "Top"_L1;
    try {
        const int row = on.view.selectedRow();
        if (row < 0) {
            services.prompts.inform(dismissal.select, u"No player"_s);
            return;
        }
        const QString num = on.players.text(row, PlayerColumn::Num);
        if (on.queryMode.isChecked() || num.isEmpty()) { // Query Mode also fills in rows without a number
            services.prompts.inform(dismissal.refusal, u"Need Rcon Access"_s);
            return;
        }

        const QString guid = on.players.text(row, PlayerColumn::Guid);
        const QString name = on.players.text(row, PlayerColumn::Player);
        const QString command = dismissal.command + num;
        const QString underWay =
            QStringList{command, guid, stripcolour(name), services.clock.now().date().toString()}.join(u'\n');
        if (dismissals.contains(underWay))
            return; // one click too many
        dismissals.append(underWay);
        const auto done = qScopeGuard([&] { dismissals.removeOne(underWay); });

        const Conversation talk(services);
        acting(on.players.wanted(row), command);
        const bool isHere = talk.tell(command);
        acted(command);
        if (!isHere)
            return; // the list is another server's by now
        section = dismissal.noteSection;
        talk.note(dismissal.noteBefore + name + dismissal.noteBehind);
        section = dismissal.removalSection;
        dropRow(num, guid, name);
    } catch (const Fault &fault) {
        report(fault, dismissal, section);
    }
}

void PlayerActions::report(const Fault &fault, const Dismissal &dismissal, QLatin1StringView section) const
{
    if (dismissal.failure.isEmpty()) {
        services.prompts.showFault(fault);
        return;
    }
    services.prompts.refuse(dismissal.failure +
                                u"\rError code %1 Descr: %2\rSection %3\rPlayer Row %4\r"_s.arg(fault.number())
                                    .arg(fault.description(), section)
                                    .arg(on.view.selectedRow() + 1),
                            dismissal.failureTitle);
}

void PlayerActions::message() const
{
    const int row = on.view.selectedRow();
    const bool hasNumber = row < 0 || !on.players.text(row, PlayerColumn::Num).isEmpty();
    if (on.queryMode.isChecked() || !hasNumber) {
        services.prompts.refuse(u"Can only send message to an individual with the RCON access\n"
                                "Populate players without Query Mode ticked"_s,
                                u"Need Player ID"_s);
        return;
    }
    if (row < 0) {
        services.prompts.inform(u"Select a player from the list to send private to"_s, u"No player"_s);
        return;
    }
    // Taken now: the list may be another one when the message has been typed.
    const QString num = on.players.text(row, PlayerColumn::Num);
    const Conversation talk(services);
    const QString name = shownName(on.players.text(row, PlayerColumn::Player));

    const std::optional<QString> message = askMessage(name);
    if (!message)
        return;
    talk.note(u"Private message to ["_s + name + u"]: "_s + *message);
    talk.tell(u"tell "_s + num + u' ' + *message);
}

std::optional<QString> PlayerActions::askMessage(const QString &name) const
{
    QString message =
        services.prompts.askText(u"Enter message to send selected player\n( Note: Use %P% to auto full playername)"_s,
                                 u"Enter Message"_s, u"You are on a last warning %P%"_s);
    if (message.isEmpty())
        return {};
    message = oneLine(message); // the server reads no further than a line break
    static const QString placeholder = u"%P%"_s;
    if (const qsizetype at = message.indexOf(placeholder, 0, Qt::CaseInsensitive); at >= 0)
        message.replace(at, placeholder.size(), name);
    return message;
}

// The list may have been read anew meanwhile, and somebody else sit in that slot.
void PlayerActions::dropRow(const QString &num, const QString &guid, const QString &name) const
{
    if (const int listed = on.players.rowOf(num, guid, name); listed >= 0)
        removeRow(listed);
}

void PlayerActions::removeRow(int row) const
{
    const int selected = on.view.selectedRow();
    on.players.remove(row);
    if (selected < 0 || selected == row)
        on.view.clearSelection(); // the grid would select the next player, and the next click would hit him
}

QString PlayerActions::shownName(const QString &name) const
{
    return on.withoutColours.isChecked() ? stripcolour(name) : name;
}
