// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <functional>

class ConsolePanel;
class FindBar;
class Output;
class QBoxLayout;
class QKeySequence;
class QTabWidget;
class RconPane;
struct Services;

/// The keys of the main window that belong to no menu item: the tabs by their numbers, the console line, finding,
/// populating what is shown.
class WindowKeys final : public QObject {
    Q_OBJECT

public:
    struct Places {
        QTabWidget &tabs;
        ConsolePanel &console;
        RconPane &pane;
        QBoxLayout &aroundPane; ///< where the find bar comes in below the pane
        std::function<void()> filterPlayers;
    };

    WindowKeys(const Services &services_, Places places_, QWidget &window_);

    /// Null until it has been asked for.
    [[nodiscard]] const QWidget *findBar() const;

signals:
    void findbarbuilt();

private:
    void onKey(const QKeySequence &keys, const std::function<void()> &handler);
    void populateShownPage();
    void find();
    void leaveAside();

    const Services &services;
    Places places;
    QWidget &window;
    FindBar *bar = nullptr;
};
