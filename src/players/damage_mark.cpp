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

void drawSheet(QPainter &painter)
{
    painter.drawRect(QRectF(3, 2, 10, 12));
    for (const double line : {5.5, 8.0, 10.5})
        painter.drawLine(QPointF(5.5, line), QPointF(10.5, line));
}

void drawFlag(QPainter &painter)
{
    painter.drawLine(QPointF(4, 1.5), QPointF(4, 14.5));
    painter.setBrush(painter.pen().color());
    painter.drawPolygon(QPolygonF({{4, 2}, {13.5, 5}, {4, 8.5}}));
}

void drawDamage(QPainter &painter, RowDamage damage)
{
    if (damage == RowDamage::LostCharacter)
        drawTriangle(painter);
    else if (damage == RowDamage::TwoDatagrams)
        drawBrokenLine(painter);
}

void drawRemark(QPainter &painter, PlayerRemark remark)
{
    if (remark == PlayerRemark::Flag)
        drawFlag(painter);
    else if (remark == PlayerRemark::Note)
        drawSheet(painter);
}

QPen penOf(bool isDark, const QColor &onDark, const QColor &onLight)
{
    return {isDark ? onDark : onLight, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

} // namespace

QIcon rowMark(RowDamage damage, PlayerRemark remark, const QWidget &view)
{
    const int size = view.fontMetrics().height();
    QPixmap pixmap(QSize(size, size) * view.devicePixelRatioF());
    pixmap.setDevicePixelRatio(view.devicePixelRatioF());
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(static_cast<double>(size) / units, static_cast<double>(size) / units);
    const bool isDark = view.palette().color(QPalette::Base).lightness() < 128;
    if (damage != RowDamage::None && remark != PlayerRemark::None) {
        // The column has room for one: the two share it, one above the other.
        constexpr double share = 0.6;
        painter.scale(share, share);
    }
    painter.setPen(penOf(isDark, QColor(0xFF, 0xC1, 0x40), QColor(0x9A, 0x60, 0x00)));
    drawDamage(painter, damage);
    if (damage != RowDamage::None && remark != PlayerRemark::None)
        painter.translate(units * 2 / 3.0, units * 2 / 3.0);
    painter.setPen(remark == PlayerRemark::Flag ? penOf(isDark, QColor(0xFF, 0x7A, 0x70), QColor(0xB4, 0x10, 0x10))
                                                : penOf(isDark, QColor(0x8F, 0xC4, 0xFF), QColor(0x1A, 0x55, 0x9A)));
    drawRemark(painter, remark);
    return QIcon(pixmap);
}
