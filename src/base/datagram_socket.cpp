// SPDX-License-Identifier: MIT
#include "datagram_socket.h"

#ifdef Q_OS_WIN

#include <winsock2.h>

void ignoreClosedPorts(qintptr socket)
{
    constexpr DWORD connectionReset = _WSAIOW(IOC_VENDOR, 12); // This is SIO_UDP_CONNRESET, which not every header has.
    BOOL isTold = FALSE;
    DWORD returned = 0;
    WSAIoctl(static_cast<SOCKET>(socket), connectionReset, &isTold, sizeof isTold, nullptr, 0, &returned, nullptr,
             nullptr);
}

#else

void ignoreClosedPorts(qintptr) {}

#endif
