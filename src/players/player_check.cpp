// SPDX-License-Identifier: MIT
#include "player_check.h"

#include "base/fault.h"
#include "base/guid.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool isDamaged(const StatusRow &row)
{
    return row.damage != RowDamage::None || !isNumbered(row);
}

bool isLeaving(const StatusRow &row)
{
    return row.ping == "ZMBI"_L1;
}

bool isOfMany(const QString &guid)
{
    return !isGuid(guid) || isNobodysGuid(guid);
}

bool isCalled(const WantedPlayer &wanted, const StatusRow &row)
{
    return row.guid == wanted.guid && row.name == wanted.name;
}

QString lineOf(const StatusRow &row)
{
    return QStringList{row.num, row.score, row.ping, row.guid, row.name, row.address, row.qport, row.rate}.join(u' ');
}

/// True when `text` is `whole` with one character missing.
bool lacksOne(const QString &text, const QString &whole)
{
    for (qsizetype missing = 0; text.size() == whole.size() - 1 && missing < whole.size(); ++missing) {
        if (text == QString(whole).remove(missing, 1))
            return true;
    }
    return false;
}

/// True when `text` stands in the line behind a blank and before one, or at its ends; what `mayTouch` needs none behind
/// it.
bool holdsWord(const QString &line, const QString &text, bool mayTouch)
{
    for (qsizetype at = line.indexOf(text); at >= 0; at = line.indexOf(text, at + 1)) {
        const qsizetype end = at + text.size();
        const bool isEnded = mayTouch || end == line.size() || line.at(end) == u' ';
        if (isEnded && (at == 0 || line.at(at - 1) == u' '))
            return true;
    }
    return false;
}

/// True when the damaged `row` may be about him: one character that is missing leaves either his GUID or his name as it
/// was, or both stand in a row that two have become. It can be the blank between the two. Without a GUID of his own the
/// name may be the damaged one, or have gone where the columns behind it touch.
bool mayBe(const WantedPlayer &wanted, const StatusRow &row)
{
    const QString line = lineOf(row);
    if (isOfMany(wanted.guid))
        return line.contains(wanted.name) || lacksOne(row.name, wanted.name) ||
               (row.num == wanted.num && isOfMany(row.guid));
    return holdsWord(line, wanted.name, false) || holdsWord(line, wanted.guid, true);
}

bool isDoubtful(const WantedPlayer &wanted, const QList<StatusRow> &rows)
{
    return std::ranges::any_of(rows, [&](const StatusRow &row) { return isDamaged(row) && mayBe(wanted, row); });
}

Sighting damagedOr(const Sighting &sighting, const WantedPlayer &wanted, const QList<StatusRow> &rows)
{
    return wanted.isDamaged || isDoubtful(wanted, rows) ? Sighting{.kind = Sighting::Damaged, .num = {}} : sighting;
}

Sighting seenIn(const StatusRow &row, Sighting::Kind kind)
{
    return {.kind = kind, .num = row.num, .isSure = !row.beginsDatagram};
}

/// Nobody is called like him; somebody may have his GUID.
Sighting gone(const WantedPlayer &wanted, const QList<StatusRow> &rows)
{
    const auto found = std::ranges::find_if(
        rows, [&](const StatusRow &row) { return row.guid == wanted.guid && !isDamaged(row) && !isLeaving(row); });
    if (found == rows.end() || isOfMany(wanted.guid))
        return {};
    return {.kind = Sighting::Gone, .num = {}, .isSure = true, .newName = found->name, .newNum = found->num};
}

/// One of many who share a GUID: only who stands where he stood is he.
Sighting lookForOneOfMany(const WantedPlayer &wanted, const QList<StatusRow> &called, const QList<StatusRow> &rows)
{
    for (const StatusRow &row : called) {
        if (!isDamaged(row) && row.num == wanted.num && row.address == wanted.address)
            return isDoubtful(wanted, rows) ? Sighting{.kind = Sighting::Damaged, .num = {}}
                                            : seenIn(row, Sighting::There);
    }
    return damagedOr({.kind = called.size() > 1 ? Sighting::Two : Sighting::Gone, .num = {}}, wanted, rows);
}

/// True when another answer has come in the middle of the list: of a server that fills its datagrams all but the last
/// are full.
bool isMixed(const QList<ReplyPiece> &pieces)
{
    const auto isFull = [](const ReplyPiece &piece) { return piece.mayLackLast; };
    return std::ranges::any_of(pieces, isFull) && !std::all_of(pieces.begin(), pieces.end() - 1, isFull);
}

/// True when the rows stand in the order of their slots, as servers list them. Pieces of an older list do not fit in.
bool isInOrder(const QList<StatusRow> &rows)
{
    qint64 last = -1;
    for (const StatusRow &row : rows) {
        if (isDamaged(row))
            continue; // a digit may be missing
        if (row.num.toLongLong() <= last)
            return false;
        last = row.num.toLongLong();
    }
    return true;
}

} // namespace

Sighting lookFor(const WantedPlayer &wanted, const QList<StatusRow> &rows)
{
    QList<StatusRow> called;
    std::ranges::copy_if(rows, std::back_inserter(called),
                         [&](const StatusRow &row) { return !isLeaving(row) && isCalled(wanted, row); });
    if (isOfMany(wanted.guid))
        return lookForOneOfMany(wanted, called, rows);
    if (called.size() > 1)
        return {.kind = Sighting::Two, .num = {}};
    if (called.isEmpty())
        return damagedOr(gone(wanted, rows), wanted, rows);
    const StatusRow &row = called.first();
    if (isDamaged(row) || isDoubtful(wanted, rows))
        return {.kind = Sighting::Damaged, .num = {}}; // a damaged row beside it may be another of his kind
    return seenIn(row, row.num == wanted.num ? Sighting::There : Sighting::Elsewhere);
}

std::optional<bool> isStillThere(const WantedPlayer &wanted, const QList<StatusRow> &rows)
{
    if (isOfMany(wanted.guid)) {
        WantedPlayer known = wanted;
        known.isDamaged = false; // he stood in a newer list as he is
        const Sighting::Kind kind = lookFor(known, rows).kind;
        return kind == Sighting::Damaged ? std::nullopt : std::optional(kind == Sighting::There);
    }
    bool mayBeThere = false;
    for (const StatusRow &row : rows) {
        if (isDamaged(row))
            mayBeThere = mayBeThere || mayBe(wanted, row) || lineOf(row).contains(wanted.guid) ||
                         lacksOne(row.guid, wanted.guid);
        else if (row.guid == wanted.guid && !isLeaving(row))
            return true;
    }
    return mayBeThere ? std::nullopt : std::optional(false);
}

bool isEndSupposed(const QString &reply, const QList<ReplyPiece> &pieces)
{
    return !pieces.isEmpty() && pieces.constLast().mayLackLast && !reply.endsWith("\n\n"_L1);
}

std::optional<QList<StatusRow>> wholeTable(const QString &reply, const QList<ReplyPiece> &pieces)
{
    StatusTable table;
    QList<StatusRow> rows;
    const bool isCut = std::ranges::any_of(pieces, &ReplyPiece::isCut);
    if (!reply.startsWith("map:"_L1) || pieces.isEmpty() || isCut || isMixed(pieces))
        return {};
    // The empty line at the end can be the character that is missing: at the end of a full datagram, or at its border.
    const qsizetype last = pieces.size() - 1;
    const bool mayLackEnd = isEndSupposed(reply, pieces) ||
                            (last > 0 && pieces.at(last - 1).mayLackLast && pieces.at(last).begin >= reply.size() - 1);
    const QString text = mayLackEnd && !reply.endsWith("\n\n"_L1) ? reply + u'\n' : reply;
    try {
        if (!table.skipHeading(text))
            return text.count(u'\n') == 4 && text.endsWith("\n\n"_L1) ? std::optional(rows) : std::nullopt;
        while (!table.ended(text))
            rows.append(table.next(text, pieces));
    } catch (const Fault &) {
        return {}; // cut short
    }
    return isInOrder(rows) ? std::optional(rows) : std::nullopt;
}
