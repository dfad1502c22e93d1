// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QWidgetList>

#include <memory>

class AboutWindow;
class BookWatch;
class BookWindow;
class CheckWindow;
class Connecting;
class HobWindow;
class KeptBook;
class Ledger;
class LedgerWindow;
class PreferencesWindow;
class QWindow;
struct Services;

/// The windows that the menus and the pages of the main window open. They belong to it and stand in front of it, but
/// are no children of it, so that their controls are not taken for its own.
class OtherWindows final : public QObject {
    Q_OBJECT

public:
    OtherWindows(Services &services_, const Connecting &connecting_, QWidget &owner_);
    ~OtherWindows() override;

    void showhob();
    void mpref_Click();
    void helpabout_Click();
    /// At the entry of that number, if it is kept.
    void showledger(Ledger &ledger, int number = -1);
    BookWindow &showbook(KeptBook &kept, BookWatch &watch);
    void mcheck_Click();
    void hide();

signals:
    /// The person has left one of them for the main window, or the main window has come up for the first time.
    void left();
    void preferenceschanged();
    /// What goes over the link of the connection check.
    void checksent(const QByteArray &datagram, const QString &password);
    void checkread(const QByteArray &datagram);

private:
    [[nodiscard]] QWidgetList windows() const;
    void watchActivation(const QWindow *active);

    Services &services;
    const Connecting &connecting;
    QWidget &owner;
    std::unique_ptr<HobWindow> hobWindow;
    std::unique_ptr<PreferencesWindow> preferencesWindow;
    std::unique_ptr<AboutWindow> aboutWindow;
    std::unique_ptr<LedgerWindow> ledgerWindow;
    std::unique_ptr<BookWindow> bookWindow;
    std::unique_ptr<CheckWindow> checkWindow;
    bool wasActive = true; ///< one of them, or none has been yet
};
