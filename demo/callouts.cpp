// SPDX-License-Identifier: MIT
#include "callouts.h"

#include <QPainter>
#include <QWidget>

#include <array>

using namespace Qt::StringLiterals;

namespace {

/// Where on a control its number stands, in parts of the control's width and height: where it hides no text.
struct Callout {
    QStringView control;
    double x;
    double y;
};

constexpr std::array<Callout, 11> callouts{{{u"comserver", 0.5, 0.5},
                                            {u"comport", 0.6, 0.5},
                                            {u"txtPWD", 0.5, 0.5},
                                            {u"cmdconnect", 0, 0.5},
                                            {u"SSTab", 0.85, 0.04},
                                            {u"txtoutput", 0.5, 0.5},
                                            {u"comdirect", 0.5, 0.5},
                                            {u"lstmessages", 0.5, 0.5},
                                            {u"lstservers", 0.5, 0.5},
                                            {u"txtprefix", 0.9, 0.5},
                                            {u"statusbar", 0.5, 0.5}}};

void drawNumber(QPainter &painter, QPointF centre, int number)
{
    constexpr double radius = 11;
    painter.setPen(QPen(Qt::white, 2));
    painter.setBrush(QColor(180, 30, 90));
    painter.drawEllipse(centre, radius, radius);
    painter.drawText(QRectF(centre - QPointF(radius, radius), QSizeF(2 * radius, 2 * radius)), Qt::AlignCenter,
                     QString::number(number));
}

} // namespace

QPixmap withNumbers(QWidget &window)
{
    QPixmap picture = window.grab();
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QFont font = window.font();
    font.setBold(true);
    painter.setFont(font);
    int number = 0;
    for (const Callout &callout : callouts) {
        const auto *control = window.findChild<QWidget *>(callout.control.toString());
        if (!control)
            return {};
        const QPointF corner = control->mapTo(&window, QPoint());
        drawNumber(painter, corner + QPointF(control->width() * callout.x, control->height() * callout.y), ++number);
    }
    return picture;
}
