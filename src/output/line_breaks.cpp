// SPDX-License-Identifier: MIT
#include "line_breaks.h"

#include <algorithm>

LineBreaks::LineBreaks(const QFont &font) : metrics(font)
{
    latin.fill(-1);
}

QStringView LineBreaks::firstLine(QStringView text, qreal width)
{
    qreal used = 0;
    qsizetype behindBlank = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar character = text.at(at);
        if (character == u'\n')
            return text.first(at + 1);
        if (character.isLowSurrogate())
            continue; // has been counted with the one before it
        used += advance(text, at);
        if (character == u' ')
            behindBlank = at + 1; // blanks may stand over the edge, where nobody sees them
        else if (used > width && at > 0)
            return text.first(behindBlank > 0 ? behindBlank : at);
    }
    return text;
}

int LineBreaks::count(QStringView text, qreal width)
{
    int lines = 0;
    do {
        text = text.sliced(firstLine(text, width).size());
        ++lines;
    } while (!text.isEmpty());
    return lines;
}

qreal LineBreaks::advance(QStringView text, qsizetype at)
{
    const char16_t unit = text.at(at).unicode();
    if (unit < latin.size()) {
        qreal &width = latin.at(unit);
        if (width < 0)
            width = std::max(metrics.horizontalAdvance(text.at(at)), 0.0);
        return width;
    }
    const bool isPair = text.at(at).isHighSurrogate() && at + 1 < text.size() && text.at(at + 1).isLowSurrogate();
    const char32_t code = isPair ? QChar::surrogateToUcs4(unit, text.at(at + 1).unicode()) : unit;
    if (const auto known = others.constFind(code); known != others.cend())
        return *known;
    return *others.insert(code, metrics.horizontalAdvance(text.sliced(at, isPair ? 2 : 1).toString()));
}
