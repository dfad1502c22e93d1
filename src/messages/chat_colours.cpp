// SPDX-License-Identifier: MIT
#include "chat_colours.h"

#include <array>

namespace {

bool isCodeAt(QStringView line, qsizetype place)
{
    return line.at(place) == u'^' && place + 1 < line.size() && line.at(place + 1) >= u'0' &&
           line.at(place + 1) <= u'9';
}

} // namespace

QColor chatColour(int digit)
{
    static const std::array<QColor, 10> colours{
        QColor(0, 0, 0),     QColor(255, 0, 0),     QColor(0, 192, 0),     QColor(255, 255, 0),  QColor(0, 0, 255),
        QColor(0, 255, 255), QColor(255, 128, 255), QColor(255, 255, 255), QColor(120, 160, 90), QColor(160, 160, 160)};
    return colours.at(static_cast<std::size_t>(digit));
}

QColor chatGround(const QColor &text)
{
    const bool isLight = qGray(text.rgb()) > 80;
    return isLight ? QColor(16, 16, 16) : QColor(240, 240, 240);
}

QList<ChatRun> chatRuns(QStringView line)
{
    QList<ChatRun> runs;
    QColor colour = chatColour(7);
    for (qsizetype place = 0; place < line.size(); ++place) {
        if (isCodeAt(line, place)) {
            colour = chatColour(line.at(++place).unicode() - u'0');
            continue;
        }
        if (runs.isEmpty() || runs.last().colour != colour)
            runs.append({QString(), colour});
        runs.last().text += line.at(place);
    }
    return runs;
}
