// SPDX-License-Identifier: MIT
#include "ledger_filter.h"

#include "ledger.h"

LedgerFilter::LedgerFilter(Ledger &ledger_, QObject *parent) : QSortFilterProxyModel(parent), ledger(ledger_)
{
    setSourceModel(&ledger);
}

void LedgerFilter::setText(const QString &text_)
{
    text = text_;
    invalidateFilter();
}

void LedgerFilter::setOnlyBad(bool on)
{
    onlyBad = on;
    invalidateFilter();
}

bool LedgerFilter::filterAcceptsRow(int row, const QModelIndex &) const
{
    const LedgerEntry &entry = ledger.entry(row);
    if (onlyBad && isGood(entry.verdict))
        return false;
    return entry.command.contains(text, Qt::CaseInsensitive) ||
           verdictWord(entry.verdict).contains(text, Qt::CaseInsensitive);
}
