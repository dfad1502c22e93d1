// SPDX-License-Identifier: MIT
#include "wildcard.h"

bool matchesWildcard(QStringView pattern, QStringView name)
{
    qsizetype inPattern = 0;
    qsizetype inName = 0;
    qsizetype star = -1; // the last "*" that was passed
    qsizetype taken = 0; // where the characters that it stands for end
    while (inName < name.size()) {
        const QChar wanted = inPattern < pattern.size() ? pattern.at(inPattern) : QChar();
        if (inPattern < pattern.size() && wanted == u'*') {
            star = inPattern++;
            taken = inName;
        } else if (inPattern < pattern.size() && (wanted == u'?' || wanted.toLower() == name.at(inName).toLower())) {
            ++inPattern;
            ++inName;
        } else if (star >= 0) {
            inPattern = star + 1;
            inName = ++taken;
        } else {
            return false;
        }
    }
    while (inPattern < pattern.size() && pattern.at(inPattern) == u'*')
        ++inPattern;
    return inPattern == pattern.size();
}
