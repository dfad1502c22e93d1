// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QTimer>
#include <QWidget>

class QLabel;
class QLineEdit;
class RconPane;

/// The bar below the RCON pane that finds a text in it, without regard to case.
class FindBar final : public QWidget {
    Q_OBJECT

public:
    explicit FindBar(RconPane &pane_, QWidget *parent = nullptr);

    /// Shows the bar, ready for typing.
    void open();
    /// Hides it; the keyboard goes to the pane.
    void leave();

private:
    void search();
    void count();
    void select(qsizetype match);
    void findNext();
    void findPrevious();

    RconPane &pane;
    QLineEdit *txtfind;
    QLabel *lblfound;
    QList<int> matches; ///< where they begin in the pane's document
    QTimer recount;     ///< once for many additions to the pane
};
