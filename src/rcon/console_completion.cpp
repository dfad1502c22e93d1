// SPDX-License-Identifier: MIT
#include "console_completion.h"

#include "base/controls.h"
#include "completion_popup.h"
#include "console_words.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScopedValueRollback>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype lettersToOpen = 3;

bool isPlain(const QKeyEvent &key)
{
    return (key.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
}

} // namespace

ConsoleCompletion::ConsoleCompletion(ComboBox &line_, ConsoleWords &words_, std::function<QStringList()> history_)
    : QObject(&line_), line(line_), words(words_), history(std::move(history_))
{
    line.installEventFilter(this);
    const QLineEdit *edit = line.lineEdit();
    connect(edit, &QLineEdit::textEdited, this, [this] { isTyping = true; });
    connect(edit, &QLineEdit::textChanged, this, &ConsoleCompletion::takeEdit);
    connect(edit, &QLineEdit::cursorPositionChanged, this, [this] { update(Opens::No); });
    connect(edit, &QLineEdit::selectionChanged, this, [this] { update(Opens::No); });
}

// What the program puts into the line is nothing to be completed.
void ConsoleCompletion::takeEdit()
{
    const qsizetype length = line.currentText().size();
    const bool hasGrown = length > std::exchange(lengthBefore, length);
    if (std::exchange(isTyping, false))
        update(hasGrown ? Opens::ByTyping : Opens::No);
    else
        close();
}

void ConsoleCompletion::update(Opens opens)
{
    if (isChoosing || (!isOpen() && opens == Opens::No))
        return;
    const QLineEdit &edit = *line.lineEdit();
    if (edit.hasSelectedText() && opens != Opens::Anyway)
        return close();
    const QString text = edit.text();
    word = typedWord(text, edit.cursorPosition());
    const bool isShort = word.typed.size() < lettersToOpen;
    if (isShort || word.begin != dismissedAt)
        dismissedAt = -1;
    const bool isUnwanted = isShort || (!isOpen() && dismissedAt >= 0);
    isWanted = isWanted || opens == Opens::Anyway;
    const QList<Completion> found =
        isUnwanted && !isWanted ? QList<Completion>() : completions(word, text, words.words(), history());
    if (found.isEmpty())
        close();
    else
        show(found);
}

void ConsoleCompletion::show(const QList<Completion> &found)
{
    if (!popup) {
        popup = new CompletionPopup(*line.window(), [this](const Completion &each) { return words.description(each); });
        connect(popup, &CompletionPopup::clicked, this, &ConsoleCompletion::choose);
    }
    if (!isOpen())
        qApp->installEventFilter(this); // a click beside the list closes it
    popup->open(found, QRect(line.mapTo(line.window(), QPoint()), line.size()));
}

void ConsoleCompletion::close()
{
    isWanted = false;
    if (!isOpen())
        return;
    qApp->removeEventFilter(this);
    popup->hide();
}

bool ConsoleCompletion::isOpen() const
{
    return popup && !popup->isHidden();
}

bool ConsoleCompletion::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == &line)
        return filterLine(*event);
    const auto *widget = qobject_cast<const QWidget *>(watched);
    const bool isPress = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (widget && isPress && !popup->isAncestorOf(widget) && !line.isAncestorOf(widget))
        close();
    else if (watched == line.window() && event->type() == QEvent::Resize)
        close();
    return false;
}

bool ConsoleCompletion::filterLine(QEvent &event)
{
    switch (event.type()) {
    case QEvent::ShortcutOverride: {
        const auto &key = static_cast<const QKeyEvent &>(event);
        const bool isMine = isOpen() && key.key() == Qt::Key_Escape && isPlain(key);
        if (isMine)
            event.accept(); // else the window's own Esc would be first
        return isMine;
    }
    case QEvent::KeyPress:
        return takeKey(static_cast<const QKeyEvent &>(event));
    case QEvent::FocusOut:
    case QEvent::Hide:
    case QEvent::Move:
    case QEvent::Resize:
        close();
        return false;
    default:
        return false;
    }
}

bool ConsoleCompletion::takeKey(const QKeyEvent &key)
{
    if (key.key() == Qt::Key_Space && key.modifiers() == Qt::ControlModifier) {
        update(Opens::Anyway);
        return true;
    }
    if (!isOpen() || !isPlain(key))
        return false;
    switch (key.key()) {
    case Qt::Key_Escape:
        dismissedAt = word.begin;
        close();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        close();
        return false;
    case Qt::Key_Tab:
        if (const std::optional<Completion> choice = popup->chosen()) {
            choose(*choice);
            return true;
        }
        return false;
    default:
        return stepBy(key.key());
    }
}

bool ConsoleCompletion::stepBy(int key)
{
    switch (key) {
    case Qt::Key_Down:
        popup->step(1);
        return true;
    case Qt::Key_Up:
        popup->step(-1);
        return true;
    case Qt::Key_PageDown:
        popup->stepPages(1);
        return true;
    case Qt::Key_PageUp:
        popup->stepPages(-1);
        return true;
    default:
        return false;
    }
}

// In one edit, so that one Ctrl+Z takes it back. The list does not come up again for what it has brought.
void ConsoleCompletion::choose(const Completion &choice)
{
    QLineEdit &edit = *line.lineEdit();
    const bool isLine = choice.kind == Completion::Kind::Line;
    const qsizetype begin = isLine ? 0 : word.begin;
    const qsizetype end = isLine ? edit.text().size() : word.end;
    const QString text = choice.text;
    close();
    {
        const QScopedValueRollback choosing(isChoosing, true);
        edit.setSelection(static_cast<int>(begin), static_cast<int>(end - begin));
        edit.insert(text);
    }
    dismissedAt = typedWord(edit.text(), edit.cursorPosition()).begin;
}
