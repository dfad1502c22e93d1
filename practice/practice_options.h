// SPDX-License-Identifier: MIT
#pragma once

#include <QLatin1StringView>
#include <QString>

/// The game's own port, the usual one of servers and of players alike.
inline constexpr quint16 gamePort = 28960;

/// How a practice server starts. A PracticeServer can change its password, datagram size, loss, latency, map load,
/// reordering and silence later; players, seed, rate, heading, quirks and mod are settled at the start.
struct PracticeOptions {
    struct Limits {
        int lowest = 0;
        int highest = 0;
    };
    /// How many requests a server puts up with; the rest it drops without a word. They are counted when the server
    /// reads them, before it looks at the password.
    enum class Rate {
        Unlimited,
        HalfSecond, ///< one rcon request in 500 ms for the whole server, and any number of status queries
        Burst,      ///< ten requests of either kind, then one a second, for each address whatever its port
    };
    static constexpr Limits playerLimits{0, 64};
    static constexpr Limits datagramSizeLimits{1, 8000};
    static constexpr Limits percentLimits{0, 100};
    static constexpr Limits delayLimits{0, 60'000};
    static constexpr Limits headLineLimits{2, 3};
    static constexpr QLatin1StringView hobMod{"hob"};

    QString password = QStringLiteral("practice");
    int players = 12;        ///< on the server at the start
    quint32 seed = 1;        ///< equal seeds give equal players and equal losses
    int datagramSize = 1000; ///< bytes of text in one reply datagram
    int lossPercent = 0;     ///< of the requests, and again of the replies
    int latencyMs = 0;       ///< before a reply leaves; with 0 it leaves at once
    int mapLoadMs = 2000;    ///< of silence while a map loads; what comes meanwhile is answered after it
    Rate rate = Rate::Unlimited;
    int headLines = 3;    ///< above the files in the reply of "dir": servers differ
    bool reorder = false; ///< every two neighbouring datagrams of a reply change places
    bool silent = false;  ///< requests are counted and never answered
    bool quirks = false;  ///< players with nasty names and odd table rows
    QString mod;          ///< empty for the plain game, `hobMod` for Heat of Battle
};
