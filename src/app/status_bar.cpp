// SPDX-License-Identifier: MIT
#include "status_bar.h"

#include "rcon/exchange.h"

#include <QMouseEvent>
#include <QPainter>
#include <QProgressBar>
#include <QStyle>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

/// A colour of its own for each state, one for light grounds and one for dark.
QColor colourOf(Connecting::State state, bool isDark)
{
    switch (state) {
    case Connecting::State::NotConnected:
        return isDark ? QColor(0xB0, 0xB0, 0xB0) : QColor(0x60, 0x60, 0x60);
    case Connecting::State::Connecting:
        return isDark ? QColor(0xFF, 0xC1, 0x40) : QColor(0x9A, 0x60, 0x00);
    case Connecting::State::Connected:
        break;
    }
    return isDark ? QColor(0x5A, 0xD8, 0x6A) : QColor(0x12, 0x7A, 0x28);
}

} // namespace

ElidedLabel::ElidedLabel(const QString &name, QWidget *parent) : QLabel(parent)
{
    setObjectName(name);
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

void ElidedLabel::display(const QString &text)
{
    if (text != QLabel::text()) {
        setText(text);
        tellWhole();
    }
    setVisible(!text.isEmpty());
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {fontMetrics().horizontalAdvance(u"\u2026"_s), QLabel::minimumSizeHint().height()};
}

void ElidedLabel::mouseReleaseEvent(QMouseEvent *event)
{
    QLabel::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        emit clicked();
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, palette(),
                          isEnabled(), shownText(), foregroundRole());
}

void ElidedLabel::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    tellWhole();
}

void ElidedLabel::tellWhole()
{
    const bool isWhole = shownText() == text();
    setToolTip(isWhole ? QString() : Qt::convertFromPlainText(text(), Qt::WhiteSpaceNormal));
}

QString ElidedLabel::shownText() const
{
    return fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
}

StateDot::StateDot(QWidget *parent) : QLabel(parent)
{
    setObjectName(u"lbldot"_s);
    const int size = fontMetrics().height();
    setFixedSize(size, size);
}

void StateDot::display(Connecting::State state_, const QString &description)
{
    state = state_;
    setAccessibleName(description);
    update();
}

void StateDot::paintEvent(QPaintEvent *)
{
    const double size = 0.6 * std::min(width(), height());
    QRectF circle(0, 0, size, size);
    circle.moveCenter(QRectF(rect()).center());
    const bool isDark = palette().color(QPalette::Window).lightness() < 128;
    const QColor colour = colourOf(state, isDark);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, 1.5));
    // An empty ring, a half and a full circle can be told apart without colours too.
    if (state == Connecting::State::Connected)
        painter.setBrush(colour);
    painter.drawEllipse(circle);
    if (state == Connecting::State::Connecting) {
        painter.setBrush(colour);
        painter.drawPie(circle, 90 * 16, 180 * 16);
    }
}

RecordMark::RecordMark(QWidget *parent) : QLabel(u"Recording"_s, parent)
{
    setObjectName(u"lblrecord"_s);
    setAccessibleName(u"Traffic is being recorded"_s);
    setContentsMargins(fontMetrics().height(), 0, 0, 0);
}

void RecordMark::paintEvent(QPaintEvent *event)
{
    QLabel::paintEvent(event);
    const double size = 0.6 * fontMetrics().height();
    QRectF circle(0, 0, size, size);
    circle.moveCenter(QPointF(fontMetrics().height() / 2.0, height() / 2.0));
    const bool isDark = palette().color(QPalette::Window).lightness() < 128;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isDark ? QColor(0xFF, 0x5A, 0x50) : QColor(0xC8, 0x10, 0x10));
    painter.drawEllipse(circle);
}

StatusBar::StatusBar(QWidget *parent)
    : QStatusBar(parent), lbldot(new StateDot(this)), lblstate(new ElidedLabel(u"lblstate"_s, this))
{
    setSizeGripEnabled(false); // the window's edge does, and the button stands level with those above
    setContentsMargins(5, 0, 7, 4);
    addWidget(lbldot);
    addWidget(lblstate);
    showState();
}

void StatusBar::build()
{
    barwait = new QProgressBar(this);
    barwait->setObjectName(u"barwait"_s);
    barwait->setAccessibleName(u"Waiting for the server"_s);
    barwait->setTextVisible(false);
    barwait->setFixedSize(6 * fontMetrics().height(), std::max(4, fontMetrics().height() / 3));
    barwait->hide();
    addWidget(barwait);
    lblwait = new ElidedLabel(u"lblwait"_s, this);
    lblcycle = new ElidedLabel(u"lblcycle"_s, this);
    lblrefresh = new ElidedLabel(u"lblrefresh"_s, this);
    addWidget(lblwait, 1);
    lblverdict = new ElidedLabel(u"lblverdict"_s, this);
    lblverdict->setCursor(Qt::PointingHandCursor);
    connect(lblverdict, &ElidedLabel::clicked, this, [this] {
        lblverdict->display({});
        emit verdictclicked(verdictNumber);
    });
    lblbook = new ElidedLabel(u"lblbook"_s, this);
    lblbook->setCursor(Qt::PointingHandCursor);
    connect(lblbook, &ElidedLabel::clicked, this, &StatusBar::bookclicked);
    lbllearn = new ElidedLabel(u"lbllearn"_s, this);
    lbltimetable = new ElidedLabel(u"lbltimetable"_s, this);
    lblrecord = new RecordMark(this);
    lblanswer = new ElidedLabel(u"lblanswer"_s, this); // more than the rest it is for the moment, so it stands first
    int place = 4;                                     // behind the four at the left, before the button
    for (QLabel *label : std::initializer_list<QLabel *>{lblanswer, lblbook, lblverdict, lbltimetable, lbllearn,
                                                         lblcycle, lblrefresh, lblrecord}) {
        insertPermanentWidget(place++, label);
        label->hide();
    }
    lblwait->hide();
}

void StatusBar::showState(Connecting::State state_, const QString &address_)
{
    if (address_ != address)
        game = {};
    state = state_;
    address = address_;
    showState();
}

void StatusBar::showState()
{
    switch (state) {
    case Connecting::State::NotConnected:
        lblstate->display(u"Not connected"_s);
        break;
    case Connecting::State::Connecting:
        lblstate->display(u"Connecting to "_s + address);
        break;
    case Connecting::State::Connected:
        const bool isKnown = !game.type().isEmpty() && !game.map().isEmpty();
        lblstate->display(u"Connected to "_s + address +
                          (isKnown ? u", %1 on %2"_s.arg(game.type(), game.map()) : QString()));
        break;
    }
    lbldot->display(state, lblstate->text());
}

void StatusBar::takeReply(const QString &reply)
{
    if (game.takeReply(reply))
        showState();
}

void StatusBar::takeCommand(const QString &comm)
{
    if (game.takeCommand(comm))
        showState();
}

void StatusBar::showWait(const Wait &wait, const QString &command)
{
    if (!lblwait)
        return;
    const QString step = wait.steps > 1 ? u", step %1 of %2"_s.arg(wait.step).arg(wait.steps) : QString();
    lblwait->display(u"Waiting for the server: %1, %2 s, copy %3 of %4"_s.arg(command.simplified())
                         .arg(wait.seconds)
                         .arg(wait.copy)
                         .arg(wait.copies) +
                     step);
    barwait->setRange(0, wait.longest);
    barwait->setValue(std::min(wait.seconds, barwait->maximum()));
    barwait->show();
}

void StatusBar::hideWait()
{
    if (!lblwait)
        return;
    lblwait->display({});
    barwait->hide();
}

void StatusBar::showCycle(const QString &outlook)
{
    lblcycle->display(outlook);
}

void StatusBar::showRefresh(int seconds)
{
    lblrefresh->display(seconds > 0 ? u"Players every %1 s"_s.arg(seconds) : QString());
}

void StatusBar::showVerdict(int number, const QString &verdict, const QString &command)
{
    if (!lblverdict || (verdict.isEmpty() && number < verdictNumber))
        return; // what was sent before it has become good
    verdictNumber = number;
    lblverdict->display(verdict.isEmpty() ? QString() : verdict + u": "_s + command.simplified());
}

void StatusBar::showRecording(bool on)
{
    if (lblrecord)
        lblrecord->setVisible(on);
}

void StatusBar::showLearning(const QString &progress)
{
    if (lbllearn)
        lbllearn->display(progress);
}

void StatusBar::showTimetable(const QString &result)
{
    if (lbltimetable)
        lbltimetable->display(result);
}

void StatusBar::showAnswer(const QString &answer)
{
    lblanswer->display(answer);
}

void StatusBar::showBook(const QString &text)
{
    if (lblbook)
        lblbook->display(text);
}
