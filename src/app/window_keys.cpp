// SPDX-License-Identifier: MIT
#include "window_keys.h"

#include "manual.h"
#include "output/find_bar.h"
#include "output/output.h"
#include "output/rcon_pane.h"
#include "rcon/console_panel.h"
#include "rcon/services.h"

#include <QBoxLayout>
#include <QPushButton>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>

#include <utility>

WindowKeys::WindowKeys(const Services &services_, Places places_, QWidget &window_)
    : QObject(&window_), services(services_), places(std::move(places_)), window(window_)
{
    onKey(Qt::Key_F1, [this] { showmanual(services.prompts); });
    onKey(Qt::Key_F5, [this] { populateShownPage(); });
    onKey(Qt::CTRL | Qt::Key_L, [this] { places.console.focusLine(); });
    onKey(Qt::CTRL | Qt::Key_F, [this] { find(); });
    onKey(Qt::CTRL | Qt::SHIFT | Qt::Key_F, places.filterPlayers);
    onKey(Qt::Key_Escape, [this] { leaveAside(); });
    for (int tab = 0; tab < places.tabs.count(); ++tab) {
        onKey(QKeyCombination(Qt::CTRL, Qt::Key(Qt::Key_1 + tab)), [this, tab] {
            places.tabs.setCurrentIndex(tab);
            places.tabs.tabBar()->setFocus(Qt::ShortcutFocusReason);
        });
    }
}

const QWidget *WindowKeys::findBar() const
{
    return bar;
}

void WindowKeys::onKey(const QKeySequence &keys, const std::function<void()> &handler)
{
    auto *shortcut = new QShortcut(keys, &window);
    shortcut->setAutoRepeat(false);
    connect(shortcut, &QShortcut::activated, this, handler);
}

void WindowKeys::populateShownPage()
{
    const QWidget *page = places.tabs.currentWidget();
    for (const auto *name : {"cmdservpop", "cmdpopmaps", "cmdpopwep", "cmdplypop", "cmdCodOther_1"}) {
        if (auto *button = page->findChild<QPushButton *>(QLatin1StringView(name)))
            button->click();
    }
}

void WindowKeys::find()
{
    if (!bar) {
        bar = new FindBar(places.pane);
        places.aroundPane.insertWidget(places.aroundPane.indexOf(&places.pane) + 1, bar);
        emit findbarbuilt();
    }
    bar->open();
}

// What has come up beside the work: the find bar, else a note about something that is over.
void WindowKeys::leaveAside()
{
    if (bar && bar->isVisible())
        bar->leave();
    else
        services.output.closeNote();
}
