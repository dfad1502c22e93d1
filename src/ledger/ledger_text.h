// SPDX-License-Identifier: MIT
#pragma once

#include "base/csv_record.h"
#include "ledger.h"

#include <QStringList>

// How the ledger is put into words.

[[nodiscard]] QStringList ledgerHeaders();
[[nodiscard]] QString ledgerCell(const LedgerEntry &entry, LedgerColumn::Column column);
/// One sentence: what the verdict means and what is to be done.
[[nodiscard]] QString ledgerNote(const LedgerEntry &entry);

/// The date and the time as the file states them: 2006-03-05 21:07:45.
[[nodiscard]] QStringList ledgerRecord(const LedgerEntry &entry);
