// SPDX-License-Identifier: MIT
#pragma once

#include "book/book_store.h"

#include <QStringList>

// Who comes to a server, and what the book is fed with then.

inline const SeenPlayer bob{QStringLiteral("1001"), QStringLiteral("^1Bob"), QStringLiteral("10.0.0.1:28960"), 48, 12};
inline const SeenPlayer alice{QStringLiteral("1002"), QStringLiteral("Alice"), QStringLiteral("10.0.0.9:-1234"), 30, 7};

inline SeenPlayer as(SeenPlayer player, const QString &name, const QString &address)
{
    player.name = name;
    player.address = address;
    return player;
}

inline SeenPlayer guest(const QString &name, const QString &address)
{
    return {QStringLiteral("0"), name, address, 50, 0};
}

inline BookFeed populate(qint64 time, const QList<SeenPlayer> &players,
                         const QString &server = QStringLiteral("10.1.1.1:28960"))
{
    BookFeed feed;
    feed.server = server;
    feed.time = time;
    feed.players = players;
    feed.count = static_cast<int>(players.size());
    return feed;
}

inline void forget(BookStore &store, qint64 player)
{
    store.remove(player);
    store.cleanUp();
}

inline QStringList texts(const QList<BookAlias> &aliases)
{
    QStringList all;
    for (const BookAlias &alias : aliases)
        all.append(alias.text);
    return all;
}
