// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

/// Which items of a comma-separated file stand in double quotes.
enum class CsvQuotes {
    All,
    WhereNeeded, ///< around commas, quotes and line ends
};

/// One line of a comma-separated file as RFC 4180 has it, which ends in CR LF: quotes inside of quotes are doubled.
[[nodiscard]] QString csvRecord(const QStringList &items, CsvQuotes quotes = CsvQuotes::All);
