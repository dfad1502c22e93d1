// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "fuzz.h"
#include "players/getstatus_reply.h"

#include <QList>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype farthest = std::numeric_limits<qint16>::max();

QList<GetstatusRow> rowsIn(const QString &text)
{
    QList<GetstatusRow> rows;
    GetstatusReply reply(text);
    const int fault = faultOf([&] {
        while (const std::optional<GetstatusRow> row = reply.next())
            rows.append(*row);
        require(!reply.next(), "behind the last line is nothing");
    });
    // Of a line that is cut off, the name would begin two positions behind the end.
    require(fault == 0 || (fault == Fault::Overflow && text.size() + 2 > farthest),
            "nothing but a name far away is a fault");
    return rows;
}

void readAny(const QString &text)
{
    const QList<GetstatusRow> rows = rowsIn(text);
    const bool noLineBehind = text.count(u'\n') == 2 && text.endsWith(u'\n');
    require(GetstatusReply(text).isEmpty() == noLineBehind, "empty means that the information string is the last line");
    require(rows.size() <= std::max<qsizetype>(text.count(u'\n') - 2, 0), "each player has a line");
    for (const GetstatusRow &row : rows) {
        require(!row.score.contains(u' ') && !row.ping.contains(u' '), "a blank ends score and ping");
        require(!row.name.contains(u'"'), "a name ends at its first double quote");
        require(row.name == trimBlanks(row.name), "a name has no blanks at its ends");
        require(text.contains(row.score) && text.contains(row.ping) && text.contains(row.name), "nothing is made up");
    }
}

/// Every line is the name of a player.
void readTidy(const QStringList &names)
{
    QString text = u"statusResponse\n\\mapname\\mp_carentan\n"_s;
    QList<GetstatusRow> expected;
    for (const QString &line : names) {
        const QString name = QString(line).remove(u'"');
        const GetstatusRow row{QString::number(expected.size() - 1), QString::number(line.size()), trimBlanks(name)};
        text += row.score + u' ' + row.ping + u" \""_s + name + u"\"\n"_s;
        expected.append(row);
    }
    if (text.size() < farthest)
        require(rowsIn(text) == expected, "each whole line is a player");
}

} // namespace

void fuzz(const QByteArray &input)
{
    const QString text = fromAnsi(input);
    readAny(text);
    readAny(QString(farthest - 200, u'-') + text); // brings the first names to the last position that is read
    readTidy(text.split(u'\n'));
}
