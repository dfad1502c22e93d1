// SPDX-License-Identifier: MIT
#include "player_csv.h"

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
