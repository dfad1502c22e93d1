// SPDX-License-Identifier: MIT
#pragma once

#include "base/reentrancy_guard.h"

#include <QWidget>

#include <array>
#include <memory>

class QScrollBar;
class TextBox;
struct Services;

namespace Ui {
class HobWindow;
}

/// The window `frmhob`: the server variables of the game modification "Heat of Battle", version 3.
class HobWindow final : public QWidget {
    Q_OBJECT

public:
    explicit HobWindow(Services &services_, QWidget *parent = nullptr);
    ~HobWindow() override;

    /// True while a handler of the window waits for the server.
    [[nodiscard]] bool isBusy() const { return busy; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// A text box with a scroll bar that holds the same number, 0 to 100.
    struct Percentage {
        TextBox *box = nullptr;
        QScrollBar *bar = nullptr;
        QString weapons; ///< the word for its class in the hint line
        QString confirmation;
    };

    void wirePercentages();
    void wireHints();
    void cmdhobpop_Click();
    bool readVariables();
    void cmdhobset_Click();
    void sendChanges();
    void cmdsethob_Click();
    void check(const Percentage &each);
    void txtwave_LostFocus();

    Services &services;
    std::unique_ptr<Ui::HobWindow> ui;
    std::array<Percentage, 4> percentages; ///< in the order in which they are read and sent
    ReentrancyGuard::Door reading;
    bool busy = false;
    bool keepsHint = false; ///< the hint line shows an error, which the focus does not replace
};
