// SPDX-License-Identifier: MIT
#include "rcon_pane.h"

#include "base/context_menu.h"
#include "base/first_paint.h"

#include <QContextMenuEvent>
#include <QFontDatabase>
#include <QMenu>
#include <QMimeData>
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

constexpr QChar commandMark(0x18);

/// Of characters that are there and are not seen, also when they are selected.
QTextCharFormat unseen()
{
    QTextCharFormat format;
    format.setFontPointSize(0.05);
    format.setFontLetterSpacingType(QFont::PercentageSpacing);
    format.setFontLetterSpacing(0.02); // 0 would be taken for none
    format.setForeground(Qt::transparent);
    return format;
}

/// Inserts `text`, which is a line or a part of one. The first and the last mark in it frame a command.
void insertFramed(QTextCursor &place, const QString &text)
{
    qsizetype done = 0;
    for (const qsizetype mark : {text.indexOf(commandMark), text.lastIndexOf(commandMark)}) {
        if (mark < done)
            continue; // there is none, or only one
        place.insertText(text.sliced(done, mark - done), {});
        place.insertText(commandMark, unseen());
        done = mark + 1;
    }
    place.insertText(text.sliced(done), {});
}

/// The pane is dark in every theme. All other colours are those of the theme, whatever it changes to.
QPalette darkGround()
{
    QPalette colours;
    colours.setResolveMask(0); // the roles that follow the theme
    colours.setColor(QPalette::Base, QColor(0x1E, 0x1E, 0x1E));
    colours.setColor(QPalette::Text, QColor(255, 255, 0));
    colours.setColor(QPalette::PlaceholderText, QColor(0xB4, 0xB4, 0x8C));
    colours.setColor(QPalette::WindowText, QColor(0x80, 0x80, 0x80)); // the edge, seen beside light and dark windows
    return colours;
}

/// Takes the marks, which nobody sees, out of `line`. Returns where they stood.
QList<qsizetype> takeMarks(QString &line)
{
    QList<qsizetype> places;
    for (qsizetype at = line.indexOf(commandMark); at >= 0; at = line.indexOf(commandMark, at + 1))
        places.append(at);
    if (!places.isEmpty())
        line.remove(commandMark);
    return places;
}

/// The place in a line that is at `place` when its marks have been taken out.
qsizetype behindMarks(qsizetype place, const QList<qsizetype> &marks)
{
    for (const qsizetype mark : marks) {
        if (mark > place)
            break;
        ++place;
    }
    return place;
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
    setPlaceholderText(u"What is sent to the server and what it answers"_s);

    // Looking for the font would hold up the start, and only the placeholder shows it before there is text.
    afterFirstPaint(this, 500ms, [this] { setFont(tableFont()); });

    setPalette(darkGround());
    setFrameStyle(QFrame::Box | QFrame::Plain);

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
    bool isFramed = false;
    for (QStringView rest = text; !rest.isEmpty();) {
        const qsizetype room = longestBlock - end.positionInBlock();
        if (room <= 0) {
            end.insertBlock();
            end.block().setUserState(continued);
            continue;
        }
        const qsizetype lineEnd = rest.indexOf(u'\n');
        const qsizetype piece = lineEnd >= 0 && lineEnd <= room ? lineEnd + 1 : std::min(room, rest.size());
        const QString line = rest.first(piece).toString();
        // The program's own echo is one line. A server that sends thousands of marked ones gets nothing out of it.
        if (!isFramed && line.contains(commandMark)) {
            isFramed = true;
            insertFramed(end, line);
        } else {
            end.insertText(line, {});
        }
        rest = rest.sliced(piece);
    }
    end.endEditBlock();
}

QString RconPane::text() const
{
    return textBetween(0, document()->characterCount(), u"\r\n");
}

QString RconPane::textBetween(int start, int end, QStringView lineEnd) const
{
    QString between;
    for (QTextBlock block = document()->findBlock(start); block.isValid() && block.position() <= end;
         block = block.next()) {
        if (block.position() > start && block.userState() != continued)
            between += lineEnd;
        const int from = std::max(start - block.position(), 0);
        between += QStringView(block.text()).first(std::min(end - block.position(), block.length() - 1)).sliced(from);
    }
    return between;
}

// What is pasted into a chat or a forum is what was seen.
QMimeData *RconPane::createMimeDataFromSelection() const
{
    const QTextCursor selection = textCursor();
    auto *copied = new QMimeData;
    copied->setText(textBetween(selection.selectionStart(), selection.selectionEnd(), u"\n").remove(commandMark));
    return copied;
}

void RconPane::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu *menu = newContextMenu(this);
    addMenuItem(menu, u"actcopy"_s, u"&Copy"_s, textCursor().hasSelection(), [this] { copy(); });
    addMenuItem(menu, u"actcopyall"_s, u"Copy &all"_s, !document()->isEmpty(),
                [this] { copyText(textBetween(0, document()->characterCount(), u"\n").remove(commandMark)); });
    menu->addSeparator();
    menu->addActions(menuActions);
    // For the menu key the place is that of the text cursor, which may have been scrolled away.
    const bool isSeen = viewport()->rect().contains(event->pos());
    menu->popup(isSeen ? event->globalPos() : mapToGlobal(rect().center()));
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
        const QList<qsizetype> places = takeMarks(line);
        for (qsizetype at = matcher.indexIn(line); at >= 0; at = matcher.indexIn(line, at + wanted.size()))
            found.append(start + inBlocks(behindMarks(at, places)));
    }
    return found;
}

void RconPane::selectText(int position, int length)
{
    QTextCursor cursor(document());
    cursor.setPosition(position);
    for (int seen = 0; seen < length && !cursor.atEnd();) {
        const QChar next = document()->characterAt(cursor.position());
        seen += next == commandMark || next == QChar::ParagraphSeparator ? 0 : 1;
        cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
    }
    setTextCursor(cursor);
}

void RconPane::wheelEvent(QWheelEvent *event)
{
    if (event->modifiers() & Qt::ControlModifier)
        event->ignore(); // would change the size of the text
    else
        QPlainTextEdit::wheelEvent(event);
}
