// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// Has the system keep to itself that a datagram came to a closed port. On Windows it is otherwise told as a
/// "connection reset" of the next receiving or sending, although there is no connection: nobody has answered yet, that
/// is all.
void ignoreClosedPorts(qintptr socket);
