// SPDX-License-Identifier: MIT
#include "player_csv.h"

#include "player_table.h"

#include <QLocale>

using namespace Qt::StringLiterals;

QString csvLine(const QStringList &items)
{
    return u'"' + items.join(u"\",\""_s) + u"\"\r\n"_s;
}

QString csvTime(const QDateTime &time)
{
    return QLocale::c().toString(time, u"dd-MMM-yyyy hh:mm"_s);
}

QString csvRows(const PlayerTable &players, const QString &time, const QString &server, bool queryMode)
{
    QString rows;
    for (int row = 0; row < players.rowCount(); ++row) {
        const QString &name = players.text(row, PlayerColumn::Player);
        rows += queryMode ? csvLine({time, server, name})
                          : csvLine({time, server, players.text(row, PlayerColumn::Address),
                                     players.text(row, PlayerColumn::Guid), name});
    }
    return rows;
}
