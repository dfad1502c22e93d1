// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/// What every datagram to and from a game server begins with that is no part of a game: four bytes of code 255.
inline const QByteArray datagramHeader(4, '\xFF');
