// SPDX-License-Identifier: MIT
#include "rcon_pane.h"

#include "base/first_paint.h"

#include <QFontDatabase>
#include <QScrollBar>
#include <QStringMatcher>
#include <QTextBlock>
#include <QWheelEvent>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// A line without end would be laid out anew, as a whole, with each text added to it. It is shown in blocks of this many
// characters instead, and the blocks that only continue a line are marked.
constexpr qsizetype longestBlock = 2000;
constexpr int continued = 1;

// How far a place in a line is from the line's beginning: each further block has a boundary before it.
int inBlocks(qsizetype place)
{
    return static_cast<int>(place + place / longestBlock);
}

QFont tableFont()
{
    QFont bold = QFontDatabase::systemFont(QFontDatabase::FixedFont); // the server's tables are made of columns
    bold.setPointSize(10);
    bold.setBold(true);
    return bold;
}

} // namespace

RconPane::RconPane(QWidget *parent) : QPlainTextEdit(parent)
{
    setReadOnly(true);
    setTabChangesFocus(true);
    setUndoRedoEnabled(false);
    setLineWrapMode(NoWrap); // the rows of the server's tables stay rows

    // Looking for the font would hold up the start, and nothing shows it before there is text.
    afterFirstPaint(this, 500ms, [this] { setFont(tableFont()); });

    QPalette colours = palette();
    colours.setColor(QPalette::Base, QColor(0x1E, 0x1E, 0x1E));
    colours.setColor(QPalette::Text, QColor(255, 255, 0));
    setPalette(colours);

    // The range grows only when the new lines have been laid out, some time after they were added.
    QScrollBar *bar = verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this, [this, bar] { following = bar->value() == bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [this, bar] {
        if (following)
            bar->setValue(bar->maximum());
    });
}

void RconPane::append(const QString &text)
{
    if (document()->isEmpty())
        setFont(tableFont()); // also when the pane has not been painted yet
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    end.beginEditBlock();
    for (QStringView rest = text; !rest.isEmpty();) {
        const qsizetype room = longestBlock - end.positionInBlock();
        if (room <= 0) {
            end.insertBlock();
            end.block().setUserState(continued);
            continue;
        }
        const qsizetype lineEnd = rest.indexOf(u'\n');
        const qsizetype piece = lineEnd >= 0 && lineEnd <= room ? lineEnd + 1 : std::min(room, rest.size());
        end.insertText(rest.first(piece).toString());
        rest = rest.sliced(piece);
    }
    end.endEditBlock();
}

QString RconPane::text() const
{
    QString history;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockNumber() > 0 && block.userState() != continued)
            history += u"\r\n"_s;
        history += block.text();
    }
    return history;
}

QList<int> RconPane::occurrences(const QString &wanted) const
{
    QList<int> found;
    if (wanted.isEmpty())
        return found;
    const QStringMatcher matcher(wanted, Qt::CaseInsensitive);
    for (QTextBlock block = document()->begin(); block.isValid();) {
        const int start = block.position();
        QString line = block.text();
        for (block = block.next(); block.isValid() && block.userState() == continued; block = block.next())
            line += block.text();
        for (qsizetype at = matcher.indexIn(line); at >= 0; at = matcher.indexIn(line, at + wanted.size()))
            found.append(start + inBlocks(at));
    }
    return found;
}

void RconPane::selectText(int position, int length)
{
    QTextCursor cursor(document());
    cursor.setPosition(position);
    cursor.setPosition(position + inBlocks(cursor.positionInBlock() + length) - inBlocks(cursor.positionInBlock()),
                       QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

void RconPane::wheelEvent(QWheelEvent *event)
{
    if (event->modifiers() & Qt::ControlModifier)
        event->ignore(); // would change the size of the text
    else
        QPlainTextEdit::wheelEvent(event);
}
