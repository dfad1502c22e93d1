// SPDX-License-Identifier: MIT
#include "colours.h"

QString withoutColours(const QString &name)
{
    QString clean;
    for (qsizetype at = 0; at < name.size(); ++at) {
        const QChar next = at + 1 < name.size() ? name.at(at + 1) : QChar();
        if (name.at(at) == u'^' && next >= u'0' && next <= u'9')
            ++at;
        else
            clean.append(name.at(at));
    }
    return clean;
}
