// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

/// Qt's own style "fusion", but with plain frames around groups, tabs and text boxes. "Fusion" makes these frames out
/// of pictures and half-transparent lines. For that it starts threads and reads picture files, which takes a sixth of
/// the time until the window is there.
class PlainFrames final : public QProxyStyle {
    Q_OBJECT

public:
    PlainFrames();

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    [[nodiscard]] QIcon standardIcon(StandardPixmap picture, const QStyleOption *option,
                                     const QWidget *widget) const override;
};
