// SPDX-License-Identifier: MIT
#include "colour_codes.h"

using namespace Qt::StringLiterals;

namespace {

bool isColour(QChar character)
{
    return character >= u'0' && character <= u'9';
}

} // namespace

QString stripcolour(const QString &name)
{
    const QString text = name + u' '; // a caret in the last place has a character behind it, too
    QString stripped;
    for (qsizetype at = 0; at < name.size(); ++at) {
        if (text.at(at) == u'^' && isColour(text.at(at + 1)))
            ++at;
        else
            stripped += text.at(at);
    }
    return stripped;
}
