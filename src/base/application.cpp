// SPDX-License-Identifier: MIT
#include "application.h"

#include "fault.h"
#include "keys.h"
#include "plain_frames.h"
#include "prompts.h"

#include <QAbstractButton>
#include <QPointer>

#include <exception>

namespace {

void letGoOfButtons()
{
    for (QWidget *widget : QApplication::allWidgets()) {
        if (auto *button = qobject_cast<QAbstractButton *>(widget))
            button->setDown(false);
    }
}

} // namespace

Application::Application(int &argc, char **argv) : QApplication(argc, argv)
{
    if (style()->name() == u"fusion")
        setStyle(new PlainFrames);
}

// A press moves the focus first, so that the handler of the control that is left may show a box before the button gets
// its press. Or the button is down already, and the box comes from a timer.
bool Application::notify(QObject *receiver, QEvent *event)
{
    const bool isPress = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    const QPointer<QAbstractButton> pressed = isPress ? qobject_cast<QAbstractButton *>(receiver) : nullptr;
    const int before = blockings;
    if (event->type() == QEvent::WindowBlocked) {
        ++blockings;
        letGoOfButtons();
    }
    const bool isTaken = notifyTrapped(receiver, event);
    if (pressed && blockings != before)
        pressed->setDown(false);
    return isTaken;
}

bool Application::notifyTrapped(QObject *receiver, QEvent *event)
{
    try {
        return keyTaken(receiver, event) || QApplication::notify(receiver, event);
    } catch (const Fault &fault) {
        if (prompts)
            prompts->showFault(fault);
    } catch (const std::exception &exception) {
        if (prompts)
            prompts->showFault({0, QString::fromUtf8(exception.what())});
    }
    return true;
}
