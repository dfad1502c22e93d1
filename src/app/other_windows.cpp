// SPDX-License-Identifier: MIT
#include "other_windows.h"

#include "about_window.h"
#include "base/window_place.h"
#include "book/book_window.h"
#include "ledger/check_window.h"
#include "ledger/ledger_window.h"
#include "mods/hob_window.h"
#include "preferences_window.h"
#include "rcon/read_label.h"
#include "rcon/services.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>
#include <utility>

OtherWindows::OtherWindows(Services &services_, const Connecting &connecting_, QWidget &owner_)
    : services(services_), connecting(connecting_), owner(owner_)
{
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &OtherWindows::watchActivation);
}

OtherWindows::~OtherWindows() = default;

void OtherWindows::showhob()
{
    // When it is opened again it begins anew, unless the window that was closed is still at work.
    if (!hobWindow || (!hobWindow->isVisible() && !hobWindow->isBusy())) {
        hobWindow = std::make_unique<HobWindow>(services);
        forgetWithServer(connecting, *hobWindow);
    }
    bringUp(*hobWindow, owner);
}

void OtherWindows::mpref_Click()
{
    if (!preferencesWindow || !preferencesWindow->isVisible()) {
        preferencesWindow = std::make_unique<PreferencesWindow>(services);
        connect(preferencesWindow.get(), &PreferencesWindow::changed, this, &OtherWindows::preferenceschanged);
    }
    bringUp(*preferencesWindow, owner);
}

void OtherWindows::helpabout_Click()
{
    if (!aboutWindow)
        aboutWindow = std::make_unique<AboutWindow>(services.prompts);
    bringUp(*aboutWindow, owner);
}

void OtherWindows::showledger(Ledger &ledger, int number)
{
    if (!ledgerWindow)
        ledgerWindow = std::make_unique<LedgerWindow>(ledger, services.prompts, services.clock);
    bringUp(*ledgerWindow, owner);
    ledgerWindow->showEntry(number);
}

BookWindow &OtherWindows::showbook(KeptBook &kept, BookWatch &watch)
{
    if (!bookWindow)
        bookWindow = std::make_unique<BookWindow>(kept, watch, services);
    bringUp(*bookWindow, owner);
    return *bookWindow;
}

void OtherWindows::mcheck_Click()
{
    if (!checkWindow) {
        checkWindow = std::make_unique<CheckWindow>(services);
        connect(checkWindow.get(), &CheckWindow::datagramsent, this, &OtherWindows::checksent);
        connect(checkWindow.get(), &CheckWindow::datagramread, this, &OtherWindows::checkread);
    }
    bringUp(*checkWindow, owner);
}

void OtherWindows::hide()
{
    for (QWidget *window : windows())
        window->hide();
    if (ledgerWindow)
        ledgerWindow->hide();
    if (bookWindow)
        bookWindow->hide();
}

// Boxes and the progress window are not left for the main window: they go away by themselves. Nor are ledger
// and book, which lie beside the work: the cursor is to stay where the person works.
QWidgetList OtherWindows::windows() const
{
    QWidgetList all{hobWindow.get(), preferencesWindow.get(), aboutWindow.get(), checkWindow.get()};
    all.removeAll(nullptr);
    return all;
}

void OtherWindows::watchActivation(const QWindow *active)
{
    if (!active)
        return;
    if (active == owner.windowHandle() && std::exchange(wasActive, false))
        emit left();
    const auto isActive = [active](const QWidget *window) { return window->windowHandle() == active; };
    if (std::ranges::any_of(windows(), isActive))
        wasActive = true;
}
