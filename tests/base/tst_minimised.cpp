// SPDX-License-Identifier: MIT
#include "activation.h"
#include "base/focus.h"
#include "program.h"
#include "window_test.h"

using namespace Qt::StringLiterals;

class MinimisedTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void anOpenWindowIsNotMinimised()
    {
        Program program;
        program.start();
        QVERIFY(!programMinimised());
        setActiveWindow(nullptr);
        QVERIFY(!programMinimised());
    }

    void aProgramWithoutAWindowIsNotMinimised() { QVERIFY(!programMinimised()); }

    void theActiveWindowIsMinimised()
    {
        Program program;
        program.start();
        program.window.showMinimized();
        setActiveWindow(&program.window);
        QVERIFY(programMinimised());
        program.window.showNormal();
        setActiveWindow(&program.window);
        QVERIFY(!programMinimised());
    }

    void theMainWindowIsMinimisedAndNoWindowIsActive()
    {
        Program program;
        program.start();
        program.window.showMinimized();
        setActiveWindow(nullptr);
        QVERIFY(programMinimised());
    }

    void anotherActiveWindowCountsAboveTheMinimisedMainWindow()
    {
        Program program;
        program.start();
        QWidget preferences;
        preferences.show();
        program.window.showMinimized();
        setActiveWindow(&preferences);
        QVERIFY(!programMinimised());
    }

    void aMinimisedWindowThatIsNotTheMainWindowAndNotActiveDoesNotCount()
    {
        Program program;
        program.start();
        QWidget preferences;
        preferences.showMinimized();
        setActiveWindow(nullptr);
        QVERIFY(!programMinimised());
    }
};

WINDOW_TEST(MinimisedTest)
#include "tst_minimised.moc"
