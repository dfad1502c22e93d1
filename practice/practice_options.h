// SPDX-License-Identifier: MIT
#pragma once

#include <QLatin1StringView>
#include <QString>

/// The game's own port, the usual one of servers and of players alike.
inline constexpr quint16 gamePort = 28960;

/// How a practice server starts. A PracticeServer can change its password, datagram size, loss, latency, map load,
/// reordering and silence later; everything else is settled at the start.
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
    static constexpr QLatin1StringView cod2Engine{"cod2"};

    /// The profile of servers that make it hard for their clients: all that they are known to do but the lateness. The
    /// rest is as above; what a caller sets afterwards counts.
    [[nodiscard]] static PracticeOptions cod2();

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

    QString refusal = QStringLiteral("Bad rconpassword."); ///< what a wrong password is told
    bool loseAtBorder = false;  ///< replies are cut after 1,294 characters, and each full datagram lacks its last one
    bool late = false;          ///< replies leave three to five seconds late
    bool shortLines = false;    ///< 1,023 bytes of a request line are read, "rcon" and the password included
    bool percentDots = false;   ///< "%" in a request line is read as "."
    bool comments = false;      ///< "//" ends a command unless ":" stands before it, and "/* */" goes
    bool plainSay = false;      ///< "say" and "tell" squeeze the blanks inside quotes too
    bool readProtected = false; ///< "rcon_password" is not shown
    bool cmdlist = false;       ///< the console knows that command
    bool guidBans = false;      ///< bans by GUID alone, lifted by name; with `quirks` one player has GUID 0
    bool renames = false;       ///< players take other names while they are there
};
