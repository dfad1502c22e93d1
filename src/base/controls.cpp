// SPDX-License-Identifier: MIT
#include "controls.h"

#include "numbers.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyleOptionButton>
#include <QStyleOptionFocusRect>
#include <QStylePainter>
#include <QToolTip>
#include <QValidator>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// Lets every text pass, but with a blank for each line break.
class OneLine final : public QValidator {
public:
    using QValidator::QValidator;

    State validate(QString &input, int &position) const override
    {
        const qsizetype behind = input.size() - position;
        input = oneLine(input);
        position = static_cast<int>(std::max<qsizetype>(input.size() - behind, 0));
        return Acceptable;
    }
};

/// Keeps the ground of a field that of the window around it, whichever colours the window takes on. All other colours
/// of the field stay those of the desktop.
class WindowGround final : public QObject {
public:
    explicit WindowGround(QWidget *field) : QObject(field)
    {
        field->installEventFilter(this);
        take(field);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::PaletteChange)
            take(qobject_cast<QWidget *>(watched));
        return QObject::eventFilter(watched, event);
    }

private:
    static void take(QWidget *field)
    {
        QPalette ground;
        bool differs = false;
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            const QColor colour = field->palette().color(group, QPalette::Window);
            differs = differs || field->palette().color(group, QPalette::Base) != colour;
            ground.setColor(group, QPalette::Base, colour);
        }
        if (differs) // setting them tells of a change once more
            field->setPalette(ground);
    }
};

void standOnWindow(QWidget *field, bool on)
{
    constexpr QLatin1StringView name("windowGround");
    auto *ground = field->findChild<QObject *>(name, Qt::FindDirectChildrenOnly);
    if (on && !ground) {
        (new WindowGround(field))->setObjectName(name);
    } else if (!on && ground) {
        delete ground;
        field->setPalette({});
    }
}

QAbstractSlider::SliderAction opposite(QAbstractSlider::SliderAction action)
{
    switch (action) {
    case QAbstractSlider::SliderSingleStepAdd:
        return QAbstractSlider::SliderSingleStepSub;
    case QAbstractSlider::SliderSingleStepSub:
        return QAbstractSlider::SliderSingleStepAdd;
    case QAbstractSlider::SliderPageStepAdd:
        return QAbstractSlider::SliderPageStepSub;
    case QAbstractSlider::SliderPageStepSub:
        return QAbstractSlider::SliderPageStepAdd;
    case QAbstractSlider::SliderToMinimum:
        return QAbstractSlider::SliderToMaximum;
    case QAbstractSlider::SliderToMaximum:
        return QAbstractSlider::SliderToMinimum;
    default:
        return action;
    }
}

/// How wide a box gets, in digits; 0 is what the form gives it.
struct Width {
    int least;
    int most;
};

// In the order of TextBox::Content. All numbers have one width, so that their boxes stand in columns.
constexpr std::array<Width, 4> widths{{{0, 0}, {7, 7}, {12, 32}, {0, 80}}};

/// Turns down the upper left corner of `place`: the text and the tick leave it free. The colour is that of the text, so
/// that it is seen on every ground.
void paintMark(QWidget *control, const QRect &place, QPalette::ColorRole colour)
{
    const int side = std::min(control->fontMetrics().height() * 2 / 5, place.width() * 3 / 7);
    const QPoint corner = place.topLeft();
    QPainter painter(control);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(control->palette().brush(colour));
    painter.drawPolygon(QPolygon{corner, corner + QPoint(side, 0), corner + QPoint(0, side)});
}

/// Screen readers read the tool tip where there is no description, so the description holds it.
void tellMark(QWidget *control, bool unsent)
{
    const QString change = u"Change not sent"_s;
    const QString tip = control->toolTip();
    control->setAccessibleDescription(!unsent ? QString() : tip.isEmpty() ? change : tip + u". "_s + change);
    control->update();
}

} // namespace

void BoundControl::setDataChanged(bool on)
{
    if (std::exchange(changed, on) != on)
        showDataChanged();
}

QString oneLine(QString text)
{
    return text.replace(u"\r\n"_s, u" "_s).replace(u'\r', u' ').replace(u'\n', u' ');
}

TextBox::TextBox(QWidget *parent) : QLineEdit(parent)
{
    setValidator(new OneLine(this));
    connect(this, &QLineEdit::textChanged, this, [this] { setDataChanged(true); });
}

void TextBox::showDataChanged()
{
    tellMark(this, isUnsent());
    emit datachangedset();
}

void TextBox::paintEvent(QPaintEvent *event)
{
    QLineEdit::paintEvent(event);
    if (isUnsent())
        paintMark(this, rect().adjusted(1, 1, -1, -1), QPalette::Text);
}

void TextBox::setContent(Content content)
{
    kind = content;
    boundWidth();
}

void TextBox::changeEvent(QEvent *event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        boundWidth();
}

// What holds one name is as wide as names are, what holds sentences takes what room there is.
QSize TextBox::sizeHint() const
{
    const QSize usual = QLineEdit::sizeHint();
    return kind == Name ? QSize(widthOf(widths.at(kind).most), usual.height()) : usual;
}

int TextBox::widthOf(int digits) const
{
    constexpr int usual = 17; // as many x have room in a line of the usual width
    const QFontMetrics metrics = fontMetrics();
    const int frame = QLineEdit::sizeHint().width() - usual * metrics.horizontalAdvance(u'x');
    return frame + digits * metrics.horizontalAdvance(u'0');
}

void TextBox::boundWidth()
{
    const auto [least, most] = widths.at(kind);
    if (least > 0)
        setMinimumWidth(widthOf(least));
    if (most > 0)
        setMaximumWidth(widthOf(most));
}

CheckBox::CheckBox(QWidget *parent) : QCheckBox(parent)
{
    connect(this, &QCheckBox::toggled, this, [this] { setDataChanged(true); });
}

void CheckBox::showDataChanged()
{
    tellMark(this, isUnsent());
    emit datachangedset();
}

void CheckBox::paintEvent(QPaintEvent *event)
{
    QCheckBox::paintEvent(event);
    if (!isUnsent())
        return;
    QStyleOptionButton option;
    initStyleOption(&option);
    const QRect indicator = style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, this);
    paintMark(this, indicator, QPalette::Text);
}

QString CheckBox::value() const
{
    return isChecked() ? u"1"_s : u"0"_s;
}

void CheckBox::setValue(const QString &value)
{
    setChecked(toInteger16(value) != 0);
}

QString CheckBox::toolTipAt(QPoint place) const
{
    QStyleOptionButton option;
    initStyleOption(&option);
    const bool onCaption = style()->subElementRect(QStyle::SE_CheckBoxContents, &option, this).contains(place);
    return onCaption && !captionToolTip.isEmpty() ? captionToolTip : toolTip();
}

bool CheckBox::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QCheckBox::event(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    const QString tip = toolTipAt(help->pos());
    if (tip.isEmpty()) {
        QToolTip::hideText();
        event->ignore();
    } else {
        // Only rich text is wrapped.
        QToolTip::showText(help->globalPos(), Qt::convertFromPlainText(tip, Qt::WhiteSpaceNormal), this);
    }
    return true;
}

void lockLine(QLineEdit *line, bool on)
{
    line->setReadOnly(on);
    standOnWindow(line, on);
}

ComboBox::ComboBox(QWidget *parent) : QComboBox(parent)
{
    setEditable(true);
    setCompleter(nullptr);
    setInsertPolicy(NoInsert);
}

QStringList ComboBox::entries() const
{
    QStringList texts;
    for (int entry = 0; entry < count(); ++entry)
        texts.append(itemText(entry));
    return texts;
}

void ComboBox::setLocked(bool on)
{
    lineEdit()->setReadOnly(on);
    standOnWindow(this, on); // the line takes its ground from the box
}

bool ComboBox::isLocked() const
{
    return lineEdit()->isReadOnly();
}

void ComboBox::showPopup()
{
    if (!isLocked())
        QComboBox::showPopup();
}

void ComboBox::keyPressEvent(QKeyEvent *event)
{
    // The arrow and page keys choose from the list, also while the line is read-only; a locked box hands them on.
    const bool chooses = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down || event->key() == Qt::Key_PageUp ||
                         event->key() == Qt::Key_PageDown;
    if (isLocked() && chooses)
        event->ignore();
    else
        QComboBox::keyPressEvent(event);
}

void ComboBox::wheelEvent(QWheelEvent *event)
{
    if (!isLocked())
        QComboBox::wheelEvent(event);
}

// Qt has one property for the end from which the slider is drawn, and one for the wheel and the keys, but none for the
// mouse: the lower arrow, the groove below the slider and the lower entries of the menu lead to more.
RisingScrollBar::RisingScrollBar(QWidget *parent) : QScrollBar(Qt::Vertical, parent)
{
    setInvertedAppearance(true);
    setInvertedControls(false);
    connect(this, &QAbstractSlider::actionTriggered, this, &RisingScrollBar::turn);
}

void RisingScrollBar::mousePressEvent(QMouseEvent *event)
{
    turnedRound([&] { QScrollBar::mousePressEvent(event); });
}

void RisingScrollBar::mouseMoveEvent(QMouseEvent *event)
{
    turnedRound([&] { QScrollBar::mouseMoveEvent(event); });
}

void RisingScrollBar::contextMenuEvent(QContextMenuEvent *event)
{
    turnedRound([&] { QScrollBar::contextMenuEvent(event); });
}

void RisingScrollBar::turnedRound(const std::function<void()> &handle)
{
    const SliderAction before = repeatAction();
    {
        const QScopedValueRollback turning(turns, true);
        handle();
    }
    // What an arrow or the groove goes on doing while it is held.
    if (const SliderAction after = repeatAction(); after != before)
        setRepeatAction(opposite(after));
}

void RisingScrollBar::turn(int action)
{
    if (!turns)
        return;
    switch (opposite(static_cast<SliderAction>(action))) {
    case SliderSingleStepAdd:
        return setSliderPosition(value() + singleStep());
    case SliderSingleStepSub:
        return setSliderPosition(value() - singleStep());
    case SliderPageStepAdd:
        return setSliderPosition(value() + pageStep());
    case SliderPageStepSub:
        return setSliderPosition(value() - pageStep());
    case SliderToMinimum:
        return setSliderPosition(minimum());
    case SliderToMaximum:
        return setSliderPosition(maximum());
    default:
        return;
    }
}

ClickLabel::ClickLabel(QWidget *parent) : QLabel(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
}

void ClickLabel::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        emit clicked();
}

void ClickLabel::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Space)
        emit clicked();
    else
        QLabel::keyPressEvent(event);
}

void ClickLabel::paintEvent(QPaintEvent *event)
{
    QLabel::paintEvent(event);
    if (!hasFocus())
        return;
    QStylePainter painter(this);
    QStyleOptionFocusRect mark;
    mark.initFrom(this);
    painter.drawPrimitive(QStyle::PE_FrameFocusRect, mark);
}
