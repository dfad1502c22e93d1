// SPDX-License-Identifier: MIT
#pragma once

#include "fault.h"

#include <system_error>

/// One of the system's errors as a fault.
[[nodiscard]] Fault systemFault(std::errc error);

/// Forgets the system's last error, so that an older one is not taken for that of the next call.
void clearSystemError();

/// The system's last error as a fault: its number (errno, or GetLastError on Windows) and its text. Ask at once after
/// the call that failed. `fallback` is the text when the system names no error.
[[nodiscard]] Fault lastSystemError(const QString &fallback);

/// The number of the last socket error in the form of the Windows sockets (10065 for no route to the network or the
/// host, 10040 for a datagram that is too large); the system's own number for all others.
[[nodiscard]] int lastSocketError();
