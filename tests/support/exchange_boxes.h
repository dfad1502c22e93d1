// SPDX-License-Identifier: MIT
#pragma once

#include "base/prompts.h"

#include <QtTest>

// The boxes of the exchange, word for word.

inline Box notConnectedBox()
{
    return {QStringLiteral("Not connected"), QStringLiteral("Please connect to a server first!"), BoxIcon::Exclamation,
            BoxButtons::Ok};
}

inline Box noRouteBox()
{
    return {QStringLiteral("No Route"),
            QStringLiteral("No route to server, are you sure your connected to the Internet!"), BoxIcon::Exclamation,
            BoxButtons::Ok};
}

inline Box noResponseBox()
{
    return {QStringLiteral("No response"),
            QStringLiteral("No response from server in 15 seconds\n"
                           "Could be server loading map! or \n"
                           "Fragmented UDP packets which routers do not pass on"
                           "Try again..."),
            BoxIcon::Exclamation, BoxButtons::Ok};
}

inline Box truncatedBox()
{
    return {QStringLiteral("Truncated data"),
            QStringLiteral("Data returned is to large for buffers\r"
                           "Truncated after 8192 bytes\r"
                           "I bet you did dvarlist ;)"),
            BoxIcon::Information, BoxButtons::Ok};
}

/// How a failing comparison names a box.
inline char *toString(const Box &box)
{
    return QTest::toString(QStringLiteral("[%1: %2; icon %3, buttons %4]")
                               .arg(box.title, box.text)
                               .arg(static_cast<int>(box.icon))
                               .arg(static_cast<int>(box.buttons)));
}
