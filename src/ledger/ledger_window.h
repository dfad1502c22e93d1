// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>
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
    /// As the form has it: a table asks for no more than a few cells.
    [[nodiscard]] QSize sizeHint() const override { return formSize; }

private:
    void setUpTable();
    void showDetails();
    void refreshDetails();
    void showReply(const QString &text);
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
    QSize formSize;
    QTimer tmrdetails; ///< holds back what comes in quick succession
    int shownNumber = 0;
    QString shownReply;
    bool isReplyOld = false; ///< more has come than is shown
    bool followsNewest = true;
};
