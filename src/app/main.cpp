// SPDX-License-Identifier: MIT
#include "base/application.h"
#include "base/clock.h"
#include "base/console.h"
#include "base/dialog_prompts.h"
#include "base/first_paint.h"
#include "composition.h"
#include "ledger/check_window.h"
#include "program_icon.h"

#include <QCommandLineParser>
#include <QDir>
#include <QTextStream>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

void declare(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        u"Administers a Call of Duty 2 game server over its remote console. Settings and logs are kept in the\n"
        "folder in which it is started."_s);
    parser.addOptions({
        {{u"h"_s, u"help"_s}, u"Print this help."_s},
        {{u"v"_s, u"version"_s}, u"Print the version."_s},
    });
}

// The options with two dashes or with one letter. Those of Qt are words behind one dash, and the application object
// takes them out.
QStringList ownOptions(int argc, char **argv)
{
    QStringList options;
    for (int argument = 1; argument < argc; ++argument) {
        const QString option = QString::fromLocal8Bit(argv[argument]);
        if (option.startsWith(u"--") || (option.startsWith(u'-') && option.size() == 2))
            options.append(option);
    }
    return options;
}

bool isCheckLookingUp()
{
    return std::ranges::any_of(QApplication::topLevelWidgets(), [](const QWidget *window) {
        const auto *check = qobject_cast<const CheckWindow *>(window);
        return check && check->isLookingUp();
    });
}

int tell(const QString &text)
{
    joinConsole();
    QTextStream(stdout) << text;
    return EXIT_SUCCESS;
}

int refuse(const QString &option)
{
    joinConsole();
    QTextStream(stderr) << "molvark: unknown option " << option << "; --help shows the options\n";
    return EXIT_FAILURE;
}

// The status with which the program ends at once, because it was asked for a text or for something that it does not
// know. That needs no display.
std::optional<int> answerOptions(int argc, char **argv)
{
    QCommandLineParser parser;
    declare(parser);
    const QStringList options = ownOptions(argc, argv);
    const auto isUnknown = [&parser](const QString &option) { return !parser.parse({QString(), option}); };
    if (const auto unknown = std::ranges::find_if(options, isUnknown); unknown != options.end())
        return refuse(*unknown);
    parser.parse(QStringList{QString()} + options);
    if (parser.isSet(u"help"_s)) {
        const QCoreApplication named(argc, argv); // The help begins with the name of the program, which this one knows.
        return tell(parser.helpText());
    }
    if (parser.isSet(u"version"_s))
        return tell(u"molvark " MOLVARK_VERSION "\n"_s);
    return std::nullopt;
}

} // namespace

int main(int argc, char *argv[])
{
    if (const std::optional<int> status = answerOptions(argc, argv))
        return *status;
    Application application(argc, argv);
    if (const QStringList arguments = QApplication::arguments(); arguments.size() > 1)
        return refuse(arguments.at(1));
    QApplication::setApplicationName(u"Molvark"_s);
    QApplication::setApplicationVersion(QStringLiteral(MOLVARK_VERSION));
    QApplication::setQuitOnLastWindowClosed(false); // closing the main window is what ends the run

    DialogPrompts prompts;
    application.setPrompts(&prompts);
    const Clock clock;
    // The settings file is that of the folder in which the program is started, not of the folder where it lies.
    Composition program(prompts, clock, QDir::toNativeSeparators(QDir::currentPath() + u"/molvark.ini"_s));
    QObject::connect(&program.window, &MainWindow::closed, &application, &QApplication::quit);
    program.window.show();
    // The event loop does the rest, because connecting at start waits inside it and the window can be closed meanwhile.
    // The icon too would hold up the window: it is the first picture that is read.
    afterFirstPaint(&program.window, 500ms, [&program] {
        QApplication::setWindowIcon(programIcon());
        program.window.Form_Load();
    });
    const int status = QApplication::exec();
    // Everything is saved by now. A name server that does not answer would hold the process for as long as it likes.
    if (program.udpclient.isLookingUp() || isCheckLookingUp())
        std::_Exit(status);
    return status;
}
