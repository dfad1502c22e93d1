// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

/// Qt's own style "fusion" with plain frames around groups, tabs and boxes of text. It makes them out of pictures and
/// see-through lines, for which it starts threads and reads picture files: a sixth of the time until the window is
/// there.
class PlainFrames final : public QProxyStyle {
    Q_OBJECT

public:
    PlainFrames();

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    [[nodiscard]] QIcon standardIcon(StandardPixmap picture, const QStyleOption *option,
                                     const QWidget *widget) const override;
};
