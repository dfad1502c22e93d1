// SPDX-License-Identifier: MIT
#pragma once

#include "settings/saved_servers.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// Where the commands go.
struct CliServer {
    QString host;
    qint32 port = 0;
    QString savedPassword; ///< empty when it is no saved server, or one without a password

    bool operator==(const CliServer &) const = default;
};

/// The server of "HOST" or "HOST:PORT"; an IPv6 address with a port is in brackets. Throws WrongUsage.
[[nodiscard]] CliServer readServer(const QString &text);

/// The saved server of this number, counted from 1, or of this name in any letter case; the only one when `wanted` is
/// empty. Throws WrongUsage when there is none, or more than one.
[[nodiscard]] CliServer chooseServer(const QList<SavedServer> &saved, const QString &wanted);

/// The password out of a file, one line end at its end apart.
[[nodiscard]] QString passwordIn(const QByteArray &file);

/// The first of the two that is there, without blanks at its ends; empty when neither is.
[[nodiscard]] QString knownPassword(const QString &environment, const QString &saved);

/// The first of them that is there, without blanks at its ends. Throws WrongUsage when none is, when a file that was
/// named holds nothing else, and when a password cannot be sent.
[[nodiscard]] QString choosePassword(const std::optional<QByteArray> &file, const QString &environment,
                                     const QString &saved);
