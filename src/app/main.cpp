// SPDX-License-Identifier: MIT
#include "base/application.h"
#include "base/clock.h"
#include "base/dialog_prompts.h"
#include "composition.h"

#include <QDir>
#include <QTimer>

#include <cstdlib>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    Application application(argc, argv);
    QApplication::setApplicationName(u"Molvark"_s);
    QApplication::setApplicationVersion(QStringLiteral(MOLVARK_VERSION));
    QApplication::setQuitOnLastWindowClosed(false); // closing the main window is what ends the run

    DialogPrompts prompts;
    application.setPrompts(&prompts);
    const Clock clock;
    // The settings file of the folder that the program is started in, not of the folder where it lies.
    Composition program(prompts, clock, QDir::toNativeSeparators(QDir::currentPath() + u"/molvark.ini"_s));
    QObject::connect(&program.window, &MainWindow::closed, &application, &QApplication::quit);
    program.window.show();
    // From the event loop, because connecting at start waits inside it and the window can be closed meanwhile.
    QTimer::singleShot(0, &program.window, &MainWindow::Form_Load);
    const int status = QApplication::exec();
    // Everything is saved. A name server that does not answer would hold the process for as long as it likes.
    if (program.udpclient.isLookingUp())
        std::_Exit(status);
    return status;
}
