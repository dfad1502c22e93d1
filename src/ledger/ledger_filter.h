// SPDX-License-Identifier: MIT
#pragma once

#include <QSortFilterProxyModel>

class Ledger;

/// The entries whose command or verdict holds a text, all of them or only those that the server has not taken.
class LedgerFilter final : public QSortFilterProxyModel {
    Q_OBJECT

public:
    LedgerFilter(Ledger &ledger_, QObject *parent);

    void setText(const QString &text_);
    void setOnlyBad(bool on);

protected:
    [[nodiscard]] bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    Ledger &ledger;
    QString text;
    bool onlyBad = false;
};
