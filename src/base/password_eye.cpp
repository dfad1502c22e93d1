// SPDX-License-Identifier: MIT
#include "password_eye.h"

#include "first_paint.h"

#include <QAction>
#include <QIconEngine>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPainterPath>
#include <QToolButton>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// An eye in the line's own text colour, struck through while it would hide the text. It is drawn when it is seen, so
/// it fits every size and follows the desktop's colours.
class EyeIcon final : public QIconEngine {
public:
    explicit EyeIcon(const QLineEdit &line_) : line(line_) {}

    void paint(QPainter *painter, const QRect &place, QIcon::Mode mode, QIcon::State) override
    {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(place.topLeft());
        painter->scale(place.width() / 16.0, place.height() / 16.0);
        painter->setPen(QPen(line.palette().color(group, QPalette::Text), 1.3, Qt::SolidLine, Qt::RoundCap));
        drawEye(*painter);
        if (line.echoMode() == QLineEdit::Normal)
            painter->drawLine(QPointF(3, 13.5), QPointF(13, 2.5));
        painter->restore();
    }

    [[nodiscard]] QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, picture.rect(), mode, state);
        return picture;
    }

    [[nodiscard]] QIconEngine *clone() const override { return new EyeIcon(line); }

private:
    // On a square of 16 units.
    static void drawEye(QPainter &painter)
    {
        QPainterPath lids(QPointF(1.5, 8));
        lids.quadTo(8, 0.5, 14.5, 8);
        lids.quadTo(8, 15.5, 1.5, 8);
        painter.drawPath(lids);
        painter.setBrush(painter.pen().color());
        painter.drawEllipse(QPointF(8, 8), 1.7, 1.7);
    }

    const QLineEdit &line;
};

void showMenu(QLineEdit *line, QAction *eye, QPoint place)
{
    QMenu *menu = line->createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addSeparator();
    menu->addAction(eye);
    menu->popup(line->mapToGlobal(place));
}

void addEye(QLineEdit *line)
{
    auto *eye = new QAction(QIcon(new EyeIcon(*line)), u"Show password"_s, line);
    eye->setObjectName(u"acteye"_s);
    eye->setCheckable(true);
    eye->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_H));
    eye->setShortcutContext(Qt::WidgetShortcut);
    line->addAction(eye, QLineEdit::TrailingPosition);
    for (QObject *shown : eye->associatedObjects()) {
        if (auto *button = qobject_cast<QToolButton *>(shown))
            button->setObjectName(u"cmdeye"_s);
    }
    QObject::connect(eye, &QAction::toggled, line,
                     [line](bool on) { line->setEchoMode(on ? QLineEdit::Normal : QLineEdit::Password); });
    line->setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(line, &QWidget::customContextMenuRequested, line,
                     [line, eye](QPoint place) { showMenu(line, eye, place); });
}

} // namespace

void addPasswordEye(QLineEdit *line)
{
    line->setEchoMode(QLineEdit::Password);
    afterFirstPaint(line, 500ms, [line] { addEye(line); }); // it would hold up the window
}
