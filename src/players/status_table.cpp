// SPDX-License-Identifier: MIT
#include "status_table.h"

#include "base/fault.h"
#include "base/wire_text.h"

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr int headLines = 3;

// Positions are counted from 1 and held in 16 bits; the index counts from 0.
qsizetype found(qsizetype index)
{
    if (index < 0)
        throw Fault(Fault::InvalidCall);
    if (index >= std::numeric_limits<qint16>::max())
        throw Fault(Fault::Overflow);
    return index;
}

/// What may have happened to the line from `start` to its line feed at `end`. On a server whose datagrams lack their
/// last character the row behind a border is marked also when it begins there: its first character may be that one. (A
/// line feed that is missing makes two rows one, which stands in both datagrams.) All datagrams of such a list but the
/// last are full, so one in front of a border that is not is another answer's, and a row may lie on both its sides. Of
/// other servers such a datagram shows only by the row that it spoils: what begins behind that can be the rest of one.
/// A datagram that was too large to be taken whole lacks its end.
RowDamage damageOf(qsizetype start, qsizetype end, const QList<ReplyPiece> &pieces, bool isBehindDamaged)
{
    const bool losesCharacters = std::ranges::any_of(pieces, &ReplyPiece::mayLackLast);
    RowDamage damage = RowDamage::None;
    for (qsizetype piece = 1; piece < pieces.size(); ++piece) {
        const qsizetype border = pieces.at(piece).begin;
        if (border > end)
            break;
        if (border >= start && (losesCharacters || pieces.at(piece - 1).isCut))
            return RowDamage::LostCharacter;
        if (border > start || (border == start && isBehindDamaged))
            damage = RowDamage::TwoDatagrams;
    }
    return damage;
}

bool isNumber(QStringView text)
{
    bool isOk = false;
    (void)text.toLongLong(&isOk);
    return isOk;
}

/// Cuts one row into fields, from both ends, because the name in the middle may hold blanks itself.
class RowCutter final {
public:
    /// A row begins at its first character that is no blank: in the first column when the slot number has three digits,
    /// and on servers that align it to the left.
    RowCutter(const QString &reply_, qsizetype start) : reply(reply_), left(behindBlanks(start))
    {
        // A line that is empty or a single word is no row.
        for (qsizetype lineFeed = reply.indexOf(u'\n', left); lineFeed >= 0 && lineFeed < blankFrom(left);
             lineFeed = reply.indexOf(u'\n', left))
            left = behindBlanks(lineFeed + 1);
    }

    /// The next field from the left.
    QString takeLeft()
    {
        const qsizetype end = blankFrom(left);
        QString field = reply.sliced(left, end - left);
        left = behindBlanks(end);
        return field;
    }

    /// From here on fields are taken from the end of the line, the position of which is returned.
    qsizetype turn()
    {
        right = found(reply.indexOf(u'\n', left));
        return right;
    }

    /// The next field from the right.
    QString takeRight()
    {
        qsizetype end = right;
        while (end > 0 && reply.at(right) == u' ' && reply.at(end - 1) == u' ')
            --end;
        const qsizetype before = found(end > 0 ? reply.lastIndexOf(u' ', end - 1) : -1);
        const QString field = reply.sliced(before + 1, end - before - 1);
        right = before;
        return trimBlanks(field);
    }

    /// What is left between the two edges.
    [[nodiscard]] QString takeMiddle() const
    {
        // Without a name the blank in front of it is also the one behind it, so the edges have passed by one.
        if (right < left - 1)
            throw Fault(Fault::InvalidCall);
        return right < left ? QString() : trimBlanks(squeezeBlanks(reply.sliced(left, right - left)));
    }

private:
    [[nodiscard]] qsizetype blankFrom(qsizetype from) const { return found(reply.indexOf(u' ', from)); }
    [[nodiscard]] qsizetype behindBlanks(qsizetype at) const
    {
        while (at < reply.size() && reply.at(at) == u' ')
            ++at;
        return at;
    }

    const QString &reply;
    qsizetype left;
    qsizetype right = 0;
};

} // namespace

bool isNumbered(const StatusRow &row)
{
    return isNumber(row.num) && isNumber(row.guid);
}

bool StatusTable::skipHeading(const QString &reply)
{
    qsizetype from = 0;
    for (int line = 0; line < headLines; ++line) {
        lineFeed = reply.indexOf(u'\n', from);
        if (lineFeed >= 0)
            from = lineFeed + 1;
    }
    constexpr qsizetype shortestRow = 4; // no row is shorter than this behind its line feed
    return lineFeed >= 0 && lineFeed + shortestRow < reply.size();
}

bool StatusTable::ended(const QString &reply) const
{
    return anyRow && lineFeed + 1 < reply.size() && reply.at(lineFeed + 1) == u'\n';
}

StatusRow StatusTable::next(const QString &reply, const QList<ReplyPiece> &pieces)
{
    RowCutter cutter(reply, lineFeed + 1);
    StatusRow row;
    row.num = cutter.takeLeft();
    row.score = cutter.takeLeft();
    row.ping = cutter.takeLeft();
    row.guid = cutter.takeLeft();
    const qsizetype lineEnd = cutter.turn();
    row.rate = cutter.takeRight();
    row.qport = cutter.takeRight();
    row.address = cutter.takeRight();
    cutter.takeRight(); // the time since the last message is not shown
    row.name = cutter.takeMiddle();
    row.damage = damageOf(lineFeed + 1, lineEnd, pieces, isBehindDamaged);
    row.beginsDatagram =
        std::ranges::any_of(pieces, [start = lineFeed + 1](const ReplyPiece &piece) { return piece.begin == start; });
    isBehindDamaged = row.damage != RowDamage::None || !isNumbered(row);
    lineFeed = lineEnd;
    anyRow = true;
    return row;
}
