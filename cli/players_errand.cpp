// SPDX-License-Identifier: MIT
#include "players_errand.h"

#include "cli_output.h"
#include "masking.h"
#include "player_text.h"
#include "players/player_check.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString asked = QStringLiteral("status");

/// The slots of rows that may lack a character.
QString doubtfulSlots(const QList<StatusRow> &players)
{
    QStringList numbers;
    for (const StatusRow &player : players) {
        if (player.damage == RowDamage::LostCharacter)
            numbers.append(player.num);
    }
    return numbers.join(u", "_s);
}

/// The list with asterisks for the password, which a name may hold across the border of two datagrams: the rows do not
/// tell where that was. The heading is what a list is known by, and is not shown.
std::optional<QList<StatusRow>> maskedTable(const RconReply &reply, const QString &password)
{
    const qsizetype heading = reply.text.indexOf(u'\n') + 1;
    const QString masked = maskedReply(reply.text, reply.pieces, password); // no shorter and no longer
    return wholeTable(reply.text.first(heading) + masked.sliced(heading), reply.pieces);
}

} // namespace

void PlayersErrand::goOn()
{
    copiesLeft = asking.copies;
    askConsole(asked, copiesLeft);
}

void PlayersErrand::take(const RconReply &reply)
{
    const ExitStatus status = statusOfReply(asked, reply.text);
    copiesLeft -= reply.copies;
    if (const std::optional<QList<StatusRow>> players = maskedTable(reply, asking.password)) {
        takePlayers(*players);
    } else if (status != ExitStatus::Done) {
        output.note(status == ExitStatus::PasswordRefused ? u"The server refused the password."_s
                                                          : u"The server does not tell who plays."_s);
        finish(status);
    } else if (copiesLeft > 0) {
        askConsole(asked, copiesLeft);
    } else {
        takeLoss(u"The list of players did not come whole"_s);
    }
}

void PlayersErrand::takeSilence()
{
    takeLoss(u"No answer"_s);
}

void PlayersErrand::takePlayers(const QList<StatusRow> &players)
{
    output.print(shown(players));
    if (const QString numbers = doubtfulSlots(players); !numbers.isEmpty())
        output.note(u"This server loses a character now and then; one may be missing in the rows "_s + numbers + u'.');
    finish(ExitStatus::Done);
}

void PlayersErrand::takeLoss(const QString &what)
{
    output.note(what + u'.');
    finish(ExitStatus::NoAnswer);
}

QString PlayersErrand::shown(const QList<StatusRow> &players) const
{
    switch (format) {
    case PlayersFormat::Table:
        break;
    case PlayersFormat::Json:
        return playersJson(players, asking.password);
    case PlayersFormat::Csv:
        return playersCsv(players, asking.password);
    }
    return playersTable(players, asking.password);
}

WatchErrand::WatchErrand(CliOutput &output_, const Asking &asking_, AskSchedule::Time interval_)
    : PlayersErrand(output_, asking_, PlayersFormat::Json), interval(interval_)
{
    since.start();
    pause.setSingleShot(true);
    pause.setTimerType(Qt::PreciseTimer);
    connect(&pause, &QTimer::timeout, this, &WatchErrand::goOn);
}

void WatchErrand::goOn()
{
    nextAt = std::max(nextAt + interval, AskSchedule::Time(since.elapsed())); // what was missed is not made up for
    PlayersErrand::goOn();
}

void WatchErrand::stop()
{
    pause.stop();
    PlayersErrand::stop();
}

void WatchErrand::takePlayers(const QList<StatusRow> &players)
{
    if (output.print(sampleJson(QDateTime::currentDateTimeUtc(), players, asking.password)))
        waitForNext();
    else
        finish(ExitStatus::Done);
}

void WatchErrand::takeLoss(const QString &what)
{
    output.note(u"%1: %2."_s.arg(QDateTime::currentDateTimeUtc().toString(Qt::ISODate), what));
    waitForNext();
}

void WatchErrand::waitForNext()
{
    pause.start(std::max(nextAt - AskSchedule::Time(since.elapsed()), 0ms));
}
