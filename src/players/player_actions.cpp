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
    const char *command;
    const char *select;     ///< when nobody is selected
    const char *refusal;    ///< in Query Mode
    const char *noteBefore; ///< around the name in the message list
    const char *noteBehind;
    const char *noteSection = ""; ///< names of the last two steps, for the report of a fault
    const char *removalSection = "";
    const char *failureTitle = nullptr; ///< of that report; the general box reports when there is none
    const char *failure = nullptr;
};

void PlayersPage::cmdplykick_Click()
{
    dismiss({.command = "clientkick ",
             .select = QT_TR_NOOP("Select a player from the list to Kick first"),
             .refusal = QT_TR_NOOP("Only Kick with Rcon access, not in Query Mode"),
             .noteBefore = QT_TR_NOOP("Player Kicked >"),
             .noteBehind = "<"});
}

void PlayersPage::cmdplyban_Click()
{
    dismiss({.command = "banclient ",
             .select = QT_TR_NOOP("Select a player from the list to Ban first"),
             .refusal = QT_TR_NOOP("Only Ban with Rcon access, not in Query Mode"),
             .noteBefore = QT_TR_NOOP("Player banned and kicked ["),
             .noteBehind = "]",
             .noteSection = "Middle",
             .removalSection = "Remove Grid",
             .failureTitle = QT_TR_NOOP("BanUser Error"),
             .failure = QT_TR_NOOP("Error in BAN Routine")});
}

void PlayersPage::cmdtempban_Click()
{
    dismiss({.command = "tempbanclient ",
             .select = QT_TR_NOOP("Select a player from the list to temporary Ban first"),
             .refusal = QT_TR_NOOP("Only Temp Ban with Rcon access, not in Query Mode"),
             .noteBefore = QT_TR_NOOP("Player temporary banned and kicked ["),
             .noteBehind = "]",
             .noteSection = "Top",
             .removalSection = "Grid remove",
             .failureTitle = QT_TR_NOOP("TempBan Error"),
             .failure = QT_TR_NOOP("Error in TempBan Routines")});
}

void PlayersPage::dismiss(const Dismissal &dismissal)
{
    const char *section = "Top";
    try {
        const QPersistentModelIndex row = players.index(selectedRow(), PlayerColumn::Num);
        if (!row.isValid()) {
            services.prompts.inform(tr(dismissal.select), tr("No player"));
            return;
        }
        const QString num = players.text(row.row(), PlayerColumn::Num);
        if (ui->chkplyq->isChecked() || num.isEmpty()) { // Query Mode also fills in rows without a number
            services.prompts.inform(tr(dismissal.refusal), tr("Need Rcon Access"));
            return;
        }

        if (dismissed.contains(row))
            return; // one click too many, while the command is under way
        dismissed.append(row);
        const auto done = qScopeGuard([this, row] { dismissed.removeOne(row); });

        const QString name = players.text(row.row(), PlayerColumn::Player);
        services.exchange.sendinfo(QLatin1StringView(dismissal.command) + num);
        section = dismissal.noteSection;
        services.output.addmessage(tr(dismissal.noteBefore) + name + QLatin1StringView(dismissal.noteBehind));
        section = dismissal.removalSection;
        if (!row.isValid())
            throw Fault(Fault::OutOfRange); // the list was read anew while the command was under way
        removeRow(row.row());
    } catch (const Fault &fault) {
        if (!dismissal.failure) {
            services.prompts.showFault(fault);
            return;
        }
        services.prompts.refuse(tr(dismissal.failure) + tr("\rError code %1 Descr: %2\rSection %3\rPlayer Row %4\r")
                                                            .arg(fault.number())
                                                            .arg(fault.description(), QLatin1StringView(section))
                                                            .arg(selectedRow() + 1),
                                tr(dismissal.failureTitle));
    }
}

void PlayersPage::cmdplymessage_Click()
{
    const int row = selectedRow();
    const bool hasNumber = row < 0 || !players.text(row, PlayerColumn::Num).isEmpty();
    if (ui->chkplyq->isChecked() || !hasNumber) {
        services.prompts.refuse(tr("Can only send message to an individual with the RCON access\n"
                                   "Populate players without Query Mode ticked"),
                                tr("Need Player ID"));
        return;
    }
    if (row < 0) {
        services.prompts.inform(tr("Select a player from the list to send private to"), tr("No player"));
        return;
    }
    // Taken now: the list may be another one when the message has been typed.
    const QString num = players.text(row, PlayerColumn::Num);
    const QString name = shownName(players.text(row, PlayerColumn::Player));

    QString message =
        services.prompts.askText(tr("Enter message to send selected player\n( Note: Use %P% to auto full playername)"),
                                 tr("Enter Message"), tr("You are on a last warning %P%"));
    if (message.isEmpty())
        return;
    message = oneLine(message); // the server reads no further than a line break
    static const QString placeholder = u"%P%"_s;
    if (const qsizetype at = message.indexOf(placeholder, 0, Qt::CaseInsensitive); at >= 0)
        message.replace(at, placeholder.size(), name);
    services.output.addmessage(tr("Private message to [") + name + u"]: "_s + message);
    services.exchange.sendinfo(u"tell "_s + num + u' ' + message);
}

void PlayersPage::cmdsavenames_Click()
{
    const Answer answer =
        services.prompts.ask({tr("Save list"), tr("Append current list of players and GUIDs to playerlist.csv"),
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
        services.prompts.inform(tr("Players appended"), tr("Players saved"));
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
