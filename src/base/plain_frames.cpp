// SPDX-License-Identifier: MIT
#include "plain_frames.h"

#include <QPainter>
#include <QStyleOption>

#include <algorithm>

namespace {

// By filling: a line of that height is divided among threads.
void drawFrame(QPainter &painter, const QRect &place, const QColor &colour)
{
    painter.fillRect(place.left() + 1, place.top(), place.width() - 2, 1, colour);
    painter.fillRect(place.left() + 1, place.bottom(), place.width() - 2, 1, colour);
    painter.fillRect(place.left(), place.top() + 1, 1, place.height() - 2, colour);
    painter.fillRect(place.right(), place.top() + 1, 1, place.height() - 2, colour);
}

constexpr int titleMargin = 3; // pixels between the title of a group and its frame

} // namespace

PlainFrames::PlainFrames() : QProxyStyle(QStringLiteral("fusion")) {}

void PlainFrames::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                                const QWidget *widget) const
{
    const QColor ground = option->palette.window().color();
    switch (element) {
    case PE_FrameTabWidget:
        painter->fillRect(option->rect, ground.lighter(104));
        drawFrame(*painter, option->rect, ground.darker(140));
        break;
    case PE_FrameGroupBox: {
        const int indicator = proxy()->pixelMetric(PM_ExclusiveIndicatorHeight, option, widget);
        const int title = std::max(indicator, option->fontMetrics.height()) + titleMargin;
        drawFrame(*painter, option->rect.adjusted(0, title, 0, 0), ground.darker(115));
        break;
    }
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

QIcon PlainFrames::standardIcon(StandardPixmap picture, const QStyleOption *option, const QWidget *widget) const
{
    // Every menu bar asks for it, for the case that its menus do not fit; the window is never that narrow.
    if (picture == SP_ToolBarHorizontalExtensionButton)
        return {};
    return QProxyStyle::standardIcon(picture, option, widget);
}
