// SPDX-License-Identifier: MIT
#include "main_window.h"
#include "ui_main_window.h"

#include "base/prompts.h"
#include "book_tools.h"
#include "common_tasks.h"
#include "console_help.h"
#include "messages/message_panel.h"
#include "messages/messages_page.h"
#include "mods/mods_page.h"
#include "other_windows.h"
#include "output/message_list.h"
#include "output/output.h"
#include "output/rcon_pane.h"
#include "page_area.h"
#include "players/player_view.h"
#include "players/players_page.h"
#include "rcon/connect_panel.h"
#include "rcon/connecting.h"
#include "rcon/console_panel.h"
#include "rcon/exchange.h"
#include "rcon/kept_history.h"
#include "rcon/read_label.h"
#include "rcon/server_fields.h"
#include "rcon/services.h"
#include "rcon/session.h"
#include "rcon/shown_command.h"
#include "serverconfig/known_server.h"
#include "serverconfig/maps_page.h"
#include "serverconfig/misc_page.h"
#include "serverconfig/modes_page.h"
#include "serverconfig/other_page.h"
#include "serverconfig/server_page.h"
#include "settings/ini_file.h"
#include "settings/saved_servers.h"
#include "settings/saved_servers_panel.h"
#include "status_bar.h"
#include "tab_order.h"
#include "tools_menu.h"
#include "weapons/weapons_page.h"
#include "web_links.h"
#include "window_keys.h"
#include "window_state.h"

#include <QCloseEvent>
#include <QListWidget>
#include <QSplitter>
#include <QTimer>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int playersTab = 4;

} // namespace

MainWindow::MainWindow(Services &services_, Connecting &connecting_, const Exchange &exchange_,
                       const UDPClient &udpclient, QWidget *parent)
    : QMainWindow(parent),
      services(services_),
      connecting(connecting_),
      exchange(exchange_),
      ui(std::make_unique<Ui::MainWindow>()),
      connectPanel(new ConnectPanel(services.fields, connecting)),
      consolePanel(new ConsolePanel(services)),
      messagePanel(new MessagePanel(services)),
      savedServers(new SavedServersPanel(services.prompts)),
      serverPage(new ServerPage(services)),
      others(std::make_unique<OtherWindows>(services, connecting, *this)),
      state(new WindowState(*this, services.ini, [this] { divide(); }))
{
    ui->setupUi(this);
    placePanels();
    addTabs();
    wirePanels();
    wireMenus();
    tools = new ToolsMenu(services, connecting, exchange, udpclient, *others, *this);
    tools->tell(*ui->statusbar);
    wireStatusBar();
    wireKeys();
}

MainWindow::~MainWindow() = default;

void MainWindow::placePanels()
{
    ui->rows->insertWidget(0, connectPanel);
    ui->responseRows->addWidget(consolePanel);
    ui->rightSplitter->addWidget(savedServers);
    ui->rightSplitter->addWidget(messagePanel);
    ui->statusbar->addPermanentWidget(ui->cmdexit);
    services.output.attach(*ui->txtoutput, messagePanel->list());
    for (QSplitter *splitter : {ui->splitter, ui->lowerSplitter, ui->rightSplitter})
        state->keep(*splitter);
}

void MainWindow::addTabs()
{
    for (const QString &caption : {u"Server"_s, u"COD2 Modes"_s, u"Maps"_s, u"Weapons"_s, u"Players"_s, u"Mods"_s,
                                   u"Messages"_s, u"Misc"_s, u"COD2 other"_s})
        ui->SSTab->addTab(new PageArea, caption);
    pageArea(0).setPage(*serverPage);
    state->keep(*ui->SSTab);
}

PageArea &MainWindow::pageArea(int tab) const
{
    return *static_cast<PageArea *>(ui->SSTab->widget(tab));
}

void MainWindow::buildPages()
{
    playersPage = new PlayersPage(services);
    auto *modsPage = new ModsPage;
    connect(modsPage, &ModsPage::hobwanted, this, &MainWindow::showhob);
    messagesPage = new MessagesPage(services, serverPage->placeholderVariables());
    miscPage = new MiscPage(services);
    auto *mapsPage = new MapsPage(services);
    connect(mapsPage, &MapsPage::mapsread, &others->knownServer(), &KnownServer::takeMaps);
    otherPage = new OtherPage(services);

    int tab = 0;
    for (QWidget *page : std::initializer_list<QWidget *>{new ModesPage(services), mapsPage, new WeaponsPage(services),
                                                          playersPage, modsPage, messagesPage, miscPage, otherPage})
        pageArea(++tab).setPage(*page);
    state->keep({u"columns"_s, [this] { return playersPage->view().columnState(); },
                 [this](const QString &text) { return playersPage->view().setColumnState(text); }});
    state->keep({u"consolehistory"_s, [this] { return consoleHelp->history().text(); },
                 [this](const QString &text) { return consoleHelp->history().restore(text); }});
}

void MainWindow::wirePanels()
{
    connect(&connecting, &Connecting::beginning, this, &MainWindow::load);
    connect(others.get(), &OtherWindows::left, this, &MainWindow::Form_Activate);
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
    connect(serverPage, &ServerPage::variablesread, &others->knownServer(), &KnownServer::takeVariables);
    connect(&connecting, &Connecting::surveyed, playersPage, &PlayersPage::startRefresh);

    connect(messagesPage, &MessagesPage::outlookchanged, ui->statusbar, &StatusBar::showCycle);
    connect(playersPage, &PlayersPage::refreshchanged, ui->statusbar, &StatusBar::showRefresh);
    connect(playersPage, &PlayersPage::checkanswered, ui->statusbar, &StatusBar::showAnswer);
    connect(&connecting, &Connecting::disconnected, ui->statusbar, [this] { ui->statusbar->showAnswer({}); });
    connect(others.get(), &OtherWindows::preferenceschanged, playersPage, &PlayersPage::takePreferences);

    connect(&connecting, &Connecting::disconnected, messagesPage, &MessagesPage::endCycle);
    connect(&connecting, &Connecting::disconnected, playersPage, &PlayersPage::endRefresh);
    connect(&connecting, &Connecting::disconnected, miscPage, &MiscPage::forgetServer);
    forgetWithServer(connecting, *this);
}

void MainWindow::wireStatusBar()
{
    connect(&connecting, &Connecting::statechanged, ui->statusbar,
            qOverload<Connecting::State, const QString &>(&StatusBar::showState));
    connect(&exchange, &Exchange::sending, ui->statusbar, &StatusBar::takeCommand);
    connect(&exchange, &Exchange::ended, ui->statusbar, &StatusBar::takeReply);
    connect(&exchange, &Exchange::waited, ui->statusbar, &StatusBar::hideWait);
    connect(&exchange, &Exchange::waiting, ui->statusbar, [this](const Wait &wait) {
        ui->statusbar->showWait(wait, shownCommand(wait.command, services.fields.password(), {}));
    });

    auto *reset = new QAction(u"Reset window"_s, ui->statusbar);
    reset->setObjectName(u"resetwindow"_s);
    ui->statusbar->addAction(reset);
    ui->statusbar->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(reset, &QAction::triggered, this, [this] {
        if (const std::optional<Fault> fault = state->reset())
            services.prompts.showWriteFailure(u"window layout to INI file"_s, *fault);
    });
}

void MainWindow::wireKeys()
{
    ui->mpref->setShortcut(Qt::CTRL | Qt::Key_Comma);
    ui->mpref->setAutoRepeat(false);
    ui->Exit->setShortcut(Qt::CTRL | Qt::Key_Q);
    keys = new WindowKeys(services,
                          {.tabs = *ui->SSTab,
                           .console = *consolePanel,
                           .pane = *ui->txtoutput,
                           .aroundPane = *ui->responseRows,
                           .filterPlayers = [this] { filterPlayers(); }},
                          *this);
    connect(keys, &WindowKeys::findbarbuilt, this, &MainWindow::orderTabs);
}

void MainWindow::filterPlayers()
{
    if (!isLoaded())
        return;
    ui->SSTab->setCurrentIndex(playersTab);
    playersPage->focusFilter();
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
    services.output.list().setMenuActions({ui->savemessages, ui->clearmessage});
    services.output.pane().setMenuActions({ui->savercon, ui->clearrcon});

    wireCommonTasks(*this, services);

    connect(ui->Exit, &QAction::triggered, this, &MainWindow::cmdexit_Click);
    connect(ui->cmdexit, &QPushButton::clicked, this, &MainWindow::cmdexit_Click);
    connect(ui->mpref, &QAction::triggered, others.get(), &OtherWindows::mpref_Click);
    connect(ui->mrotation, &QAction::triggered, this, [this] {
        load();
        others->showrotation(*miscPage);
    });
    connect(ui->helpabout, &QAction::triggered, others.get(), &OtherWindows::helpabout_Click);
    connect(ui->mhelpsite, &QAction::triggered, this, [] { openurl(WebAddress::site); });
    connect(ui->mhelpforum, &QAction::triggered, this, [] { openurl(WebAddress::forum); });
}

void MainWindow::wireBook()
{
    book = std::make_unique<BookTools>(services, *others, *this);
    book->wire(connecting, exchange, tools->ledger(), *playersPage, *ui->statusbar);
    connect(ui->mbook, &QAction::triggered, book.get(), &BookTools::mbook_Click);
}

void MainWindow::setclanbase()
{
    otherPage->setclanbase();
}

void MainWindow::showhob()
{
    others->showhob();
}

// The Tab key goes through the window as one reads it. The widgets were made in another order.
void MainWindow::orderTabs()
{
    ::orderTabs(*this, {connectPanel, ui->SSTab, ui->txtoutput, keys->findBar(), ui->responses, savedServers,
                        &messagePanel->list(), messagePanel, ui->cmdexit});
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
    wireBook();
    orderTabs();
    ui->statusbar->build();
    consoleHelp = new ConsoleHelp(services, exchange, connecting, *this);
    consoleHelp->tell(*ui->statusbar);
    const IniText ini = services.ini.contents();
    savedServers->load(readSavedServers(ini));
    messagesPage->load(ini);
    messagePanel->load(ini);
    services.session.options = loadPreferences(ini);
    playersPage->showPreferences();
    state->restoreRest();
    book->load(ini);
    tools->load();
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

// The window's place is known before it is shown, so that it does not jump.
void MainWindow::setVisible(bool on)
{
    if (on && !std::exchange(wasShown, true)) {
        state->placeWithinScreen();
        state->restore();
    }
    QMainWindow::setVisible(on);
}

// On a low screen it is the lower half that is lower: a page that fits need not be scrolled.
void MainWindow::divide()
{
    constexpr int tallestPage = 375; // with its tab, in pixels, at the usual font
    constexpr int aroundBoth = 88;   // menus, connection fields, status bar
    constexpr double share = 0.55;
    const int both = height() - aroundBoth;
    const int upper = std::max(tallestPage, static_cast<int>(both * share));
    ui->splitter->setSizes({upper, std::max(both - upper, 1)});
    ui->lowerSplitter->setSizes({760, 360});
    ui->rightSplitter->setSizes({110, 190});
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (services.session.closing)
        return;
    event->setAccepted(Form_Unload());
    if (!event->isAccepted())
        return;
    services.prompts.close();
    others->hide();
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
    if (consoleHelp)
        consoleHelp->end();
    services.session.closing = true;
    for (QTimer *timer : findChildren<QTimer *>())
        timer->stop();
    connecting.closeLink();
    tools->end();
    if (!isLoaded())
        return; // Neither the list that would be saved nor the preferences about logs have been read.

    const Output::Work work(services.output);
    services.output.showprogress(u"Saving server list to INI"_s, Progress::Replace);
    if (writeServerList()) {
        if (services.session.options.savercon)
            services.output.savercon_Click(true);
        if (services.session.options.savemessages)
            services.output.savemessages_Click(true);
    }
    services.output.showprogress({}, Progress::Replace);
    consoleHelp->history().save();
    state->save();
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
