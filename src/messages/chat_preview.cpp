// SPDX-License-Identifier: MIT
#include "chat_preview.h"

#include <QLineEdit>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int edge = 4; // pixels between the text and the edges of the ground
constexpr int mostLines = 3;
constexpr qsizetype longestShown = 1000; // characters; a server reads no more of a command

} // namespace

ChatPreview::ChatPreview(QWidget *parent) : QLabel(parent)
{
    setObjectName(u"lblpreview"_s);
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    // It takes what width there is: a long line must not widen the window.
    QSizePolicy policy(QSizePolicy::Ignored, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    QPalette colours; // of the game, whatever those of the desktop are
    colours.setColor(QPalette::WindowText, chatColour(7));
    colours.setColor(QPalette::Window, chatGround(chatColour(7)));
    setPalette(colours);
    setAutoFillBackground(true);
}

void ChatPreview::showLine(const QString &line)
{
    runs = chatRuns(line);
    qsizetype surplus = -longestShown; // the end is what is being typed
    for (const ChatRun &run : std::as_const(runs))
        surplus += run.text.size();
    for (; !runs.isEmpty() && surplus >= runs.first().text.size(); runs.removeFirst())
        surplus -= runs.first().text.size();
    if (surplus > 0)
        runs.first().text.remove(0, surplus);
    QString seen;
    for (const ChatRun &run : std::as_const(runs))
        seen += run.text;
    setText(seen);
    setAccessibleName(u"Players will read: "_s + seen);
    update(); // also when only a colour has changed
}

void ChatPreview::follow(QLineEdit *typed, const std::function<QString(const QString &)> &lineOf)
{
    showLine(lineOf(typed->text()));
    connect(typed, &QLineEdit::textChanged, this, [this, lineOf](const QString &text) { showLine(lineOf(text)); });
}

void ChatPreview::keepRoom()
{
    setMinimumHeight(mostLines * fontMetrics().height() + 2 * edge);
}

int ChatPreview::heightForWidth(int width) const
{
    QTextLayout layout;
    const int line = fontMetrics().height();
    return std::clamp(layOut(layout, width), line, mostLines * line) + 2 * edge;
}

QSize ChatPreview::sizeHint() const
{
    return minimumSizeHint();
}

QSize ChatPreview::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 20, fontMetrics().height() + 2 * edge};
}

void ChatPreview::paintEvent(QPaintEvent *)
{
    QTextLayout layout;
    const int room = height() - 2 * edge;
    const int wanted = layOut(layout, width());
    QPainter painter(this);
    painter.setClipRect(rect().adjusted(0, edge, 0, -edge));
    layout.draw(&painter, QPointF(edge, edge + std::min(room - wanted, 0)));
}

// Gives the layout the text in its colours and in lines of that width. Returns the height of all lines.
int ChatPreview::layOut(QTextLayout &layout, int width) const
{
    QList<QTextLayout::FormatRange> formats;
    QString seen;
    for (const ChatRun &run : runs) {
        QTextCharFormat format;
        format.setForeground(run.colour);
        if (const QColor ground = chatGround(run.colour); ground != palette().color(QPalette::Window))
            format.setBackground(ground);
        formats.append({static_cast<int>(seen.size()), static_cast<int>(run.text.size()), format});
        seen += run.text;
    }
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setText(seen);
    layout.setFont(font());
    layout.setFormats(formats);
    layout.setTextOption(option);
    qreal bottom = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(std::max(width - 2 * edge, 1));
        line.setPosition({0, bottom});
        bottom += line.height();
    }
    layout.endLayout();
    return static_cast<int>(std::ceil(bottom));
}
