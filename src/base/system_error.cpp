// SPDX-License-Identifier: MIT
#include "system_error.h"

#ifdef Q_OS_WIN
#include <winsock2.h>
#else
#include <cerrno>
#endif

Fault systemFault(std::errc error)
{
    const std::error_code code = std::make_error_code(error);
    return {code.value(), QString::fromStdString(code.message())};
}

#ifdef Q_OS_WIN
void clearSystemError()
{
    SetLastError(0);
}

Fault lastSystemError(const QString &fallback)
{
    const int number = static_cast<int>(GetLastError());
    return {number, number == 0 ? fallback : qt_error_string(number)}; // in the system's language
}

int lastSocketError()
{
    const int number = WSAGetLastError();
    return number == WSAENETUNREACH ? Fault::NoRoute : number;
}
#else
void clearSystemError()
{
    errno = 0;
}

Fault lastSystemError(const QString &fallback)
{
    const int number = errno;
    return {number, number == 0 ? fallback : QString::fromStdString(std::generic_category().message(number))};
}

int lastSocketError()
{
    switch (errno) {
    case ENETUNREACH:
    case EHOSTUNREACH:
        return Fault::NoRoute;
    case EMSGSIZE:
        return Fault::DatagramTooLarge;
    default:
        return errno;
    }
}
#endif
