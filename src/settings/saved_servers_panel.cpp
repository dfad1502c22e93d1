// SPDX-License-Identifier: MIT
#include "saved_servers_panel.h"
#include "ui_saved_servers_panel.h"

#include "base/prompts.h"
#include "ini_text.h"
#include "saved_servers.h"

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
    // A click on the selected row fills the fields again. The keyboard changes the selection without a click.
    connect(ui->lstservers, &QListWidget::itemClicked, this, &SavedServersPanel::lstservers_Click);
    connect(ui->lstservers, &QListWidget::itemSelectionChanged, this, &SavedServersPanel::lstservers_Click);
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
    if (row < 0)
        return;

    // The password of the row stays and the count is not lowered. From this row on each later server therefore has the
    // password of the row before it. Removing does not undo saving, and that is meant.
    const QSignalBlocker blocker(ui->lstservers); // The row that gets selected instead was not chosen by the person.
    QListWidgetItem *item = ui->lstservers->item(static_cast<int>(row));
    if (item->isSelected())
        ui->lstservers->setCurrentRow(-1);
    delete item;
}

void SavedServersPanel::addRow(const QString &server, const QString &port, const QString &password)
{
    ui->lstservers->addItem(savedServerRow(server, port));
    ui->lstrcon->addItem(password);
}
