// SPDX-License-Identifier: MIT
#include "focus.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

bool isControl(const QWidget *widget)
{
    if (!widget || qobject_cast<const QMenu *>(widget) || qobject_cast<const QMenuBar *>(widget))
        return false;
    const QWidget *window = widget->window();
    return window->windowType() != Qt::Popup && !qobject_cast<const QDialog *>(window);
}

} // namespace

void onLostFocus(QWidget *control, const std::function<void()> &handler)
{
    const auto holdsFocus = std::make_shared<bool>(control->hasFocus());
    QObject::connect(qApp, &QApplication::focusChanged, control, [=](QWidget *, QWidget *now) {
        if (!isControl(now))
            return;
        const bool held = std::exchange(*holdsFocus, now == control);
        if (held && now != control)
            handler();
    });
}

void pressTab(QWidget *receiver)
{
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier, u"\t"_s);
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Tab, Qt::NoModifier, u"\t"_s);
    QApplication::sendEvent(receiver, &press);
    QApplication::sendEvent(receiver, &release);
}

QWidget *programWindow()
{
    if (QWidget *active = QApplication::activeWindow())
        return active;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (qobject_cast<QMainWindow *>(window))
            return window;
    }
    return nullptr;
}

bool programMinimised()
{
    const QWidget *window = programWindow();
    return window && window->isMinimized();
}
