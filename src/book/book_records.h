// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

/// What goes into the player book and what comes out of it. Times are in seconds since 1970, UTC. Names are as the
/// server tells them, with their colour codes; addresses are without their port.

inline constexpr qint64 secondsOfDay = 86'400;

/// One undamaged row of the status table.
struct SeenPlayer {
    QString guid; ///< decimal digits; "0" is that of many
    QString name;
    QString address; ///< the book leaves out the port
    int ping = -1;   ///< less than 0 when the server tells none, as of one who is connecting
    int score = 0;
};

/// One populate.
struct BookFeed {
    QString server; ///< address and port, as they were connected to
    qint64 time = 0;
    QList<SeenPlayer> players;
    int count = 0;    ///< of all rows, damaged ones too
    QString map;      ///< empty when it is not known
    QString gameType; ///< the same
};

/// What the book knows of somebody in a populate, for the mark in the grid.
struct KnownPlayer {
    qint64 player = 0; ///< his number in the book
    QString guid;      ///< as in the feed
    QString name;      ///< the same
    bool hasNote = false;
    bool isFlagged = false;
    bool hasCome = false; ///< a visit of his begins
};

/// A row of the list of players.
struct BookPlayer {
    qint64 player = 0;
    QString name; ///< the one he was seen under last
    QString guid;
    qint64 lastSeen = 0;
    qint64 firstSeen = 0;
    int visits = 0;
    int names = 0;
    bool isFlagged = false;
};

/// A name or an address of a player.
struct BookAlias {
    QString text;
    qint64 firstSeen = 0;
    qint64 lastSeen = 0;
    int times = 0; ///< visits
};

struct BookNote {
    qint64 note = 0;
    qint64 time = 0; ///< when it was written or last changed
    QString text;
};

/// A row of the ban book.
struct BookBan {
    enum State { InForce, Temporary, Refused, Lifted, Imported };

    qint64 action = 0;
    qint64 time = 0;
    QString server; ///< empty when imported
    QString name;
    QString guid;
    QString reason;
    QString verdict; ///< the ledger's word on it: "silent" is one that nobody answered
    State state = InForce;
};

/// A kick, ban or temporary ban.
struct BookAction {
    enum Kind { Kick, Ban, TempBan };

    qint64 action = 0;
    qint64 time = 0;
    Kind kind = Kick;
    QString server;
    QString num;  ///< slot number
    QString guid; ///< empty when only slot and name are known, as of a damaged row
    QString name;
    QString address;                         ///< without the port
    bool isMaybe = false;                    ///< one of two who may have been hit
    bool isAutomatic = false;                ///< for its ping of 999
    bool isImported = false;                 ///< from a server's ban file
    BookBan::State state = BookBan::InForce; ///< of a ban
    QString verdict;                         ///< the ledger's word, empty until there is one
    QString reason;
};

/// A player in one of the lists.
struct BookSighting {
    qint64 time = 0;
    QString server;
    int ping = -1; ///< less than 0 when it is not known
    int score = 0;
};

/// Everything about one player.
struct BookPage {
    BookPlayer player;
    QString nobodyName;            ///< by which one with GUID 0 is kept, else empty
    QString nobodyAddress;         ///< the same
    QList<BookAlias> names;        ///< the one seen last first
    QList<BookAlias> addresses;    ///< the same
    QList<BookNote> notes;         ///< the newest first
    QList<BookAction> actions;     ///< the newest first
    QList<BookSighting> sightings; ///< the oldest first
};

/// How many were on a server.
struct BookCount {
    qint64 time = 0;
    int players = 0;
    QString map;
    QString gameType;
};

struct BookSize {
    qint64 players = 0;
    qint64 sightings = 0;
    qint64 bytes = 0; ///< of the file and its log
};
