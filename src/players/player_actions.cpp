// SPDX-License-Identifier: MIT
#include "base/clock.h"
#include "base/fault.h"
#include "base/prompts.h"
#include "colour_codes.h"
#include "output/log_file.h"
#include "output/output.h"
#include "player_csv.h"
#include "players_page.h"
#include "rcon/connect_panel.h"
#include "rcon/exchange.h"
#include "rcon/services.h"
#include "ui_players_page.h"

#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

/// One way to get rid of a player: its command and its texts.
struct PlayersPage::Dismissal {
    QLatin1StringView command;
    QLatin1StringView select;     ///< when nobody is selected
    QLatin1StringView refusal;    ///< in Query Mode
    QLatin1StringView noteBefore; ///< around the name in the message list
    QLatin1StringView noteBehind;
    QLatin1StringView noteSection{}; ///< names of the last two steps, for the report of a fault
    QLatin1StringView removalSection{};
    QLatin1StringView failureTitle{}; ///< of that report; the general box reports when there is none
    QLatin1StringView failure{};
};

void PlayersPage::cmdplykick_Click()
{
    dismiss({.command = "clientkick "_L1,
             .select = "Select a player from the list to Kick first"_L1,
             .refusal = "Only Kick with Rcon access, not in Query Mode"_L1,
             .noteBefore = "Player Kicked >"_L1,
             .noteBehind = "<"_L1});
}

void PlayersPage::cmdplyban_Click()
{
    dismiss({.command = "banclient "_L1,
             .select = "Select a player from the list to Ban first"_L1,
             .refusal = "Only Ban with Rcon access, not in Query Mode"_L1,
             .noteBefore = "Player banned and kicked ["_L1,
             .noteBehind = "]"_L1,
             .noteSection = "Middle"_L1,
             .removalSection = "Remove Grid"_L1,
             .failureTitle = "BanUser Error"_L1,
             .failure = "Error in BAN Routine"_L1});
}

void PlayersPage::cmdtempban_Click()
{
    dismiss({.command = "tempbanclient "_L1,
             .select = "Select a player from the list to temporary Ban first"_L1,
             .refusal = "Only Temp Ban with Rcon access, not in Query Mode"_L1,
             .noteBefore = "Player temporary banned and kicked ["_L1,
             .noteBehind = "]"_L1,
             .noteSection = "Top"_L1,
             .removalSection = "Grid remove"_L1,
             .failureTitle = "TempBan Error"_L1,
             .failure = "Error in TempBan Routines"_L1});
}

void PlayersPage::dismiss(const Dismissal &dismissal)
{
    QLatin1StringView section = "Top"_L1;
    try {
        const QPersistentModelIndex row = players.index(selectedRow(), PlayerColumn::Num);
        if (!row.isValid()) {
            services.prompts.inform(dismissal.select, u"No player"_s);
            return;
        }
        const QString num = players.text(row.row(), PlayerColumn::Num);
        if (ui->chkplyq->isChecked() || num.isEmpty()) { // Query Mode also fills in rows without a number
            services.prompts.inform(dismissal.refusal, u"Need Rcon Access"_s);
            return;
        }

        if (dismissed.contains(row))
            return; // one click too many, while the command is under way
        dismissed.append(row);
        const auto done = qScopeGuard([this, row] { dismissed.removeOne(row); });

        const QString name = players.text(row.row(), PlayerColumn::Player);
        services.exchange.sendinfo(dismissal.command + num);
        section = dismissal.noteSection;
        services.output.addmessage(dismissal.noteBefore + name + dismissal.noteBehind);
        section = dismissal.removalSection;
        if (!row.isValid())
            throw Fault(Fault::OutOfRange); // the list was read anew while the command was under way
        removeRow(row.row());
    } catch (const Fault &fault) {
        if (dismissal.failure.isEmpty()) {
            services.prompts.showFault(fault);
            return;
        }
        services.prompts.refuse(dismissal.failure +
                                    u"\rError code %1 Descr: %2\rSection %3\rPlayer Row %4\r"_s.arg(fault.number())
                                        .arg(fault.description(), section)
                                        .arg(selectedRow() + 1),
                                dismissal.failureTitle);
    }
}

void PlayersPage::cmdplymessage_Click()
{
    const int row = selectedRow();
    const bool hasNumber = row < 0 || !players.text(row, PlayerColumn::Num).isEmpty();
    if (ui->chkplyq->isChecked() || !hasNumber) {
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
    const QString num = players.text(row, PlayerColumn::Num);
    const QString name = shownName(players.text(row, PlayerColumn::Player));

    QString message =
        services.prompts.askText(u"Enter message to send selected player\n( Note: Use %P% to auto full playername)"_s,
                                 u"Enter Message"_s, u"You are on a last warning %P%"_s);
    if (message.isEmpty())
        return;
    message = oneLine(message); // the server reads no further than a line break
    static const QString placeholder = u"%P%"_s;
    if (const qsizetype at = message.indexOf(placeholder, 0, Qt::CaseInsensitive); at >= 0)
        message.replace(at, placeholder.size(), name);
    services.output.addmessage(u"Private message to ["_s + name + u"]: "_s + message);
    services.exchange.sendinfo(u"tell "_s + num + u' ' + message);
}

void PlayersPage::cmdsavenames_Click()
{
    const Answer answer =
        services.prompts.ask({u"Save list"_s, u"Append current list of players and GUIDs to playerlist.csv"_s,
                              BoxIcon::Question, BoxButtons::OkCancel});
    if (answer == Answer::Cancel)
        return;

    const QString file = u"playerlist.csv"_s;
    const bool isThere = QFileInfo(file).isFile() && QFile(file).open(QIODevice::ReadOnly);
    const QString header =
        csvLine({u"Date/Time"_s, u"Server IP:Port"_s, u"Player IP"_s, u"Player GUID"_s, u"Player Name"_s});
    const std::optional<Fault> fault = appendToLog(file, (isThere ? QString() : header) + csvRows());
    if (fault)
        services.prompts.showFault(*fault);
    else
        services.prompts.inform(u"Players appended"_s, u"Players saved"_s);
}

QString PlayersPage::csvRows() const
{
    const QString time = csvTime(services.clock.now());
    const QString server = connectPanel.server() + u':' + connectPanel.port();
    QString rows;
    for (int row = 0; row < players.rowCount(); ++row) {
        const QString &name = players.text(row, PlayerColumn::Player);
        rows += ui->chkplyq->isChecked() ? csvLine({time, server, name})
                                         : csvLine({time, server, players.text(row, PlayerColumn::Address),
                                                    players.text(row, PlayerColumn::Guid), name});
    }
    return rows;
}

int PlayersPage::selectedRow() const
{
    const QModelIndexList rows = ui->msfplayers->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

void PlayersPage::removeRow(int row)
{
    const int selected = selectedRow();
    players.remove(row);
    if (selected < 0 || selected == row)
        ui->msfplayers->clearSelection(); // the grid would select the next player, and the next click would hit him
}
