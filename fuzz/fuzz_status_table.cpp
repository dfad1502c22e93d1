// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "fuzz.h"
#include "players/status_table.h"

#include <QList>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype farthest = std::numeric_limits<qint16>::max();

/// Reads on until the table or what has come of it ends. True when it is over.
bool readOn(StatusTable &table, const QString &reply, QList<StatusRow> &rows)
{
    const int fault = faultOf([&] {
        while (!table.ended(reply))
            rows.append(table.next(reply));
    });
    require(fault == 0 || fault == Fault::InvalidCall || (fault == Fault::Overflow && reply.size() > farthest),
            "a row is whole, cut short, or too far away");
    return fault == 0;
}

QList<StatusRow> rowsIn(const QString &reply)
{
    QList<StatusRow> rows;
    StatusTable table;
    if (table.skipHeading(reply))
        readOn(table, reply, rows);
    return rows;
}

/// The rows of a reply that stops for a while at `cut`.
QList<StatusRow> rowsInTwoParts(const QString &reply, qsizetype cut)
{
    QList<StatusRow> rows;
    StatusTable table;
    const QString beginning = reply.first(cut);
    if (table.skipHeading(beginning) ? !readOn(table, beginning, rows) : table.skipHeading(reply))
        readOn(table, reply, rows);
    return rows;
}

void examine(const StatusRow &row)
{
    for (const QString &field : {row.num, row.score, row.ping, row.guid})
        require(!field.contains(u' '), "a blank ends the fields before the name");
    for (const QString &field : {row.address, row.qport, row.rate})
        require(!field.contains(u' ') && !field.contains(u'\n'), "blanks part the fields behind the name");
    require(!row.name.contains(u'\n'), "a name is in one line");
    require(!row.name.contains(u"  "_s) && row.name == trimBlanks(row.name), "a run of blanks counts as one");
}

/// The first field of the first line behind the head that has a blank behind one.
QString firstField(const QString &reply)
{
    for (const QString &line : reply.split(u'\n').sliced(3)) {
        const QString row = trimBlanks(line + u'|'); // without the blanks that begin it
        if (const qsizetype blank = row.indexOf(u' '); blank > 0)
            return row.first(blank);
    }
    return {};
}

void read(const QString &reply, qsizetype cut)
{
    const QList<StatusRow> rows = rowsIn(reply);
    require(rows.isEmpty() || rows.first().num == firstField(reply), "a row's first field is its slot number");
    require(rows.size() <= reply.count(u'\n'), "each row has a line");
    for (const StatusRow &row : rows)
        examine(row);
    require(rowsInTwoParts(reply, cut) == rows, "a reply that grows gives the same rows");
    if (reply.size() < farthest)
        require(rowsIn(squeezeBlanks(reply)) == rows, "a run of blanks counts as one everywhere");
}

} // namespace

// The first two bytes say where the reply behind them stops for a while.
void fuzz(const QByteArray &input)
{
    if (input.size() < 2)
        return;
    const QString reply = fromAnsi(input.sliced(2));
    const auto byte = [&](qsizetype index) { return static_cast<uchar>(input.at(index)); };
    const qsizetype cut = (byte(0) * 256 + byte(1)) % (reply.size() + 1);
    read(reply, cut);

    const QString longMapName(farthest - 200, u'm'); // brings the first rows to the last position that is read
    read(longMapName + reply, longMapName.size() + cut);
}
