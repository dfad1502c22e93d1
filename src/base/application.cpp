// SPDX-License-Identifier: MIT
#include "application.h"

#include "fault.h"
#include "plain_frames.h"
#include "prompts.h"

#include <exception>

Application::Application(int &argc, char **argv) : QApplication(argc, argv)
{
    if (style()->name() == u"fusion")
        setStyle(new PlainFrames);
}

bool Application::notify(QObject *receiver, QEvent *event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (const Fault &fault) {
        if (prompts)
            prompts->showFault(fault);
    } catch (const std::exception &exception) {
        if (prompts)
            prompts->showFault({0, QString::fromUtf8(exception.what())});
    }
    return true;
}
