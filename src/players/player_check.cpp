// SPDX-License-Identifier: MIT
#include "player_check.h"

#include "base/fault.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool isNumber(QStringView text)
{
    bool isOk = false;
    (void)text.toLongLong(&isOk);
    return isOk;
}

/// A slot number and a GUID that are no numbers were put together from something else.
bool isDamaged(const StatusRow &row)
{
    return row.damage != RowDamage::None || !isNumber(row.num) || !isNumber(row.guid);
}

bool isLeaving(const StatusRow &row)
{
    return row.ping == "ZMBI"_L1;
}

bool isOfMany(const QString &guid)
{
    return guid.toLongLong() == 0;
}

bool isCalled(const WantedPlayer &wanted, const StatusRow &row)
{
    return row.guid == wanted.guid && row.name == wanted.name;
}

/// True when the damaged `row` may be about him: one character that is missing leaves either his GUID or his name as it
/// was, or both stand in a row that two have become. Without a GUID of his own the name may be the damaged one.
bool mayBe(const WantedPlayer &wanted, const StatusRow &row)
{
    const QString line =
        QStringList{row.num, row.score, row.ping, row.guid, row.name, row.address, row.qport, row.rate}.join(u' ');
    const auto holds = [&line](const QString &text) { return !text.isEmpty() && line.contains(text); };
    if (holds(wanted.name) || (!isOfMany(wanted.guid) && holds(wanted.guid)))
        return true;
    for (qsizetype missing = 0; isOfMany(wanted.guid) && missing < wanted.name.size(); ++missing) {
        if (row.name == QString(wanted.name).remove(missing, 1))
            return true;
    }
    return false;
}

Sighting damagedOr(Sighting::Kind kind, const WantedPlayer &wanted, const QList<StatusRow> &rows)
{
    const bool isDoubtful =
        std::ranges::any_of(rows, [&](const StatusRow &row) { return isDamaged(row) && mayBe(wanted, row); });
    return {wanted.isDamaged || isDoubtful ? Sighting::Damaged : kind, {}};
}

/// One of many who share a GUID: only who stands where he stood is he.
Sighting lookForOneOfMany(const WantedPlayer &wanted, const QList<StatusRow> &called, const QList<StatusRow> &rows)
{
    for (const StatusRow &row : called) {
        if (!isDamaged(row) && row.num == wanted.num && row.address == wanted.address)
            return {Sighting::There, row.num};
    }
    return damagedOr(called.size() > 1 ? Sighting::Two : Sighting::Gone, wanted, rows);
}

/// True when another answer has come in the middle of the list: of a server that fills its datagrams all but the last
/// are full.
bool isMixed(const QList<ReplyPiece> &pieces)
{
    const auto isFull = [](const ReplyPiece &piece) { return piece.mayLackLast; };
    return std::ranges::any_of(pieces, isFull) && !std::all_of(pieces.begin(), pieces.end() - 1, isFull);
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
        return {Sighting::Two, {}};
    if (called.isEmpty())
        return damagedOr(Sighting::Gone, wanted, rows);
    const StatusRow &row = called.first();
    if (isDamaged(row))
        return {Sighting::Damaged, {}};
    return {row.num == wanted.num ? Sighting::There : Sighting::Elsewhere, row.num};
}

std::optional<QList<StatusRow>> wholeTable(const QString &reply, const QList<ReplyPiece> &pieces)
{
    StatusTable table;
    QList<StatusRow> rows;
    if (!reply.startsWith("map:"_L1) || pieces.isEmpty() || isMixed(pieces))
        return {};
    // The empty line at the end can be the character that is missing: at the end of a full datagram, or at its border.
    const qsizetype last = pieces.size() - 1;
    const bool mayLackEnd = pieces.at(last).mayLackLast ||
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
    return rows;
}
