// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "fuzz.h"
#include "rcon/request_size.h"
#include "serverconfig/rotation_outlook.h"
#include "serverconfig/rotation_problems.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QStringList maps(const QList<RotationRow> &rows)
{
    QStringList names;
    for (const RotationRow &row : rows) {
        if (!row.isOdd())
            names.append(row.gametype + u' ' + row.map);
    }
    return names;
}

void checkReading(const QString &text)
{
    const QList<RotationRow> rows = rotationRows(text);
    const QString written = rotationText(rows);
    require(rotationRows(written) == rows, "what is written is the same rotation");
    const auto lost = [&](const QString &word) { return !written.contains(word, Qt::CaseInsensitive); };
    require(std::ranges::none_of(text.simplified().split(u' '), lost), "no word is lost");

    QList<RotationRow> turned = rows;
    std::ranges::reverse(turned);
    turned.removeIf([](const RotationRow &row) { return row.isOdd(); });
    const bool namesAll = std::ranges::none_of(turned, [](const RotationRow &row) { return row.gametype.isEmpty(); });
    require(!namesAll || maps(rotationRows(rotationText(turned))) == maps(turned),
            "a map that is moved is played in its own game type");
}

void checkNotes(const QString &text)
{
    const QList<RotationRow> rows = rotationRows(text);
    const KnownNames known{{u"sd"_s, u"tdm"_s}, {u"mp_decoy"_s, u"mp_toujane"_s}, false};
    int last = 0;
    for (const RotationProblem &problem : rotationProblems(rows, known)) {
        require(problem.row >= last && problem.row < rows.size() && !problem.reason.isEmpty(), "in the lines' order");
        last = problem.row;
    }
    const int unread = firstUnreadRow(rows, u"practice"_s);
    const bool isLong = rotationSize(rotationText(rows), u"practice"_s) > longestRequest;
    require((unread >= 0) == isLong && unread < std::max<qsizetype>(rows.size(), 1), "a long request has its line");
    const QDateTime evening(QDate(2026, 11, 20), QTime(20, 0));
    const qsizetype told = rotationOutlook(rows, {{u"sd"_s, 0}, {u"tdm"_s, 20}}, evening).size();
    require(told == (maps(rows).isEmpty() ? 0 : maps(rows).size() + 1), "each map has its line, and the end");
}

} // namespace

void fuzz(const QByteArray &input)
{
    const QString text = fromAnsi(input);
    checkReading(text);
    checkNotes(text);
    const QString inFile = rotationInFile(text);
    require(rotationRows(rotationText(rotationRows(inFile))) == rotationRows(inFile), "a file's rotation, too");
    for (const double minutes : timeLimits(text))
        require(minutes >= 0 && minutes <= 1440, "a limit is a part of a day");
}
