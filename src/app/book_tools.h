// SPDX-License-Identifier: MIT
#pragma once

#include "book/book_watch.h"
#include "book/kept_book.h"

#include <QObject>

class Connecting;
class Exchange;
class IniText;
class Ledger;
class OtherWindows;
class PlayersPage;
class StatusBar;
struct LedgerEntry;
struct Services;
struct StatusRow;
struct WantedPlayer;

/// What the book notes of a command. What came late was done or refused all the same.
[[nodiscard]] CommandVerdict bookVerdict(const LedgerEntry &entry);

/// A row of the list as the book takes it: without a ping that is none, and with doubt where numbers are none.
[[nodiscard]] ListedPlayer listedPlayer(const StatusRow &row);

/// The player book in the main window: it hears of lists, actions and verdicts, and tells the list of players and the
/// status bar what it knows of them.
class BookTools final : public QObject {
    Q_OBJECT

public:
    BookTools(Services &services_, OtherWindows &others_, QWidget &window_);

    void wire(const Connecting &connecting, const Exchange &exchange, const Ledger &ledger, PlayersPage &page,
              StatusBar &statusBar);
    /// Opens the book when the settings say that one is kept.
    void load(const IniText &ini) { kept.load(ini); }
    void mbook_Click();

private:
    void wirePage(PlayersPage &page);
    void wireStatusBar(StatusBar &statusBar);
    void lookUp(const WantedPlayer &wanted);

    Services &services;
    OtherWindows &others;
    QWidget &window;
    KeptBook kept;
    BookWatch watch;
    QString flagged; ///< who of the flagged players is there
};
