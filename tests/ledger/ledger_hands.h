// SPDX-License-Identifier: MIT
#pragma once

#include "connected_program.h"
#include "window_hands.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTableView>
#include <QtTest>

/// The ledger's window and the console line, as a person uses them.
struct LedgerHands : WindowHands {
    explicit LedgerHands(const Beginning &beginning = {}) : on(beginning) { open(); }

    void open() { WindowHands::open(on.program, QStringLiteral("mledger"), QStringLiteral("frmledger")); }
    [[nodiscard]] QTableView *table() const { return find<QTableView>(QStringLiteral("tblledger")); }
    [[nodiscard]] QStringList cells(int row) const
    {
        const QAbstractItemModel *model = table()->model();
        QStringList texts;
        for (int column = 0; column < model->columnCount(); ++column)
            texts.append(model->index(row, column).data().toString());
        return texts;
    }
    [[nodiscard]] QStringList column(int number) const
    {
        QStringList texts;
        for (int row = 0; row < table()->model()->rowCount(); ++row)
            texts.append(cells(row).at(number));
        return texts;
    }
    [[nodiscard]] QStringList commands() const { return column(1); }
    [[nodiscard]] QStringList verdicts() const { return column(6); }
    /// Of the newest command.
    [[nodiscard]] QString verdict() const { return verdicts().isEmpty() ? QString() : verdicts().constLast(); }
    void choose(int row) const { table()->selectRow(row); }
    void chooseNewest() const { choose(table()->model()->rowCount() - 1); }
    [[nodiscard]] QString note() const { return find<QLabel>(QStringLiteral("lblledgernote"))->text(); }
    [[nodiscard]] QString reply() const
    {
        return find<QPlainTextEdit>(QStringLiteral("txtledgerreply"))->toPlainText();
    }

    /// A console line, which is not waited for.
    void enter(const QString &line) const
    {
        on.program.setText(QStringLiteral("comdirect"), line);
        on.program.click(QStringLiteral("cmdsend"));
    }
    void pass(int milliseconds) { on.program.clock.set(on.program.clock.now().addMSecs(milliseconds)); }
    /// The ledger's timer has run out.
    void judgeSilence() const
    {
        QMetaObject::invokeMethod(on.program.find<QTimer>(QStringLiteral("tmrledger")), "timeout");
    }
    /// What a label of the status bar says; empty when it is hidden.
    [[nodiscard]] QString status(const QString &label) const
    {
        const auto *found = on.program.find<QLabel>(label);
        return found->isVisible() ? found->text() : QString();
    }

    ConnectedProgram on;
};
