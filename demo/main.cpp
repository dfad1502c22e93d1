// SPDX-License-Identifier: MIT
#include "app/composition.h"
#include "base/application.h"
#include "base/clock.h"
#include "past_evenings.h"
#include "telling_prompts.h"
#include "tour.h"

#include <QDir>
#include <QTimer>

using namespace Qt::StringLiterals;

// molvark-tour FOLDER: the program as it starts in the current folder, but walking through itself and then ending.
// Exit status 0 when every step of the walk succeeded.
int main(int argc, char *argv[])
{
    Application application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QString folder = QApplication::arguments().value(1, u"."_s);

    const IniFile settings(u"molvark.ini"_s);
    writePastEvenings(settings.read(u"options"_s, u"autoconnectserv"_s, 30) + u':' +
                      settings.read(u"options"_s, u"autoconnectport"_s, 7));

    TellingPrompts prompts;
    application.setPrompts(&prompts);
    const Clock clock;
    Composition program(prompts, clock, QDir::toNativeSeparators(QDir::currentPath() + u"/molvark.ini"_s));
    program.window.show();

    bool succeeded = false;
    QTimer::singleShot(0, &program.window, [&] {
        Tour tour(program.window, folder);
        succeeded = tour.showFirstWindow();
        program.window.Form_Load();
        succeeded = tour.walk() && succeeded;
        program.window.close();
        succeeded = succeeded && !prompts.haveTold();
        QApplication::quit();
    });
    QApplication::exec();
    return succeeded ? EXIT_SUCCESS : EXIT_FAILURE;
}
