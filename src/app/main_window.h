// SPDX-License-Identifier: MIT
#pragma once

#include <QMainWindow>

#include <memory>

class BookTools;
class ConnectPanel;
class Connecting;
class ConsolePanel;
class MessagePanel;
class MessagesPage;
class MiscPage;
class Exchange;
class OtherPage;
class OtherWindows;
class PageArea;
class PlayersPage;
class SavedServersPanel;
class ServerPage;
class ToolsMenu;
class UDPClient;
class WindowKeys;
class WindowState;
struct Services;

namespace Ui {
class MainWindow;
}

/// The main window is the program: it puts the panels and pages together, wires their signals, runs the menus, and
/// its closing ends the run.
class MainWindow final : public QMainWindow {
    Q_OBJECT

public:
    /// `exchange` and `udpclient` are looked on at, for the status bar, the ledger and the recorder.
    MainWindow(Services &services_, Connecting &connecting_, const Exchange &exchange_, const UDPClient &udpclient,
               QWidget *parent = nullptr);
    ~MainWindow() override;

    void setVisible(bool on) override;

public slots:
    /// Builds the pages behind the first, reads the settings file and, if the preferences say so and the person has not
    /// begun to, connects. To be called once, soon after the window is shown. Yields to the event loop meanwhile.
    void Form_Load();
    /// Puts the server on the rules of the Clan Base league, for other windows. Only after `Form_Load`.
    void setclanbase();
    /// Opens the window with the server variables of the Heat of Battle mod.
    void showhob();

signals:
    /// The window has been closed; the program can end.
    void closed();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void load();
    void placePanels();
    void divide();
    void addTabs();
    void buildPages();
    void wirePanels();
    void wirePages();
    void wireStatusBar();
    void wireKeys();
    void wireMenus();
    void wireBook();
    [[nodiscard]] PageArea &pageArea(int tab) const;
    void filterPlayers();
    void orderTabs();
    void cmdexit_Click();
    void autoConnect();
    void Form_Activate();
    [[nodiscard]] bool isLoaded() const { return messagesPage != nullptr; }
    [[nodiscard]] bool Form_Unload();
    void endRun();
    [[nodiscard]] bool writeServerList();

    Services &services;
    Connecting &connecting;
    const Exchange &exchange;
    std::unique_ptr<Ui::MainWindow> ui;
    ConnectPanel *connectPanel;
    ConsolePanel *consolePanel;
    MessagePanel *messagePanel;
    SavedServersPanel *savedServers;
    ServerPage *serverPage;
    // These are built when the window has been painted, because they would hold up the painting.
    PlayersPage *playersPage = nullptr;
    MessagesPage *messagesPage = nullptr;
    MiscPage *miscPage = nullptr;
    OtherPage *otherPage = nullptr;
    std::unique_ptr<BookTools> book; ///< likewise; the windows are gone before it
    std::unique_ptr<OtherWindows> others;
    WindowState *state;
    ToolsMenu *tools = nullptr;
    WindowKeys *keys = nullptr;
    bool wasShown = false;
};
