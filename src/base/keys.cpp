// SPDX-License-Identifier: MIT
#include "keys.h"

#include <QComboBox>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>

namespace {

bool isEnter(const QKeyEvent &key)
{
    const bool isPlain = (key.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    return isPlain && (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter);
}

bool pressesButton(QObject *receiver, const QKeyEvent &key)
{
    auto *button = qobject_cast<QPushButton *>(receiver);
    // Dialogs have keys of their own for Enter.
    if (!button || !isEnter(key) || qobject_cast<QDialog *>(button->window()))
        return false;
    if (!key.isAutoRepeat())
        button->click();
    return true;
}

// AltGr comes without Alt, or with Ctrl too; those type what they type.
bool typesNothing(QObject *receiver, const QKeyEvent &key)
{
    const bool isAlt = (key.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::AltModifier;
    const bool isText = !key.text().isEmpty() && key.text().front().isPrint();
    const auto *combo = qobject_cast<QComboBox *>(receiver); // it hands the keys on to its line by itself
    return isAlt && isText &&
           (qobject_cast<QLineEdit *>(receiver) || qobject_cast<QPlainTextEdit *>(receiver) ||
            (combo && combo->isEditable()));
}

/// Enter reaches the window when nothing in it has taken it.
class DefaultKey final : public QObject {
public:
    DefaultKey(QWidget &window, QPushButton &button_) : QObject(&window), button(button_)
    {
        window.installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() != QEvent::KeyPress || !isEnter(*static_cast<QKeyEvent *>(event)))
            return false;
        if (!static_cast<QKeyEvent *>(event)->isAutoRepeat())
            button.click();
        return true;
    }

private:
    QPushButton &button;
};

} // namespace

bool keyTaken(QObject *receiver, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto &key = *static_cast<QKeyEvent *>(event);
    return pressesButton(receiver, key) || typesNothing(receiver, key);
}

void addDefaultButton(QWidget &window, QPushButton &button)
{
    button.setDefault(true);
    new DefaultKey(window, button);
}

void addCloseKey(QWidget &window)
{
    QObject::connect(new QShortcut(Qt::Key_Escape, &window), &QShortcut::activated, &window, &QWidget::close);
}
