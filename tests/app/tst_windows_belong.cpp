// SPDX-License-Identifier: MIT
#include "activation.h"
#include "at_request.h"
#include "connected_program.h"
#include "other_windows.h"
#include "window_test.h"

#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

const Box allFieldsBox{u"Error..."_s, u"Please provide all fields, Server, Port and password"_s, BoxIcon::Exclamation,
                       BoxButtons::Ok};

/// A program that saves its logs when it connects, and has a note of that left behind by a refused connection.
struct Refused {
    Refused() : program("[options]\r\nsavercon=1\r\nclearrconnew=1\r\n")
    {
        program.start();
        program.click(u"cmdconnect"_s);
        if (program.prompts.takeBoxes() != QList<Box>{allFieldsBox} || !program.progress()->isVisible())
            failTest(u"no note stays behind"_s);
    }

    Program program;
};

QTimer *noteTimer(const Program &program)
{
    return program.progress()->findChild<QTimer *>(u"tmrnote"_s);
}

} // namespace

/// The windows beside the main one.
class WindowsBelongTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theyBelongToTheMainWindowAndStandInItsMiddle_data()
    {
        QTest::addColumn<QString>("opener");
        QTest::newRow("frmpref") << u"mpref"_s;
        QTest::newRow("frmAbout") << u"helpabout"_s;
        QTest::newRow("frmhob") << u"cmdhob"_s;
        QTest::newRow("frmledger") << u"mledger"_s;
        QTest::newRow("frmbook") << u"mbook"_s;
        QTest::newRow("frmcheck") << u"mcheck"_s;
        QTest::newRow("frmrotation") << u"mrotation"_s;
        QTest::newRow("frmtimetable") << u"mtimetable"_s;
    }

    void theyBelongToTheMainWindowAndStandInItsMiddle()
    {
        QFETCH(QString, opener);
        Program program;
        program.start();
        program.window.move(300, 120);
        if (auto *action = program.window.findChild<QAction *>(opener))
            action->trigger();
        else
            program.click(opener);
        QWidget *window = otherWindow(QString::fromLatin1(QTest::currentDataTag()));
        QVERIFY(window && becomesActive(window));
        QCOMPARE(window->windowHandle()->transientParent(), program.window.windowHandle());
        QCOMPARE(window->windowModality(), Qt::NonModal);
        // Desktops are told that it belongs there of dialogs alone; the buttons of its frame stay.
        QCOMPARE(window->windowHandle()->type(), Qt::Dialog);
        QVERIFY(window->windowFlags().testFlag(Qt::WindowCloseButtonHint));
        const QPoint apart = window->frameGeometry().center() - program.window.frameGeometry().center();
        QVERIFY2(apart.manhattanLength() <= 8, qPrintable(u"%1, %2"_s.arg(apart.x()).arg(apart.y())));

        window->move(20, 30);
        const QPoint moved = window->pos();
        window->hide();
        if (opener != u"mpref" && opener != u"cmdhob") { // which are made anew
            program.trigger(opener);
            QCOMPARE(window->pos(), moved);
        }
    }

    void theProgressWindowBelongsToo()
    {
        Program program;
        program.start();
        program.output.showprogress(u"Working"_s, Progress::Replace);
        QCOMPARE(program.progress()->windowHandle()->transientParent(), program.window.windowHandle());
        QVERIFY2(program.progress()->windowFlags() & Qt::WindowCloseButtonHint, "the person can close it");
        program.output.showprogress({}, Progress::Replace);
    }

    void whatIsAddedToAClosedNoteIsNotSeen()
    {
        Program program;
        program.start();
        {
            const Output::Work work(program.output);
            program.output.showprogress(u"one"_s, Progress::Replace);
            program.progress()->close();
            program.output.showprogress(u"two"_s, Progress::Add);
            QVERIFY(!program.progress()->isVisible());
            QCOMPARE(program.output.progressnote(), u"one\ntwo"_s);
            program.output.showprogress(u"three"_s, Progress::Replace);
            QVERIFY2(program.progress()->isVisible(), "it is about something else");
            program.output.showprogress({}, Progress::Replace);
        }
        program.output.showprogress(u"four"_s, Progress::Add);
        QVERIFY(program.progress()->isVisible());
        program.progress()->close();
        QCOMPARE(program.output.progressnote(), QString());
    }

    void theNoteOfARefusedConnectionGoesAfterThreeSeconds()
    {
        Refused it;
        QTimer *timer = noteTimer(it.program);
        QVERIFY(timer->isActive());
        QCOMPARE(timer->interval(), 3000);
        QVERIFY(timer->isSingleShot());
        QMetaObject::invokeMethod(timer, "timeout");
        QVERIFY(!it.program.progress()->isVisible());
        QCOMPARE(it.program.output.progressnote(), QString());
    }

    void butNotWhenSomethingElseHasUsedTheWindow()
    {
        Refused it;
        it.program.output.showprogress(u"else"_s, Progress::Replace);
        QVERIFY(!noteTimer(it.program)->isActive());
        QVERIFY(it.program.progress()->isVisible());
        it.program.output.showprogress({}, Progress::Replace);
    }

    void aFailureToSaveLeavesItsNote()
    {
        Program program;
        program.start();
        program.prompts.lines = {u"/nowhere/at/all.log"_s};
        program.trigger(u"savercon"_s);
        QCOMPARE(program.prompts.takeBoxes().value(0).title, u"Failed to Save"_s);
        QVERIFY(program.progress()->isVisible());
        QVERIFY(!noteTimer(program)->isActive());
        program.output.showprogress({}, Progress::Replace);
    }
};

WINDOW_TEST(WindowsBelongTest)
#include "tst_windows_belong.moc"
