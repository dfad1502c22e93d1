// SPDX-License-Identifier: MIT
#include "saved_servers_panel.h"
#include "ui_saved_servers_panel.h"

#include "base/context_menu.h"
#include "base/placeholder.h"
#include "base/prompts.h"
#include "ini_text.h"
#include "saved_servers.h"

#include <QMenu>
#include <QPersistentModelIndex>

using namespace Qt::StringLiterals;

namespace {

QStringList texts(const QListWidget *list)
{
    QStringList rows;
    for (int row = 0; row < list->count(); ++row)
        rows.append(list->item(row)->text());
    return rows;
}

} // namespace

SavedServersPanel::SavedServersPanel(Prompts &prompts_, QWidget *parent)
    : QWidget(parent), prompts(prompts_), ui(std::make_unique<Ui::SavedServersPanel>())
{
    ui->setupUi(this);
    ui->lstrcon->hide();
    showPlaceholder(ui->lstservers);
    // A click on the selected row fills the fields again. The keyboard changes the selection without a click.
    connect(ui->lstservers, &QListWidget::itemClicked, this, &SavedServersPanel::lstservers_Click);
    connect(ui->lstservers, &QListWidget::itemSelectionChanged, this, &SavedServersPanel::lstservers_Click);
    connect(ui->lstservers, &ListBox::menuwanted, this, &SavedServersPanel::showMenu);
}

SavedServersPanel::~SavedServersPanel() = default;

void SavedServersPanel::load(const SavedServers &saved)
{
    for (const SavedServer &entry : saved.servers)
        addRow(entry.server, entry.port, entry.password);
    servercount = saved.servercount;
}

QList<IniEntry> SavedServersPanel::entries() const
{
    return savedServerEntries(texts(ui->lstservers), texts(ui->lstrcon), servercount);
}

void SavedServersPanel::lstservers_Click()
{
    const QList<QListWidgetItem *> selected = ui->lstservers->selectedItems();
    if (selected.isEmpty())
        return;
    const auto [server, port] = splitServerRow(selected.first()->text());
    const QListWidgetItem *password = ui->lstrcon->item(ui->lstservers->row(selected.first()));
    emit serverchosen(server, port, password ? password->text() : QString());
}

void SavedServersPanel::Saveserver_Click(const QString &server, const QString &port, const QString &password)
{
    if (server.isEmpty() || port.isEmpty() || password.isEmpty()) {
        prompts.refuse(u"Need a Server, Port and password to be present to save"_s, u"In complete details"_s);
        return;
    }
    if (findServerRow(texts(ui->lstservers), server) >= 0)
        return;
    addRow(server, port, password);
    ++servercount;
}

void SavedServersPanel::removeserver_Click(const QString &server, const QString &port)
{
    if (server.isEmpty() || port.isEmpty())
        return;
    const qsizetype row = findServerRow(texts(ui->lstservers), savedServerRow(server, port));
    if (row >= 0)
        removeRow(static_cast<int>(row));
}

void SavedServersPanel::removeRow(int row)
{
    // The password of the row stays and the count is not lowered. From this row on each later server therefore has the
    // password of the row before it. Removing does not undo saving, and that is meant.
    const QSignalBlocker blocker(ui->lstservers); // The row that gets selected instead was not chosen by the person.
    QListWidgetItem *item = ui->lstservers->item(row);
    if (item->isSelected())
        ui->lstservers->setCurrentRow(-1);
    delete item;
}

// The row that the menu is about is shown selected, but only "Use this server" fills the fields.
void SavedServersPanel::showMenu(const QModelIndex &row, QPoint place)
{
    if (row.isValid()) {
        const QSignalBlocker blocker(ui->lstservers);
        ui->lstservers->setCurrentIndex(row);
    }
    // The list may change while the menu is open.
    const auto about = [this, kept = QPersistentModelIndex(row)](void (SavedServersPanel::*act)(int)) {
        return [this, kept, act] {
            if (kept.isValid())
                (this->*act)(kept.row());
        };
    };
    QMenu *menu = newContextMenu(ui->lstservers);
    addMenuItem(menu, u"actuse"_s, u"&Use this server"_s, row.isValid(), about(&SavedServersPanel::useRow));
    addMenuItem(menu, u"actcopy"_s, u"&Copy"_s, row.isValid(), about(&SavedServersPanel::copyRow));
    addMenuItem(menu, u"actremove"_s, u"&Remove"_s, row.isValid(), about(&SavedServersPanel::removeRow));
    menu->popup(place);
}

void SavedServersPanel::useRow(int row)
{
    {
        const QSignalBlocker blocker(ui->lstservers);
        ui->lstservers->setCurrentRow(row);
    }
    lstservers_Click();
}

void SavedServersPanel::copyRow(int row)
{
    copyText(ui->lstservers->item(row)->text());
}

void SavedServersPanel::addRow(const QString &server, const QString &port, const QString &password)
{
    ui->lstservers->addItem(savedServerRow(server, port));
    ui->lstrcon->addItem(password);
}
