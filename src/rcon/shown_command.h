// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/// A console command as it may be shown: of a variable whose name ends in "password", in any letter case and with or
/// without `set`, `seta` or `sets` before it, the value is replaced by `instead`; so is `password` wherever else it
/// occurs. Several commands on one line have semicolons between them.
[[nodiscard]] QString shownCommand(const QString &comm, const QString &password, const QString &instead);

/// The same with an asterisk for each character of a password, so that all else keeps its place. A server may take the
/// whole line for one command: the value of the first reaches to the end of its line. Quotes stay.
[[nodiscard]] QString starredCommand(const QString &comm, const QString &password);

/// What `comm` sets such variables to, in each way in which a server can read it. Words of less than four letters are
/// left out, unless they are the whole value of "rcon_password": asterisks over them would tell more than they hide.
[[nodiscard]] QStringList passwordsSetBy(const QString &comm);
