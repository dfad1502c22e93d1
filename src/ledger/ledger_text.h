// SPDX-License-Identifier: MIT
#pragma once

#include "ledger.h"

#include <QStringList>

// How the ledger is put into words.

[[nodiscard]] QStringList ledgerHeaders();
[[nodiscard]] QString ledgerCell(const LedgerEntry &entry, LedgerColumn::Column column);
/// One sentence: what the verdict means and what is to be done.
[[nodiscard]] QString ledgerNote(const LedgerEntry &entry);

/// One line of a comma-separated file, which ends in CR LF: every item in double quotes, those inside doubled.
[[nodiscard]] QString csvRecord(const QStringList &items);
/// The date and the time as the file states them: 2006-03-05 21:07:45.
[[nodiscard]] QStringList ledgerRecord(const LedgerEntry &entry);
