// SPDX-License-Identifier: MIT
#include "dvar_reply.h"

#include "base/fault.h"

QString getdvar(QStringView reply, QStringView name)
{
    const qsizetype found = reply.indexOf(name, 0, Qt::CaseInsensitive);
    if (found < 0)
        return {};
    const qsizetype open = reply.indexOf(u'"', found);
    const qsizetype close = open < 0 ? -1 : reply.indexOf(u'"', open + 1);
    if (close < 0)
        throw Fault(Fault::InvalidCall);
    return reply.sliced(open + 1, close - open - 1).toString();
}
