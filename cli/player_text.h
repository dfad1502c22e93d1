// SPDX-License-Identifier: MIT
#pragma once

#include "players/status_table.h"

#include <QDateTime>
#include <QList>
#include <QString>

/// Players as text. Each field is as the server gave it, with asterisks for the RCON password; in the table names have
/// no colours, and no characters that would move a terminal's cursor.
[[nodiscard]] QString playersTable(const QList<StatusRow> &players, const QString &password);
/// An array in one line. What is a whole number is one, all else is text.
[[nodiscard]] QString playersJson(const QList<StatusRow> &players, const QString &password);
/// As RFC 4180 has it, with a header line.
[[nodiscard]] QString playersCsv(const QList<StatusRow> &players, const QString &password);
/// An object in one line: when it was, and who was there.
[[nodiscard]] QString sampleJson(const QDateTime &time, const QList<StatusRow> &players, const QString &password);
