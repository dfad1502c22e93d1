// SPDX-License-Identifier: MIT
#pragma once

#include "datagram_header.h"
#include "settings/preferences.h"

#include <QByteArray>
#include <QString>

/// The values that live for the whole run and that more than one room uses.
struct Session {
    /// Before every datagram sent, and at the head of every reply. They stay bytes,
    /// because not every code page has such a character, or has it in one byte.
    QByteArray rconheader = datagramHeader;
    /// The reply text since the last send, up to four million characters; grows also after the send has returned.
    QString rconreply;
    bool rconarrived = false;      ///< a datagram came since the last send
    bool rconcollect = false;      ///< replies are gathered silently, with blanks squeezed
    bool rconnowait = false;       ///< the next send does not wait
    bool rconnotconnected = false; ///< the last send was refused: the socket was not open
    qint32 rconnoroute = 0;        ///< -1 when the last send failed for lack of a route, else 0
    bool rconbusy = false;         ///< a settings page is read or written; the two timers skip their tick

    bool connected = false; ///< shown by the connect button: "YES" or "NO" in its `Tag`
    bool closing = false;   ///< the main window is closing: every wait ends, nothing more is sent

    Preferences options;
};
