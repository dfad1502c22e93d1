// SPDX-License-Identifier: MIT
#include "short_text.h"

namespace {

constexpr qsizetype longestText = 60; // characters

} // namespace

QString shortText(const QString &text)
{
    QString line = text.size() > longestText ? text.first(longestText) + u'\u2026' : text;
    for (QChar &each : line) {
        if (!each.isPrint() && !each.isSurrogate())
            each = u' ';
    }
    return line;
}

QString quotedText(const QString &text)
{
    return u'"' + shortText(text) + u'"';
}
