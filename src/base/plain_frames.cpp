// SPDX-License-Identifier: MIT
#include "plain_frames.h"

#include <QGroupBox>
#include <QPainter>
#include <QStyleOption>

#include <algorithm>

namespace {

// The sides are filled, not drawn as lines: Qt divides the drawing of a tall line among threads, which it has to start.
void drawFrame(QPainter &painter, const QRect &place, const QColor &colour)
{
    painter.fillRect(place.left() + 1, place.top(), place.width() - 2, 1, colour);
    painter.fillRect(place.left() + 1, place.bottom(), place.width() - 2, 1, colour);
    painter.fillRect(place.left(), place.top() + 1, 1, place.height() - 2, colour);
    painter.fillRect(place.right(), place.top() + 1, 1, place.height() - 2, colour);
}

constexpr int titleMargin = 3; // pixels between the title of a group and its frame

// This is the colour that the style gives to the tab in front. The page below it gets the same.
QColor tabGround(const QPalette &palette)
{
    const QColor button = palette.button().color();
    const int lift = std::max(1, (180 - qGray(button.rgb())) / 6);
    const QColor lit = button.lighter(100 + lift);
    return QColor::fromHsv(lit.hue(), lit.saturation() * 3 / 4, lit.value()).lighter(104);
}

// The line is the page's colour with a little of the text's, so that it is seen on light and on dark pages, and in a
// window without tabs too.
QColor groupLine(const QPalette &palette)
{
    const QColor ground = tabGround(palette);
    const QColor text = palette.windowText().color();
    const auto mixed = [](int most, int little) { return (most * 6 + little) / 7; };
    return {mixed(ground.red(), text.red()), mixed(ground.green(), text.green()), mixed(ground.blue(), text.blue())};
}

} // namespace

PlainFrames::PlainFrames() : QProxyStyle(QStringLiteral("fusion")) {}

void PlainFrames::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                                const QWidget *widget) const
{
    switch (element) {
    case PE_FrameTabWidget:
        painter->fillRect(option->rect, tabGround(option->palette));
        drawFrame(*painter, option->rect, option->palette.window().color().darker(140));
        break;
    case PE_FrameLineEdit: {
        const bool hasFocus = option->state.testFlag(State_HasFocus);
        const QPalette &palette = option->palette;
        drawFrame(*painter, option->rect,
                  hasFocus ? palette.highlight().color().darker(125) : palette.window().color().darker(140));
        break;
    }
    case PE_FrameGroupBox: {
        const auto *group = qobject_cast<const QGroupBox *>(widget);
        const bool hasTitle = !group || group->isCheckable() || !group->title().isEmpty();
        const int indicator = proxy()->pixelMetric(PM_ExclusiveIndicatorHeight, option, widget);
        const int title = hasTitle ? std::max(indicator, option->fontMetrics.height()) : 0;
        drawFrame(*painter, option->rect.adjusted(0, title + titleMargin, 0, 0), groupLine(option->palette));
        break;
    }
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

QIcon PlainFrames::standardIcon(StandardPixmap picture, const QStyleOption *option, const QWidget *widget) const
{
    // Every menu bar asks for this picture, for the button that stands in for menus that do not fit. Reading it would
    // hold up the window, so that button has no arrow.
    if (picture == SP_ToolBarHorizontalExtensionButton)
        return {};
    return QProxyStyle::standardIcon(picture, option, widget);
}
