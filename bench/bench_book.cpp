// SPDX-License-Identifier: MIT
#include "book/sql_book_store.h"
#include "median.h"
#include "row.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

constexpr int players = 20'000;
constexpr int sightings = 1'000'000;
constexpr int rowsOfList = 200; // that are asked for at once
constexpr int evening = 64;     // players in a populate
constexpr int rounds = 101;
constexpr qint64 begin = 1'700'000'000;

/// Somebody with one of three names and one of three addresses.
SeenPlayer playerOf(int number, int variant)
{
    static const QStringList words{u"Sniper"_s, u"Tänzer"_s, u"Wolf"_s, u"the Clan"_s,
                                   u"Nobody"_s, u"x_X"_s,    u"Ghost"_s};
    const QString word = words.at((number + variant) % words.size());
    return {.guid = QString::number(100'000'000LL + number * 7919LL),
            .name = u"^%1%2 ^7%3"_s.arg(QString::number(variant + 1), word, QString::number(number, 36)),
            .address =
                u"%1.%2.%3.%4:28960"_s.arg(20 + variant).arg(number / 256 % 256).arg(number % 256).arg(variant + 1),
            .ping = 20 + number % 200,
            .score = variant};
}

BookFeed feedOf(qint64 time, int first, int count, int variant)
{
    BookFeed feed;
    feed.server = u"192.0.2.1:28960"_s;
    feed.time = time;
    for (int each = 0; each < count; ++each)
        feed.players.append(playerOf((first + each * 311) % players, variant));
    feed.count = count;
    feed.map = u"mp_toujane"_s;
    feed.gameType = u"sd"_s;
    return feed;
}

/// Fills it with `sightings`, each player seen as often as the others.
void fill(BookStore &store)
{
    constexpr int count = 500; // 311 and 20,000 have no common divisor: they are different
    for (int feed = 0; feed < sightings / count; ++feed) {
        store.feed(feedOf(begin + feed * 300LL, feed * 13, count, feed % 3));
        store.moveLog();
    }
}

template <typename Action>
double milliseconds(const Action &action)
{
    QElapsedTimer time;
    time.start();
    action();
    return static_cast<double>(time.nsecsElapsed()) / 1e6;
}

bool searching(const BookStore &store, const char *what, const QString &text)
{
    QList<double> times;
    for (int round = 0; round < rounds; ++round)
        times.append(milliseconds([&] { (void)store.search(text, 0, rowsOfList); }));
    return row(what, median(times), 50, " ms");
}

bool feeding(BookStore &store)
{
    QList<double> times;
    QList<double> moves;
    for (int round = 0; round < rounds; ++round) {
        const BookFeed feed = feedOf(begin + sightings + round * 300LL, round * 64, evening, round % 3);
        times.append(milliseconds([&] { store.feed(feed); }));
        moves.append(milliseconds([&] { store.moveLog(); }));
    }
    bool kept = row("a populate of 64 players taken in", median(times), 10, " ms");
    kept &= row("the longest of 101 of them", *std::ranges::max_element(times), 10, " ms");
    return row("the log moved into the file, behind one of them", *std::ranges::max_element(moves), 1000, " ms") &&
           kept;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder(u"bench-book-XXXXXX"_s); // on the disk of this folder, as a book is
    const QString path = folder.filePath(u"molvark-players.db"_s);
    double file = 0;
    {
        SqlBookStore store(path);
        fill(store);
    }
    bool kept = row("Player book of 1,000,000 sightings of 20,000 players: opened",
                    milliseconds([&] { const SqlBookStore store(path); }), 2000, " ms");
    SqlBookStore store(path);
    file = static_cast<double>(store.size().bytes) / 1048576;
    kept &= row("its file", file, 100, " MiB");
    kept &= searching(store, "its first 200 rows, nothing typed", {});
    kept &= searching(store, "those with one character in a name", u"w"_s);
    kept &= searching(store, "those with a part of a name beyond ASCII", u"TÄNZ"_s);
    kept &= searching(store, "those with a part of an address", u"20.7.9"_s);
    kept &= searching(store, "nobody found", u"no such player"_s);
    kept &= feeding(store);
    kept &= row("a player forgotten, the file written anew", milliseconds([&] {
                    store.remove(store.search({}, 0, 1).first().player);
                    store.cleanUp();
                }),
                20'000, " ms");
    return kept ? EXIT_SUCCESS : EXIT_FAILURE;
}
