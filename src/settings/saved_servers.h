// SPDX-License-Identifier: MIT
#pragma once

#include "ini_text.h"

#include <QStringList>

#include <utility>

/// A game server that the user keeps, as it stands in the settings file.
struct SavedServer {
    QString server;
    QString port;
    QString password;

    bool operator==(const SavedServer &) const = default;
};

/// The saved servers, and the number up to which their keys may be in use in the settings file.
struct SavedServers {
    QList<SavedServer> servers;
    qint32 servercount = 0;
};

/// Reads the servers numbered 1, 2, ... up to the first without a name. A name of blanks only also ends the list, but
/// its number is counted.
[[nodiscard]] SavedServers readSavedServers(const IniText &ini);

/// The entries that write the list back into the settings file: each row with the password of the same index, then
/// empty values for the numbers above the list up to `servercount`, so that a shorter list leaves no old servers
/// behind.
[[nodiscard]] QList<IniEntry> savedServerEntries(const QStringList &rows, const QStringList &passwords,
                                                 qint32 servercount);

/// The row of the saved list for a server: the server, a colon, the port.
[[nodiscard]] QString savedServerRow(const QString &server, const QString &port);

/// Server and port of a row: the texts before and after its first colon; a row without a colon is all server.
[[nodiscard]] std::pair<QString, QString> splitServerRow(const QString &row);

/// Index of the first row that holds `part` anywhere in it, without regard to case; -1 when none does.
[[nodiscard]] qsizetype findServerRow(const QStringList &rows, const QString &part);

/// True when a combo box whose list holds `entries` adds `text` to it on losing the focus.
[[nodiscard]] bool comboRemembers(const QStringList &entries, const QString &text);
