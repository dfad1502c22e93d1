// SPDX-License-Identifier: MIT
#include "book_watch.h"

#include "base/clock.h"
#include "base/guid.h"
#include "book.h"
#include "book_store.h"
#include "book_text.h"
#include "rcon/traffic.h"

#include <QStringList>

#include <algorithm>
#include <atomic>
#include <memory>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// An action in the book.
struct Noted {
    qint64 action = 0;
    int edition = 0;
};

/// True when the damaged row may be about him: one of what he is known by is as it was.
bool mayBe(const KnownPlayer &player, const ListedPlayer &damaged)
{
    return (!isNobodysGuid(player.guid) && damaged.seen.guid == player.guid) ||
           cleanName(damaged.seen.name) == cleanName(player.name);
}

BookAction::Kind kindOf(const QString &command)
{
    if (command.startsWith("banclient"_L1))
        return BookAction::Ban;
    return command.startsWith("tempbanclient"_L1) ? BookAction::TempBan : BookAction::Kick;
}

/// What a damaged row says of a player beyond slot and name may be somebody else's; a GUID that is no number says so,
/// too.
bool isInDoubt(const ListedPlayer &player)
{
    return player.isDamaged || !isGuid(player.seen.guid.trimmed());
}

} // namespace

struct BookWatch::Change {
    std::function<void(BookStore &)> work;
    int edition = 0;                     ///< in which alone it means something; 0 when that is any
    std::atomic<bool> isWritten = false; ///< or never will be
};

BookWatch::BookWatch(Book &book_, const Clock &clock_, QObject *parent) : QObject(parent), book(book_), clock(clock_)
{
    connect(&book, &Book::statechanged, this, [this] {
        if (book.isOpen() && book.trouble().isEmpty())
            writeChanges();
        if (book.isOpen())
            return;
        changes.clear();
        forget();
    });
    connect(&book, &Book::begunanew, this, &BookWatch::forget);
}

void BookWatch::setServer(const QString &address)
{
    if (address == connected)
        return;
    connected = address;
    game = {};
    forget();
    emit serverchanged();
}

void BookWatch::end()
{
    writeChanges();
    book.end();
}

// Also while no book is kept: when one is begun the map is known at once.
void BookWatch::takeReply(const QString &reply)
{
    game.takeReply(reply);
}

void BookWatch::takeCommand(const QString &comm)
{
    game.takeCommand(comm);
}

void BookWatch::forget()
{
    known.clear();
    knownNums.clear();
    damagedRows.clear();
    met.clear();
    here.clear();
    showRemarks();
    emit flaggedshown({});
}

void BookWatch::populated(const QList<ListedPlayer> &players)
{
    if (!book.isOpen() || connected.isEmpty())
        return;
    showRemarks(); // those of before, until the book has answered
    BookFeed feed{.server = connected,
                  .time = clock.now().toSecsSinceEpoch(),
                  .players = {},
                  .count = static_cast<int>(players.size()),
                  .map = game.map(),
                  .gameType = game.typeOfMap()};
    QStringList nums;
    QList<ListedPlayer> damaged;
    for (const ListedPlayer &player : players) {
        if (isInDoubt(player)) {
            damaged.append(player);
            continue;
        }
        feed.players.append(player.seen);
        nums.append(player.num);
    }
    book.ask([feed](BookStore &store) { return store.feed(feed); }, this,
             [this, nums, damaged, server = connected](const QList<KnownPlayer> &answer) {
                 if (server == connected && book.isOpen())
                     takeKnown(answer, nums, damaged);
             });
}

void BookWatch::takeKnown(const QList<KnownPlayer> &players, const QStringList &nums,
                          const QList<ListedPlayer> &damaged)
{
    known = players;
    knownNums = nums;
    damagedRows = damaged;
    for (const KnownPlayer &player : players)
        meet(player);
    showRemarks();
    announce(players, damaged);
    QList<qint64> numbers;
    for (const KnownPlayer &player : players)
        numbers.append(player.player);
    emit fed(numbers);
    writeChanges(); // the book can be written again
}

void BookWatch::meet(const KnownPlayer &player)
{
    met.removeIf([&player](const KnownPlayer &each) { return each.player == player.player; });
    if (player.hasNote || player.isFlagged)
        met.append(player);
}

// Somebody whose row is damaged this time has not left.
void BookWatch::announce(const QList<KnownPlayer> &players, const QList<ListedPlayer> &damaged)
{
    QList<KnownPlayer> now;
    bool hasCome = false;
    for (const KnownPlayer &player : players) {
        if (!player.isFlagged)
            continue;
        const auto isHe = [&player](const KnownPlayer &each) { return each.player == player.player; };
        hasCome = hasCome || player.hasCome || std::ranges::none_of(here, isHe);
        now.append(player);
    }
    for (const KnownPlayer &player : std::as_const(here)) {
        const auto isHe = [&player](const KnownPlayer &each) { return each.player == player.player; };
        const bool isListed = std::ranges::any_of(players, isHe);
        const bool isDoubtful =
            std::ranges::any_of(damaged, [&player](const ListedPlayer &row) { return mayBe(player, row); });
        if (!isListed && isDoubtful)
            now.append(player);
    }
    here = now;
    tellFlagged();
    if (hasCome)
        emit flaggedcame();
}

void BookWatch::tellFlagged()
{
    QStringList names;
    for (const KnownPlayer &player : std::as_const(here))
        names.append(shownName(player.name));
    names.removeDuplicates();
    emit flaggedshown(names.isEmpty() ? QString() : u"Flagged: "_s + names.join(u", "_s));
}

void BookWatch::setRemark(qint64 player, bool hasNote, bool isFlagged)
{
    const auto isHe = [player](const KnownPlayer &each) { return each.player == player; };
    bool isChanged = false;
    // He may be known by an earlier list alone, when his row in this one is damaged.
    for (QList<KnownPlayer> *list : {&known, &met}) {
        for (KnownPlayer &each : *list) {
            if (!isHe(each) || (each.hasNote == hasNote && each.isFlagged == isFlagged))
                continue;
            each.hasNote = hasNote;
            each.isFlagged = isFlagged;
            isChanged = true;
        }
    }
    if (!isChanged)
        return;
    const auto found = std::ranges::find_if(std::as_const(known), isHe);
    if (found != known.cend())
        meet(*found);
    met.removeIf([](const KnownPlayer &each) { return !each.hasNote && !each.isFlagged; });
    showRemarks();
    // Whoever flags him knows that he is there.
    const bool isHere = std::ranges::any_of(std::as_const(here), isHe);
    if (!isFlagged)
        here.removeIf(isHe);
    else if (!isHere && found != known.cend())
        here.append(*found);
    tellFlagged();
}

void BookWatch::showRemarks()
{
    QList<RemarkedRow> rows;
    for (qsizetype at = 0; at < known.size() && at < knownNums.size(); ++at) {
        const KnownPlayer &player = known.at(at);
        if (player.hasNote || player.isFlagged)
            rows.append({knownNums.at(at), player.guid, player.name, player.isFlagged});
    }
    for (const ListedPlayer &row : std::as_const(damagedRows)) { // nothing of it is taken, but it can be recognised
        const auto isHe = [&row](const KnownPlayer &each) {
            return !isNobodysGuid(each.guid) && each.guid == row.seen.guid &&
                   cleanName(each.name) == cleanName(row.seen.name);
        };
        const auto found = std::ranges::find_if(met, isHe);
        if (found != met.end())
            rows.append({row.num, row.seen.guid, row.seen.name, found->isFlagged});
    }
    emit remarked(rows);
}

void BookWatch::acting(const ListedPlayer &player, const QString &command)
{
    note(actionOn(player, command), command);
}

void BookWatch::kicking(const QString &command, const ListedPlayer &counted, const ListedPlayer &listed)
{
    const bool isSame = cleanName(counted.seen.name) == cleanName(listed.seen.name);
    for (const ListedPlayer &player : isSame ? QList{listed} : QList{counted, listed}) {
        BookAction action = actionOn(player, command);
        action.isAutomatic = true;
        action.isMaybe = !isSame;
        note(action, command);
    }
}

BookAction BookWatch::actionOn(const ListedPlayer &player, const QString &command) const
{
    BookAction action;
    action.time = clock.now().toSecsSinceEpoch();
    action.kind = kindOf(command);
    action.server = connected;
    action.num = player.num;
    action.name = player.seen.name;
    if (!isInDoubt(player)) {
        action.guid = player.seen.guid;
        action.address = withoutPort(player.seen.address);
    }
    return action;
}

// It is noted when it goes out. The number that the book gives it is known in the book's thread alone, where the
// verdict comes after it.
void BookWatch::note(const BookAction &action, const QString &command)
{
    if (!book.isOpen() || connected.isEmpty())
        return;
    const auto noted = std::make_shared<Noted>();
    const auto sent = [this, action, noted] {
        write([action, noted](BookStore &store) { *noted = {store.addAction(action), store.edition()}; });
    };
    const auto judged = [this, noted](const CommandVerdict &verdict) {
        write([noted, word = verdict.word](BookStore &store) {
            if (noted->action != 0 && noted->edition == store.edition())
                store.setVerdict(noted->action, word);
        });
    };
    follow(command, {sent, judged});
}

void BookWatch::write(const std::function<void(BookStore &)> &work, int edition)
{
    constexpr qsizetype mostKept = 100;
    if (!book.isOpen())
        return;
    const auto change = std::make_shared<Change>();
    change->work = work;
    change->edition = edition;
    changes.append(change);
    if (changes.size() > mostKept)
        changes.removeFirst();
    writeChanges();
}

// What is asked for twice, because the answer is still under way, is written once.
void BookWatch::writeChanges()
{
    if (changes.isEmpty())
        return;
    book.ask(
        keptBack(), this, [this] { dropWritten(); }, [this] { dropWritten(); });
}

std::function<void(BookStore &)> BookWatch::keptBack() const
{
    return [all = changes](BookStore &store) { writeAll(all, store); };
}

void BookWatch::writeAll(const Changes &all, BookStore &store)
{
    std::optional<int> lost; // edition
    for (const std::shared_ptr<Change> &change : all) {
        if (change->isWritten)
            continue;
        if (change->edition == 0 || change->edition == store.edition())
            change->work(store);
        else
            lost = change->edition;
        change->isWritten = true;
    }
    if (lost)
        Book::requireEdition(store, *lost);
}

void BookWatch::dropWritten()
{
    if (changes.removeIf([](const std::shared_ptr<Change> &change) { return change->isWritten.load(); }) > 0)
        emit noted();
}

void BookWatch::follow(const QString &command, const CommandWatch::Listener &listener)
{
    commands.expect(command, clock.elapsed(), listener);
}

void BookWatch::sent(const SentCopy &copy)
{
    commands.sent(copy.number, copy.comm, clock.elapsed());
}
