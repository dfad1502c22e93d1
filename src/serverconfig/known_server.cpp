// SPDX-License-Identifier: MIT
#include "known_server.h"

#include "base/clock.h"
#include "stock_game.h"

KnownNames KnownServer::names() const
{
    const QStringList gametypes(stockGameTypes.cbegin(), stockGameTypes.cend());
    return {gametypes, serverMaps.isEmpty() ? stockMaps() : serverMaps, !serverMaps.isEmpty()};
}

void KnownServer::takeMaps(const QStringList &maps)
{
    serverMaps = maps;
    emit changed();
}

void KnownServer::takeVariables(const QString &listing)
{
    const TimeLimits limits = timeLimits(listing);
    if (limits.isEmpty())
        return;
    readLimits = limits;
    readAt = clock.now().time();
    emit changed();
}

void KnownServer::forget()
{
    serverMaps.clear();
    readLimits.clear();
    readAt = {};
    emit changed();
}
