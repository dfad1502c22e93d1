// SPDX-License-Identifier: MIT
#include "book_tools.h"

#include "attention.h"
#include "book/ban_lines.h"
#include "book/book_window.h"
#include "ledger/ledger.h"
#include "other_windows.h"
#include "players/players_page.h"
#include "rcon/connecting.h"
#include "rcon/exchange.h"
#include "rcon/services.h"
#include "status_bar.h"

#include <QApplication>

using namespace Qt::StringLiterals;

namespace {

constexpr int noPing = -1;
constexpr int highestPing = 9999; // that a list has room for

// Who is connecting has a word in place of a ping.
int pingIn(const QString &text)
{
    bool isNumber = false;
    const int ping = text.toInt(&isNumber);
    return isNumber && ping >= 0 && ping <= highestPing ? ping : noPing;
}

ListedPlayer listed(const WantedPlayer &player)
{
    ListedPlayer same{.seen = {}, .num = player.num, .isDamaged = player.isDamaged};
    same.seen.guid = player.guid;
    same.seen.name = player.name;
    same.seen.address = player.address;
    return same;
}

QList<RemarkedPlayer> remarks(const QList<RemarkedRow> &rows)
{
    QList<RemarkedPlayer> players;
    for (const RemarkedRow &row : rows)
        players.append({row.num, row.guid, row.name, row.isFlagged ? PlayerRemark::Flag : PlayerRemark::Note});
    return players;
}

} // namespace

CommandVerdict bookVerdict(const LedgerEntry &entry)
{
    const bool isLate = entry.verdict == Verdict::Late;
    const Verdict told = isLate ? verdictOfReply(entry.command, entry.reply) : entry.verdict;
    const bool refusesGuid = isGood(told) && entry.reply.contains("GUID is 0"_L1, Qt::CaseInsensitive);
    if (refusesGuid && entry.command.contains("ban"_L1, Qt::CaseInsensitive))
        return {entry.number, guidZeroVerdict, false};
    // An earlier copy may have thrown him out, and its answer have been lost: then he is not there for the next one.
    if (told == Verdict::NoSuchPlayer && entry.copies > 1)
        return {entry.number, verdictWord(told) + u" (sent %1 times)"_s.arg(entry.copies), false};
    return {entry.number, verdictWord(isLate && isGood(told) ? entry.verdict : told), isGood(told)};
}

ListedPlayer listedPlayer(const StatusRow &row)
{
    return {.seen = {.guid = row.guid,
                     .name = row.name,
                     .address = row.address,
                     .ping = pingIn(row.ping),
                     .score = row.score.toInt()},
            .num = row.num,
            .isDamaged = row.damage != RowDamage::None || !isNumbered(row)};
}

BookTools::BookTools(Services &services_, OtherWindows &others_, QWidget &window_)
    : services(services_),
      others(others_),
      window(window_),
      kept(services_.ini, services_.prompts),
      watch(kept.book(), services_.clock)
{
    // The program may end at once after that, without taking anything down.
    connect(qApp, &QCoreApplication::aboutToQuit, &watch, &BookWatch::end);
}

void BookTools::wire(const Connecting &connecting, const Exchange &exchange, const Ledger &ledger, PlayersPage &page,
                     StatusBar &statusBar)
{
    connect(&connecting, &Connecting::statechanged, &watch, [this](Connecting::State state, const QString &address) {
        watch.setServer(state == Connecting::State::Connected ? address : QString());
    });
    connect(&exchange, &Exchange::sending, &watch, &BookWatch::takeCommand);
    connect(&exchange, &Exchange::ended, &watch, &BookWatch::takeReply);
    connect(&exchange, &Exchange::copysent, &watch, &BookWatch::sent);
    connect(&ledger, &Ledger::judged, &watch, [this](const LedgerEntry &entry) { watch.judged(bookVerdict(entry)); });
    wirePage(page);
    wireStatusBar(statusBar);
}

void BookTools::wirePage(PlayersPage &page)
{
    connect(&page, &PlayersPage::populated, &watch, [this](const QList<StatusRow> &rows) {
        QList<ListedPlayer> players;
        for (const StatusRow &row : rows)
            players.append(listedPlayer(row));
        watch.populated(players);
    });
    connect(&page, &PlayersPage::acting, &watch,
            [this](const WantedPlayer &wanted, const QString &command) { watch.acting(listed(wanted), command); });
    connect(&page, &PlayersPage::kicking, &watch,
            [this](const QString &command, const WantedPlayer &counted, const WantedPlayer &player) {
                watch.kicking(command, listed(counted), listed(player));
            });
    connect(&page, &PlayersPage::acted, &watch, &BookWatch::unfollow);
    connect(&page, &PlayersPage::whowanted, this, &BookTools::lookUp);
    connect(&watch, &BookWatch::remarked, &page,
            [&page](const QList<RemarkedRow> &rows) { page.showRemarks(remarks(rows)); });
}

// That something was put aside may stand there for long: whoever is there comes first.
void BookTools::wireStatusBar(StatusBar &statusBar)
{
    const auto showBook = [this, &statusBar] {
        QStringList said{flagged, kept.book().trouble()};
        said.removeAll(QString());
        statusBar.showBook(said.join(u". "_s));
    };
    connect(&kept.book(), &Book::statechanged, &statusBar, showBook);
    connect(&watch, &BookWatch::flaggedshown, &statusBar, [this, showBook](const QString &text) {
        flagged = text;
        showBook();
    });
    connect(&watch, &BookWatch::flaggedcame, new Attention(window), &Attention::want);
    connect(&statusBar, &StatusBar::bookclicked, this, &BookTools::mbook_Click);
}

void BookTools::mbook_Click()
{
    (void)others.showbook(kept, watch);
}

void BookTools::lookUp(const WantedPlayer &wanted)
{
    const bool isKnown = !wanted.isDamaged; // of a damaged row the name is looked for
    others.showbook(kept, watch).lookUp(isKnown ? wanted.guid : QString(), wanted.name, wanted.address);
}
