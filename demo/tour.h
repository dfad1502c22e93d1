// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>
#include <QString>

#include <utility>

class MainWindow;
class QAbstractItemModel;
class QWidget;

/// A walk through the main window as a person would take it, with one picture per tab.
class Tour final {
public:
    /// The pictures go into `folder`, which must be there.
    Tour(MainWindow &window_, QString folder_) : window(window_), folder(std::move(folder_)) {}

    /// A picture of the window as it is first seen, before anything is typed or read, with numbers on its parts. False,
    /// with a line on standard error, when that fails.
    [[nodiscard]] bool showFirstWindow();
    /// Takes the walk and prints what there is to see. False, with a line on standard error, at the first step that
    /// fails.
    [[nodiscard]] bool walk();

private:
    [[nodiscard]] bool waitUntilConnected();
    [[nodiscard]] bool askServer();
    [[nodiscard]] bool populateTabs();
    [[nodiscard]] bool visitTabs();
    [[nodiscard]] bool visitBook();
    [[nodiscard]] bool writeIntoBook(QWidget &book);
    [[nodiscard]] static bool choose(QWidget &book, const QString &guid);
    [[nodiscard]] bool banTwo();
    [[nodiscard]] bool visitWindows();
    [[nodiscard]] bool completeLine();
    [[nodiscard]] bool visitLedger();
    [[nodiscard]] bool visitTimetable();
    [[nodiscard]] bool enter(const QString &line, const QAbstractItemModel &ledger);
    static void addUnknownMap();
    [[nodiscard]] static bool waitUntilChecked(const QWidget &shown);
    [[nodiscard]] bool takePicture(QWidget &shown, const QString &name);
    [[nodiscard]] bool save(const QPixmap &picture, const QString &name) const;
    void printWhatIsShown() const;

    MainWindow &window;
    QString folder;
};
