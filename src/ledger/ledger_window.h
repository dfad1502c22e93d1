// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <memory>

class Clock;
class Ledger;
class LedgerFilter;
class Prompts;

namespace Ui {
class LedgerWindow;
}

/// The window `frmledger`: what became of the last commands, what the server said to each, and what that means.
class LedgerWindow final : public QWidget {
    Q_OBJECT

public:
    LedgerWindow(Ledger &ledger_, Prompts &prompts_, const Clock &clock_, QWidget *parent = nullptr);
    ~LedgerWindow() override;

    /// Selects the entry of that number, if it is still kept.
    void showEntry(int number);

private:
    void setUpTable();
    void showDetails();
    void followNewest();
    void cmdledgercopy_Click();
    void cmdledgersave_Click();
    [[nodiscard]] QList<int> shownRows() const;
    [[nodiscard]] QList<int> copiedRows() const;

    Ledger &ledger;
    Prompts &prompts;
    const Clock &clock;
    std::unique_ptr<Ui::LedgerWindow> ui;
    LedgerFilter *filter;
    bool followsNewest = true;
};
