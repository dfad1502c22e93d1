// SPDX-License-Identifier: MIT
#include "damage_mark.h"

#include <QPainter>
#include <QPixmap>
#include <QPolygonF>
#include <QWidget>

namespace {

constexpr int units = 16; // the pictures are drawn in a square of so many

void drawBrokenLine(QPainter &painter)
{
    painter.drawLine(QPointF(2, 8), QPointF(6, 8));
    painter.drawLine(QPointF(10, 8), QPointF(14, 8));
    painter.drawLine(QPointF(7, 12), QPointF(9, 4));
}

void drawTriangle(QPainter &painter)
{
    painter.drawPolygon(QPolygonF({{8, 2}, {15, 14}, {1, 14}}));
    painter.drawLine(QPointF(8, 6), QPointF(8, 9.5));
    painter.drawPoint(QPointF(8, 12));
}

} // namespace

QIcon damageMark(RowDamage damage, const QWidget &view)
{
    const int size = view.fontMetrics().height();
    QPixmap pixmap(QSize(size, size) * view.devicePixelRatioF());
    pixmap.setDevicePixelRatio(view.devicePixelRatioF());
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(static_cast<double>(size) / units, static_cast<double>(size) / units);
    const bool isDark = view.palette().color(QPalette::Base).lightness() < 128;
    painter.setPen(QPen(isDark ? QColor(0xFF, 0xC1, 0x40) : QColor(0x9A, 0x60, 0x00), 1.6, Qt::SolidLine, Qt::RoundCap,
                        Qt::RoundJoin));
    if (damage == RowDamage::LostCharacter)
        drawTriangle(painter);
    else
        drawBrokenLine(painter);
    return QIcon(pixmap);
}
