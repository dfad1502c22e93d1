// SPDX-License-Identifier: MIT
#include "main_window.h"
#include "ui_main_window.h"

#include "about_window.h"
#include "base/prompts.h"
#include "messages/message_panel.h"
#include "messages/messages_page.h"
#include "mods/hob_window.h"
#include "mods/mods_page.h"
#include "output/message_list.h"
#include "output/output.h"
#include "players/players_page.h"
#include "preferences_window.h"
#include "rcon/connect_panel.h"
#include "rcon/connecting.h"
#include "rcon/console_panel.h"
#include "rcon/server_fields.h"
#include "rcon/services.h"
#include "rcon/session.h"
#include "serverconfig/maps_page.h"
#include "serverconfig/misc_page.h"
#include "serverconfig/modes_page.h"
#include "serverconfig/other_page.h"
#include "serverconfig/quick_commands.h"
#include "serverconfig/server_page.h"
#include "settings/ini_file.h"
#include "settings/saved_servers.h"
#include "settings/saved_servers_panel.h"
#include "weapons/weapons_page.h"
#include "web_links.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QListWidget>
#include <QTabBar>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

void bringUp(QWidget &window)
{
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace

MainWindow::MainWindow(Services &services_, Connecting &connecting_, QWidget *parent)
    : QMainWindow(parent),
      services(services_),
      connecting(connecting_),
      ui(std::make_unique<Ui::MainWindow>()),
      connectPanel(new ConnectPanel(services.fields, connecting)),
      consolePanel(new ConsolePanel(services)),
      messagePanel(new MessagePanel(services)),
      savedServers(new SavedServersPanel(services.prompts)),
      serverPage(new ServerPage(services))
{
    ui->setupUi(this);
    placePanels();
    addTabs();
    wirePanels();
    wireMenus();
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &MainWindow::watchActivation);
}

MainWindow::~MainWindow() = default;

void MainWindow::placePanels()
{
    ui->rows->insertWidget(0, connectPanel);
    ui->upperSplitter->addWidget(savedServers);
    ui->upperSplitter->setStretchFactor(0, 1);
    ui->responseRows->addWidget(consolePanel);
    ui->lowerSplitter->addWidget(messagePanel);
    services.output.attach(*ui->txtoutput, messagePanel->list());
    ui->upperSplitter->setSizes({900, 220});
    ui->lowerSplitter->setSizes({760, 360});
    ui->splitter->setSizes({375, 305}); // With the usual font the tallest page fits in.
}

void MainWindow::addTabs()
{
    ui->SSTab->addTab(serverPage, u"Server"_s);
    for (const QString &caption : {u"COD2 Modes"_s, u"Maps"_s, u"Weapons"_s, u"Players"_s, u"Mods"_s, u"Messages"_s,
                                   u"Misc"_s, u"COD2 other"_s}) {
        auto *place = new QWidget;
        (new QVBoxLayout(place))->setContentsMargins({});
        ui->SSTab->addTab(place, caption);
    }
}

void MainWindow::buildPages()
{
    playersPage = new PlayersPage(services);
    auto *modsPage = new ModsPage;
    connect(modsPage, &ModsPage::hobwanted, this, &MainWindow::showhob);
    messagesPage = new MessagesPage(services, serverPage->placeholderVariables());
    miscPage = new MiscPage(services);
    otherPage = new OtherPage(services);

    int tab = ui->SSTab->indexOf(serverPage);
    for (QWidget *page :
         std::initializer_list<QWidget *>{new ModesPage(services), new MapsPage(services), new WeaponsPage(services),
                                          playersPage, modsPage, messagesPage, miscPage, otherPage})
        ui->SSTab->widget(++tab)->layout()->addWidget(page);
}

void MainWindow::wirePanels()
{
    connect(&connecting, &Connecting::beginning, this, &MainWindow::load);
    connect(savedServers, &SavedServersPanel::serverchosen, &services.fields, &ServerFields::set);
    connect(connectPanel, &ConnectPanel::passwordentered, consolePanel, &ConsolePanel::cmdsend_Click);
    connect(connectPanel, &ConnectPanel::modsitewanted, this, [] { openurl(WebAddress::hobMod); });
}

void MainWindow::wirePages()
{
    connect(messagesPage, &MessagesPage::entered, consolePanel, &ConsolePanel::cmdsend_Click);
    connect(&connecting, &Connecting::connected, miscPage, &MiscPage::awaitServer);
    connect(&connecting, &Connecting::rotationread, miscPage, &MiscPage::showRotation);
    connect(&connecting, &Connecting::cfgfilesread, miscPage, &MiscPage::showCfgFiles);
    connect(&connecting, &Connecting::surveyed, playersPage, &PlayersPage::startRefresh);

    connect(&connecting, &Connecting::disconnected, messagesPage, &MessagesPage::endCycle);
    connect(&connecting, &Connecting::disconnected, playersPage, &PlayersPage::endRefresh);
    connect(&connecting, &Connecting::disconnected, miscPage, &MiscPage::forgetServer);
}

void MainWindow::wireMenus()
{
    connect(ui->Saveserver, &QAction::triggered, this, [this] {
        savedServers->Saveserver_Click(services.fields.server(), services.fields.port(), services.fields.password());
    });
    connect(ui->removeserver, &QAction::triggered, this,
            [this] { savedServers->removeserver_Click(services.fields.server(), services.fields.port()); });

    connect(ui->savemessages, &QAction::triggered, this, [this] { services.output.savemessages_Click(false); });
    connect(ui->clearmessage, &QAction::triggered, this, [this] { services.output.clearmessage_Click(); });
    connect(ui->savercon, &QAction::triggered, this, [this] { services.output.savercon_Click(false); });
    connect(ui->clearrcon, &QAction::triggered, this, [this] { services.output.clearrcon_Click(); });

    wireCommonTasks();

    connect(ui->Exit, &QAction::triggered, this, &MainWindow::cmdexit_Click);
    connect(ui->cmdexit, &QPushButton::clicked, this, &MainWindow::cmdexit_Click);
    connect(ui->mpref, &QAction::triggered, this, &MainWindow::mpref_Click);
    connect(ui->helpabout, &QAction::triggered, this, &MainWindow::helpabout_Click);
    connect(ui->mhelpsite, &QAction::triggered, this, [] { openurl(WebAddress::site); });
    connect(ui->mhelpforum, &QAction::triggered, this, [] { openurl(WebAddress::forum); });
}

void MainWindow::wireCommonTasks()
{
    connect(ui->commmap_restart, &QAction::triggered, this, [this] { restartMap(services); });
    connect(ui->commmap_rotate, &QAction::triggered, this, [this] { rotateMap(services); });
    const std::array friendlyFire{ui->commFFOFF, ui->COMMFFON, ui->commFFREFL, ui->commFFSHARE};
    for (int mode = 0; mode < static_cast<int>(friendlyFire.size()); ++mode)
        connect(friendlyFire.at(static_cast<std::size_t>(mode)), &QAction::triggered, this,
                [this, mode] { setFriendlyFire(services, mode); });
    // The last three do not switch to what their captions say, because they count on from 3. No game type is number 5.
    for (const auto &[item, gameType] : std::initializer_list<std::pair<QAction *, int>>{
             {ui->gmsd, 0}, {ui->gmtdm, 2}, {ui->gmctf, 3}, {ui->gmdm, 4}, {ui->gmhq, 5}})
        connect(item, &QAction::triggered, this, [this, index = gameType] { switchGameType(services, index); });
}

void MainWindow::setclanbase()
{
    otherPage->setclanbase();
}

void MainWindow::showhob()
{
    // When it is opened again it begins anew, unless the window that was closed is still at work.
    if (!hobWindow || (!hobWindow->isVisible() && !hobWindow->isBusy()))
        hobWindow = std::make_unique<HobWindow>(services);
    bringUp(*hobWindow);
}

void MainWindow::mpref_Click()
{
    if (!preferencesWindow || !preferencesWindow->isVisible()) {
        preferencesWindow = std::make_unique<PreferencesWindow>(services);
        connect(preferencesWindow.get(), &PreferencesWindow::changed, this, [this] {
            if (isLoaded())
                playersPage->takePreferences();
        });
    }
    bringUp(*preferencesWindow);
}

void MainWindow::helpabout_Click()
{
    if (!aboutWindow)
        aboutWindow = std::make_unique<AboutWindow>(services.prompts);
    bringUp(*aboutWindow);
}

// These are the windows that a person leaves for the main window. Boxes and the progress window are not left: they go
// away by themselves.
QWidgetList MainWindow::otherWindows() const
{
    QWidgetList windows{hobWindow.get(), preferencesWindow.get(), aboutWindow.get()};
    windows.removeAll(nullptr);
    return windows;
}

// The Tab key goes through the window as one reads it. The widgets were made in another order.
void MainWindow::orderTabs()
{
    QWidgetList stops;
    for (QWidget *next = nextInFocusChain(); next != this; next = next->nextInFocusChain()) {
        // The combo boxes and the tab widget pass the focus on to their inner parts.
        const bool isPart =
            next == ui->SSTab->tabBar() || (next->focusProxy() && next->focusProxy()->isAncestorOf(next));
        if ((next->focusPolicy() & Qt::TabFocus) != 0 && !isPart)
            stops.append(next);
    }
    QWidgetList ordered;
    for (const QWidget *area : QList<const QWidget *>{connectPanel, ui->SSTab, savedServers, ui->responses,
                                                      &messagePanel->list(), messagePanel, ui->cmdexit}) {
        for (QWidget *stop : std::as_const(stops)) {
            if ((stop == area || area->isAncestorOf(stop)) && !ordered.contains(stop))
                ordered.append(stop);
        }
    }
    for (qsizetype stop = 1; stop < ordered.size(); ++stop)
        setTabOrder(ordered.at(stop - 1), ordered.at(stop));
}

void MainWindow::cmdexit_Click()
{
    close();
}

void MainWindow::Form_Load()
{
    Session &session = services.session;
    if (session.closing)
        return;
    load();
    if (session.options.autoconnect && !connecting.hasBegun())
        autoConnect();
    if (session.options.automessage && !session.closing)
        messagesPage->autoStart();
}

// The person can be quicker than the start: connecting needs the pages and the preferences.
void MainWindow::load()
{
    if (isLoaded())
        return;
    buildPages();
    wirePages();
    orderTabs();
    const IniText ini = services.ini.contents();
    savedServers->load(readSavedServers(ini));
    messagesPage->load(ini);
    messagePanel->load(ini);
    services.session.options = loadPreferences(ini);
    playersPage->showPreferences();
}

void MainWindow::autoConnect()
{
    const Preferences &options = services.session.options;
    services.fields.set(options.autoconnectserv, options.autoconnectport, options.autoconnectrcon);
    if (options.autoconnectserv.isEmpty() || options.autoconnectport.isEmpty() || options.autoconnectrcon.isEmpty())
        return;
    connecting.connectAtStart();
}

void MainWindow::Form_Activate()
{
    connectPanel->focusServer();
}

void MainWindow::watchActivation(const QWindow *active)
{
    if (!active)
        return;
    const QWindow *own = windowHandle();
    if (active == own && std::exchange(otherWindowWasActive, false))
        Form_Activate();
    const auto isActive = [active](const QWidget *window) { return window->windowHandle() == active; };
    if (std::ranges::any_of(otherWindows(), isActive))
        otherWindowWasActive = true;
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (services.session.closing)
        return;
    event->setAccepted(Form_Unload());
    if (!event->isAccepted())
        return;
    services.prompts.close();
    for (QWidget *window : otherWindows())
        window->hide();
    emit closed();
}

bool MainWindow::Form_Unload()
{
    if (isLoaded() && messagesPage->hasUnsavedSets()) {
        const Answer answer = services.prompts.ask(
            {u"Unsaved Messages Sets"_s, u"Message changes not saved\rClick OK if you wish to go back to save them"_s,
             BoxIcon::Exclamation, BoxButtons::OkCancel});
        if (answer == Answer::Ok)
            return false;
    }
    endRun();
    return true;
}

void MainWindow::endRun()
{
    services.session.closing = true;
    for (QTimer *timer : findChildren<QTimer *>())
        timer->stop();
    connecting.closeLink();
    if (!isLoaded())
        return; // Neither the list that would be saved nor the preferences about logs have been read.

    services.output.showprogress(u"Saving server list to INI"_s, Progress::Replace);
    if (writeServerList()) {
        if (services.session.options.savercon)
            services.output.savercon_Click(true);
        if (services.session.options.savemessages)
            services.output.savemessages_Click(true);
    }
    services.output.showprogress({}, Progress::Replace);
}

bool MainWindow::writeServerList()
{
    const QList<IniEntry> entries = savedServers->entries();
    if (entries.isEmpty())
        return true; // There is nothing to save and nothing to empty, so the file is left alone.
    const std::optional<Fault> fault = services.ini.write(entries);
    if (!fault)
        return true;
    // All keys are written by one replacement of the file, so its failure is told as that of the first key.
    services.prompts.showWriteFailure(u"server list to INI file (Server)"_s, *fault);
    return false;
}
