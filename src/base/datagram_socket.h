// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// Tells the system not to report that a datagram of ours reached a closed port. Windows reports it as "connection
/// reset" when the socket is next read or written, although a datagram socket has no connection. It only means that
/// nobody has answered yet.
void ignoreClosedPorts(qintptr socket);
