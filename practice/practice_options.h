// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// How a practice server starts. Everything here can be changed later at the server.
struct PracticeOptions {
    QString password = QStringLiteral("practice");
    int players = 12;        ///< on the server at the start, 0 to 64
    quint32 seed = 1;        ///< equal seeds give equal players and equal losses
    int datagramSize = 1000; ///< bytes of text in one reply datagram, 1 to 8,000
    int lossPercent = 0;     ///< of the requests, and again of the replies, 0 to 100
    int latencyMs = 0;       ///< before a reply leaves; with 0 it leaves at once
    int mapLoadMs = 2000;    ///< of silence while a map loads
    bool reorder = false;    ///< every two neighbouring datagrams of a reply change places
    bool silent = false;     ///< requests are counted and never answered
    bool quirks = false;     ///< players with nasty names and odd table rows
    QString mod;             ///< empty for the plain game, "hob" for Heat of Battle
};
