// SPDX-License-Identifier: MIT
#include "known_server.h"

#include "base/clock.h"
#include "stock_game.h"

namespace {

template <typename Names>
QSet<QString> inLowerCase(const Names &names)
{
    QSet<QString> lower;
    for (const auto &name : names)
        lower.insert(QString(name).toLower());
    return lower;
}

} // namespace

KnownNames KnownServer::names() const
{
    return {inLowerCase(stockGameTypes), serverMaps.isEmpty() ? inLowerCase(stockMaps()) : mapNames,
            !serverMaps.isEmpty()};
}

void KnownServer::takeMaps(const QStringList &maps)
{
    serverMaps = maps;
    mapNames = inLowerCase(maps);
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
    mapNames.clear();
    readLimits.clear();
    readAt = {};
    emit changed();
}
