// SPDX-License-Identifier: MIT
#pragma once

#include "fault_of.h"
#include "players/status_table.h"

#include <QStringList>

/// A row as "num|score|ping|guid|name|address|qport|rate".
inline QString described(const StatusRow &row)
{
    return QStringList{row.num, row.score, row.ping, row.guid, row.name, row.address, row.qport, row.rate}.join(u'|');
}

/// Reads on until the table has ended or is cut short. Returns the fault, 0 at the end.
inline int readOn(StatusTable &table, const QString &reply, QStringList &rows)
{
    int fault = 0;
    while (fault == 0 && !table.ended(reply))
        fault = faultOf([&] { rows.append(described(table.next(reply))); });
    return fault;
}

/// All rows of a whole reply.
inline QStringList rowsIn(const QString &reply)
{
    StatusTable table;
    QStringList rows;
    if (!table.skipHeading(reply))
        return {QStringLiteral("no rows")};
    if (const int fault = readOn(table, reply, rows); fault != 0)
        rows.append(QStringLiteral("fault %1").arg(fault));
    return rows;
}
