// SPDX-License-Identifier: MIT
#include "base/application.h"
#include "base/clock.h"
#include "base/console.h"
#include "base/dialog_prompts.h"
#include "base/first_paint.h"
#include "composition.h"
#include "program_icon.h"

#include <QDir>
#include <QTextStream>

#include <algorithm>
#include <chrono>
#include <cstdlib>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// Text that a person asked for instead of the window; it needs no display.
QString notice(const QStringList &arguments)
{
    QString text;
    QTextStream out(&text);
    if (arguments.contains(u"--version"_s) || arguments.contains(u"-v"_s))
        out << "molvark " MOLVARK_VERSION "\n";
    else if (arguments.contains(u"--help"_s) || arguments.contains(u"-h"_s))
        out << "Usage: molvark [options]\n"
               "Administers a Call of Duty 2 game server over its remote console. Settings and logs are kept in the\n"
               "folder in which it is started.\n\n"
               "  -h, --help     Show this help and exit\n"
               "  -v, --version  Show the version and exit\n";
    return text;
}

int refuse(const QString &option)
{
    joinConsole();
    QTextStream(stderr) << "molvark: unknown option " << option << "; --help shows the options\n";
    return EXIT_FAILURE;
}

} // namespace

int main(int argc, char *argv[])
{
    QStringList asked;
    for (int argument = 1; argument < argc; ++argument)
        asked.append(QString::fromLocal8Bit(argv[argument]));
    const QString text = asked.size() == 1 ? notice(asked) : QString();
    if (!text.isEmpty()) {
        joinConsole();
        QTextStream(stdout) << text;
        return EXIT_SUCCESS;
    }
    // Options of Qt's own begin with one dash and are taken out by the application object.
    const auto isForeign = [](const QString &argument) { return argument.startsWith(u"--"); };
    if (const auto foreign = std::ranges::find_if(asked, isForeign); foreign != asked.end())
        return refuse(*foreign);
    Application application(argc, argv);
    if (const QStringList arguments = QApplication::arguments(); arguments.size() > 1)
        return refuse(arguments.at(1));
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
    // From the event loop, because connecting at start waits inside it and the window can be closed meanwhile. The icon
    // too would hold up the window: it is the first picture that is read.
    afterFirstPaint(&program.window, 500ms, [&program] {
        QApplication::setWindowIcon(programIcon());
        program.window.Form_Load();
    });
    const int status = QApplication::exec();
    // Everything is saved. A name server that does not answer would hold the process for as long as it likes.
    if (program.udpclient.isLookingUp())
        std::_Exit(status);
    return status;
}
