// SPDX-License-Identifier: MIT
#include "maps_page.h"
#include "ui_maps_page.h"

#include "base/context_menu.h"
#include "base/placeholder.h"
#include "base/prompts.h"
#include "map_listing.h"
#include "quick_commands.h"
#include "rcon/conversation.h"
#include "rcon/read_label.h"
#include "rcon/reading.h"
#include "rcon/services.h"
#include "stock_game.h"

#include <QMenu>

using namespace Qt::StringLiterals;

MapsPage::MapsPage(Services &services_, QWidget *parent)
    : QWidget(parent), services(services_), ui(std::make_unique<Ui::MapsPage>())
{
    ui->setupUi(this);
    showPlaceholder(ui->lstmaps);
    connect(ui->cmddefmaps, &QPushButton::clicked, this, &MapsPage::cmddefmaps_Click);
    connect(ui->cmdpopmaps, &QPushButton::clicked, this, &MapsPage::cmdpopmaps_Click);
    connect(ui->cmdmapload, &QPushButton::clicked, this, &MapsPage::cmdmapload_Click);
    connect(ui->lstmaps, &ListBox::menuwanted, this, &MapsPage::showMenu);
    connect(ui->cmdrestartmap, &QPushButton::clicked, this, [this] { restartMap(services); });
    connect(ui->cmdrotatemap, &QPushButton::clicked, this, [this] { rotateMap(services); });
}

MapsPage::~MapsPage() = default;

void MapsPage::cmddefmaps_Click()
{
    ui->lstmaps->clear();
    ui->lstmaps->addItems(stockMaps());
    ui->lblread_cmdpopmaps->forget();
}

void MapsPage::cmdpopmaps_Click()
{
    Reading scope(services, {.door = &reading,
                             .note = u"Asking server for map list..."_s,
                             .needsConnection = false,
                             .label = ui->lblread_cmdpopmaps});
    if (!scope)
        return;
    ui->lstmaps->clear();
    const Conversation talk(services);
    std::optional<QStringList> names;
    for (int attempt = 0; attempt < 3 && !names; ++attempt) {
        if (talk.ask(u"dir maps/mp d3dbsp"_s, false)) {
            names = mapNames(talk.reply());
            if (names)
                scope.setAnswered();
        } else {
            names = QStringList();
        }
    }
    if (names) {
        if (!names->isEmpty())
            ui->lstmaps->clear(); // The stock maps may have been loaded meanwhile.
        ui->lstmaps->addItems(*names);
        if (!names->isEmpty())
            emit mapsread(*names);
    } else {
        scope.leaveTimersHeldOff();
        services.prompts.inform(u"Asked server 3 times for list and none returned"_s, u"No response"_s);
    }
}

void MapsPage::cmdmapload_Click()
{
    const QList<QListWidgetItem *> selected = ui->lstmaps->selectedItems();
    if (selected.isEmpty()) {
        services.prompts.inform(u"Select a map in the table to load first"_s, u"Select Map"_s);
        return;
    }
    Conversation(services).tellWithoutWaiting(u"map "_s + selected.first()->text());
}

void MapsPage::showMenu(const QModelIndex &map, QPoint place)
{
    if (map.isValid())
        ui->lstmaps->setCurrentIndex(map);
    QMenu *menu = newContextMenu(ui->lstmaps);
    addMenuItem(menu, u"actcopy"_s, u"&Copy"_s, map.isValid(), [name = map.data().toString()] { copyText(name); });
    menu->popup(place);
}
