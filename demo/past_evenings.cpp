// SPDX-License-Identifier: MIT
#include "past_evenings.h"

#include "book/book_store.h"
#include "practice/game_server.h"

#include <QDateTime>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 betweenLists = 600; // seconds
constexpr qint64 longAgo = qint64{7} * 86'400;

/// How many of the players on the server are there at that hour: few in the morning, all in the evening.
double shareAt(int hour)
{
    constexpr std::array<double, 24> shares{0.7, 0.5, 0.3, 0.2, 0.1, 0.1, 0.1, 0.1, 0.2, 0.2, 0.2, 0.3,
                                            0.3, 0.3, 0.4, 0.4, 0.5, 0.6, 0.7, 0.8, 0.9, 1.0, 1.0, 0.9};
    return shares.at(static_cast<std::size_t>(hour));
}

BookFeed feedOf(GameServer &game, const QString &address, qint64 time)
{
    const QStringList maps{u"mp_carentan"_s, u"mp_toujane"_s, u"mp_dawnville"_s, u"mp_breakout"_s};
    BookFeed feed;
    feed.server = address;
    feed.time = time;
    feed.map = maps.at(time / 14'400 % maps.size());
    feed.gameType = u"tdm"_s;
    const QList<Player> &all = game.players().all();
    const auto count = static_cast<qsizetype>(static_cast<double>(all.size()) *
                                              shareAt(QDateTime::fromSecsSinceEpoch(time).time().hour()));
    for (const Player &player : all.first(std::max<qsizetype>(count, 1)))
        feed.players.append({player.guid, player.name + u"^7"_s, player.address, player.ping, player.score});
    feed.count = static_cast<int>(feed.players.size());
    return feed;
}

} // namespace

void writePastEvenings(const QString &address)
{
    PracticeOptions options;
    options.players = 20;
    options.renames = true;
    GameServer game(options);
    const auto store = openBookStore(u"molvark-players.db"_s, 0, BookStore::fiveSeconds, false);
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    for (qint64 time = now - longAgo; time < now - betweenLists; time += betweenLists) {
        for (int second = 0; second < 60; ++second) // a minute is enough for somebody to come or go
            (void)game.tick();
        (void)store->feed(feedOf(game, address, time));
    }
}
