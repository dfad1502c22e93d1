// SPDX-License-Identifier: MIT
#include "time_plot.h"

#include "shown_time.h"

#include <QAccessible>
#include <QBuffer>
#include <QDateTime>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyleOptionFocusRect>

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int margin = 6;
constexpr qint64 day = 86'400;

/// The least of 1, 2, 5, 10, 20, 50, ... that is as great as `least`.
int roundStep(double least)
{
    for (int power = 1;; power *= 10) {
        for (const int factor : {1, 2, 5}) {
            if (factor * power >= least)
                return factor * power;
        }
    }
}

/// Between two times that are written below the plot.
qint64 timeStep(double least)
{
    constexpr std::array<qint64, 16> steps{60,     300, 900,     1800,    3600,     7200,     10'800,   21'600,
                                           43'200, day, 2 * day, 7 * day, 14 * day, 30 * day, 90 * day, 365 * day};
    const auto found = std::ranges::find_if(steps, [least](qint64 step) { return static_cast<double>(step) >= least; });
    return found == steps.end() ? steps.back() : *found;
}

/// The pixels of one column: the line goes from the first value to the last, by way of the least and the greatest.
struct Column {
    int x = 0;
    qint64 begin = 0; ///< time of the first point
    qint64 end = 0;
    int first = 0;
    int least = 0;
    int greatest = 0;
    int last = 0;
};

/// The newest marks in words.
QString markTexts(const QList<PlotData::Mark> &marks)
{
    constexpr qsizetype mostTold = 10;
    QStringList texts;
    for (const PlotData::Mark &mark : marks.last(std::min(marks.size(), mostTold)))
        texts.append(shownTime(mark.time) + u' ' + mark.text);
    return texts.isEmpty() ? QString() : u" Lines across: "_s + texts.join(u", "_s) + u'.';
}

} // namespace

TimePlot::TimePlot(QWidget *parent) : QWidget(parent)
{
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    tell();
}

void TimePlot::setData(const PlotData &data_)
{
    const qint64 before = chosen < 0 ? -1 : data.points.at(chosen).time;
    data = data_;
    int greatest = 1;
    for (const PlotData::Point &point : std::as_const(data.points))
        greatest = std::max(greatest, point.value);
    if (data.most > 0)
        greatest = std::min(greatest, data.most);
    const int step = roundStep(greatest / 4.0);
    highest = (greatest + step - 1) / step * step;
    const auto same = std::ranges::find(data.points, before, &PlotData::Point::time);
    chosen = same == data.points.end() ? -1 : same - data.points.begin();
    tell();
    update();
}

QString TimePlot::figures() const
{
    if (chosen < 0)
        return {};
    const PlotData::Point &point = data.points.at(chosen);
    const QString label = data.labels.value(point.label);
    return shownTime(point.time) + u": %1 %2"_s.arg(QString::number(point.value), data.unit) +
           (label.isEmpty() ? QString() : u", "_s + label);
}

// For those who do not see the plot.
void TimePlot::tell()
{
    QString text = figures();
    if (text.isEmpty() && !isEmpty()) {
        const auto [least, greatest] = std::ranges::minmax_element(data.points, {}, &PlotData::Point::value);
        text =
            u"From %1 to %2: at least %3, at most %4, at the end %5 %6. The arrow keys go from point to point."_s.arg(
                shownTime(data.points.first().time), shownTime(data.points.last().time), QString::number(least->value),
                QString::number(greatest->value), QString::number(data.points.last().value), data.unit) +
            markTexts(data.marks);
    }
    setAccessibleDescription(isEmpty() ? u"Nothing is known of this time."_s : text);
}

QByteArray TimePlot::png()
{
    QImage picture(size() * devicePixelRatioF(), QImage::Format_RGB32);
    picture.setDevicePixelRatio(devicePixelRatioF());
    QPainter painter(&picture);
    painter.setFont(font());
    paint(painter, true);
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    return picture.save(&buffer, "PNG") ? bytes : QByteArray();
}

void TimePlot::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paint(painter, false);
    if (!hasFocus())
        return;
    QStyleOptionFocusRect option;
    option.initFrom(this);
    option.rect = rect().adjusted(1, 1, -1, -1);
    option.backgroundColor = palette().color(QPalette::Base);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

void TimePlot::paint(QPainter &painter, bool isPicture) const
{
    painter.fillRect(rect(), palette().color(QPalette::Base));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    if (isEmpty()) {
        painter.setPen(faint());
        painter.drawText(rect().marginsRemoved({margin, margin, margin, margin}),
                         Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, u"Nothing is known of this time."_s);
        return;
    }
    paintValueAxis(painter);
    paintTimeAxis(painter);
    paintMarks(painter);
    paintLine(painter);
    if (chosen >= 0 && !isPicture)
        paintChosen(painter);
}

void TimePlot::paintValueAxis(QPainter &painter) const
{
    const Scale place = scale();
    const QRect room = area();
    const int most = std::max(1, room.height() / (2 * painter.fontMetrics().height()));
    const int step = roundStep(static_cast<double>(highest) / most);
    for (int value = 0; value <= highest; value += step) {
        const int y = static_cast<int>(std::lround(place.y(value)));
        painter.setPen(QPen(faint(), 1, value == 0 ? Qt::SolidLine : Qt::DotLine));
        painter.drawLine(room.left(), y, room.right(), y);
        painter.setPen(palette().color(QPalette::Text));
        const int height = painter.fontMetrics().height();
        painter.drawText(QRect(0, y - height / 2, room.left() - margin, height), Qt::AlignRight | Qt::AlignVCenter,
                         QString::number(value));
    }
}

void TimePlot::paintTimeAxis(QPainter &painter) const
{
    const Scale place = scale();
    const QRect room = area();
    const double span = static_cast<double>(std::max<qint64>(data.to - data.from, 1));
    const int width = painter.fontMetrics().horizontalAdvance(u"00-00 "_s) + margin;
    const qint64 step = timeStep(span * width / std::max(room.width(), 1));
    const QString format = step >= day ? u"MM-dd"_s : u"HH:mm"_s;
    QDateTime time = QDateTime::fromSecsSinceEpoch(data.from).date().startOfDay();
    // Days have 23 hours, too, and where the clock is set at midnight some do not begin at 00:00.
    const auto next = [step](const QDateTime &each) {
        return step >= day ? each.date().addDays(step / day).startOfDay() : each.addSecs(step);
    };
    painter.setPen(palette().color(QPalette::Text));
    for (; time.toSecsSinceEpoch() <= data.to; time = next(time)) {
        if (time.toSecsSinceEpoch() < data.from)
            continue;
        const int x = static_cast<int>(std::lround(place.x(time.toSecsSinceEpoch())));
        painter.drawLine(x, room.bottom() + 1, x, room.bottom() + 4);
        const QRect below(x - width / 2, room.bottom() + 4, width, painter.fontMetrics().height());
        if (below.right() <= rect().right() && below.left() >= 0)
            painter.drawText(below, Qt::AlignHCenter | Qt::AlignTop, time.toString(format));
    }
}

// The text of a mark stands at its right, unless another's stands there already.
void TimePlot::paintMarks(QPainter &painter) const
{
    const Scale place = scale();
    const QRect room = area();
    int free = room.left();
    for (const PlotData::Mark &mark : data.marks) {
        const int x = static_cast<int>(std::lround(place.x(mark.time)));
        if (mark.time < data.from || mark.time > data.to)
            continue;
        painter.setPen(QPen(faint(), 1, Qt::DashLine));
        painter.drawLine(x, room.top() - painter.fontMetrics().height(), x, room.bottom());
        const int width = painter.fontMetrics().horizontalAdvance(mark.text);
        if (x + 3 < free || x + 3 + width > rect().right())
            continue;
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(x + 3, room.top() - painter.fontMetrics().descent(), mark.text);
        free = x + 3 + width + margin;
    }
}

void TimePlot::paintLine(QPainter &painter) const
{
    const Scale place = scale();
    // However many points there are, no more is drawn than can be seen.
    QList<Column> columns;
    for (const PlotData::Point &point : data.points) {
        const int x = static_cast<int>(place.x(point.time));
        if (columns.isEmpty() || columns.last().x != x || point.time - columns.last().end > data.gap)
            columns.append({x, point.time, point.time, point.value, point.value, point.value, point.value});
        Column &column = columns.last();
        column.end = point.time;
        column.least = std::min(column.least, point.value);
        column.greatest = std::max(column.greatest, point.value);
        column.last = point.value;
    }
    QPainterPath path;
    QList<QPointF> lone;
    for (qsizetype at = 0; at < columns.size(); ++at) {
        const Column &column = columns.at(at);
        const bool isJoined = at > 0 && column.begin - columns.at(at - 1).end <= data.gap;
        const bool goesOn = at + 1 < columns.size() && columns.at(at + 1).begin - column.end <= data.gap;
        if (!isJoined)
            path.moveTo(column.x, place.y(column.first));
        for (const int value : {column.first, column.least, column.greatest, column.last})
            path.lineTo(column.x, place.y(value));
        if (!isJoined && !goesOn)
            lone.append(QPointF(column.x, place.y(column.last)));
    }
    painter.save();
    painter.setClipRect(area().adjusted(-2, -2, 2, 2));
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor colour = palette().color(QPalette::Active, QPalette::Highlight);
    painter.setPen(QPen(colour, 1.6));
    painter.drawPath(path);
    painter.setBrush(colour);
    for (const QPointF &point : std::as_const(lone))
        painter.drawEllipse(point, 1.6, 1.6);
    painter.restore();
}

void TimePlot::paintChosen(QPainter &painter) const
{
    const Scale place = scale();
    const PlotData::Point &point = data.points.at(chosen);
    const QPointF at(place.x(point.time), place.y(std::min(point.value, highest)));
    const QColor text = palette().color(QPalette::Text);
    painter.setPen(QPen(text, 1));
    painter.drawLine(QPointF(at.x(), area().top()), QPointF(at.x(), area().bottom()));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(palette().color(QPalette::Base));
    painter.setPen(QPen(text, 1.6));
    painter.drawEllipse(at, 3.5, 3.5);
    const QRect line(margin, margin / 2, width() - 2 * margin, painter.fontMetrics().height());
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                     painter.fontMetrics().elidedText(figures(), Qt::ElideRight, line.width()));
}

void TimePlot::mouseMoveEvent(QMouseEvent *event)
{
    choose(isEmpty() ? -1 : nearest(event->position().x()));
}

void TimePlot::leaveEvent(QEvent *event)
{
    QWidget::leaveEvent(event);
    choose(-1);
}

void TimePlot::focusOutEvent(QFocusEvent *event)
{
    QWidget::focusOutEvent(event);
    choose(-1);
    update();
}

void TimePlot::keyPressEvent(QKeyEvent *event)
{
    const qsizetype last = data.points.size() - 1;
    if (isEmpty())
        return QWidget::keyPressEvent(event);
    switch (event->key()) {
    case Qt::Key_Left:
        return choose(neighbour(-1));
    case Qt::Key_Right:
        return choose(neighbour(1));
    case Qt::Key_Home:
        return choose(0);
    case Qt::Key_End:
        return choose(last);
    default:
        QWidget::keyPressEvent(event);
    }
}

// The next point that is seen apart from the chosen one.
qsizetype TimePlot::neighbour(int direction) const
{
    const Scale place = scale();
    const qsizetype last = data.points.size() - 1;
    if (chosen < 0)
        return last;
    const int x = static_cast<int>(place.x(data.points.at(chosen).time));
    qsizetype point = std::clamp<qsizetype>(chosen + direction, 0, last);
    while (point > 0 && point < last && static_cast<int>(place.x(data.points.at(point).time)) == x)
        point += direction;
    return point;
}

void TimePlot::choose(qsizetype point)
{
    if (point == chosen)
        return;
    chosen = point;
    tell();
    update();
    if (hasFocus()) {
        QAccessibleEvent event(this, QAccessible::DescriptionChanged);
        QAccessible::updateAccessibility(&event);
    }
}

qsizetype TimePlot::nearest(double x) const
{
    const Scale place = scale();
    const auto behind = std::ranges::lower_bound(
        data.points, x, {}, [&place](const PlotData::Point &point) { return place.x(point.time); });
    if (behind == data.points.begin())
        return 0;
    if (behind == data.points.end())
        return data.points.size() - 1;
    const bool isNearer = place.x(behind->time) - x < x - place.x((behind - 1)->time);
    return behind - data.points.begin() - (isNearer ? 0 : 1);
}

// Above it are the line of the figures and that of the marks' texts, at its left and below it are the axes.
QRect TimePlot::area() const
{
    const int left = fontMetrics().horizontalAdvance(QString::number(highest)) + 2 * margin;
    return rect().adjusted(left, top(), -2 * margin, -fontMetrics().height() - margin);
}

int TimePlot::top() const
{
    return (data.marks.isEmpty() ? 1 : 2) * fontMetrics().height() + margin;
}

TimePlot::Scale TimePlot::scale() const
{
    const QRect room = area();
    const auto span = static_cast<double>(std::max<qint64>(data.to - data.from, 1));
    return {.left = static_cast<double>(room.left()),
            .bottom = static_cast<double>(room.bottom()),
            .perSecond = room.width() / span,
            .perValue = static_cast<double>(room.height()) / highest,
            .from = data.from};
}

QColor TimePlot::faint() const
{
    constexpr int alpha = 150; // of 255
    QColor colour = palette().color(QPalette::Text);
    colour.setAlpha(alpha);
    return colour;
}
