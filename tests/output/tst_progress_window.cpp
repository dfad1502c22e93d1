// SPDX-License-Identifier: MIT
#include "activation.h"
#include "program.h"
#include "window_test.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;

namespace {

/// Brings the program's main window up with the focus in the console line.
class Started final {
public:
    Started()
    {
        program.start();
        line = program.find<QLineEdit>(u"txtPWD"_s);
        line->setFocus();
        QCoreApplication::processEvents();
    }

    void replace(const QString &text) { show(text, Progress::Replace); }
    void add(const QString &text) { show(text, Progress::Add); }
    [[nodiscard]] bool isShown() const { return program.progress()->isVisible(); }
    /// The main window has the keyboard, and in it the box that had it before.
    [[nodiscard]] bool keepsTheFocus() const
    {
        return QApplication::activeWindow() == &program.window && QApplication::focusWidget() == line;
    }

    Program program;
    QLineEdit *line = nullptr;

private:
    void show(const QString &text, Progress mode)
    {
        program.output.showprogress(text, mode);
        QCoreApplication::processEvents();
    }
};

} // namespace

class ProgressWindowTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void itHasAFrameAHeadingAndANote()
    {
        Program program;
        QWidget *window = program.progress();
        QVERIFY(window->isWindow());
        auto *frame = window->findChild<QGroupBox *>(u"Frame1"_s);
        QVERIFY(frame);
        QCOMPARE(frame->findChild<QLabel *>(u"lblProductName"_s)->text(), u"Progress..."_s);
        QVERIFY(frame->findChild<QPlainTextEdit *>(u"txtprogress"_s));
        QVERIFY(!window->isVisible());
    }

    void itIsModeless()
    {
        Started started;
        started.replace(u"Saving RCON output..."_s);
        QVERIFY(started.isShown());
        QVERIFY(!started.program.progress()->isModal());
        QVERIFY(!QApplication::activeModalWidget());
    }

    void aNoteIsReplaced()
    {
        Started started;
        started.replace(u"Connecting..."_s);
        started.replace(u"Reading variables from the server...\r\nAllies..."_s);
        QCOMPARE(started.program.note(), u"Reading variables from the server...\nAllies..."_s);
        QVERIFY(started.isShown());
    }

    void aNoteIsExtendedByALine()
    {
        Started started;
        started.replace(u"Connecting..."_s);
        started.add(u"Server responded"_s);
        started.add(u"Reading"_s);
        QCOMPARE(started.program.note(), u"Connecting...\nServer responded\nReading"_s);
        QVERIFY(started.isShown());
    }

    void aNoteAddedToNothingBeginsWithALineEnd()
    {
        Started started;
        started.add(u"Saving Message output..."_s);
        QCOMPARE(started.program.note(), u"\nSaving Message output..."_s);
        QVERIFY(started.isShown());
    }

    void markupShowsAsTyped()
    {
        Started started;
        started.replace(u"<b>Bob</b> &amp; <br>"_s);
        QCOMPARE(started.program.note(), u"<b>Bob</b> &amp; <br>"_s);
    }

    void anEmptyTextEmptiesTheNoteAndHidesTheWindow_data()
    {
        QTest::addColumn<bool>("adds");
        QTest::newRow("replacing") << false;
        QTest::newRow("adding") << true;
    }

    void anEmptyTextEmptiesTheNoteAndHidesTheWindow()
    {
        QFETCH(bool, adds);
        Started started;
        started.replace(u"Connecting..."_s);
        QVERIFY(started.isShown());
        adds ? started.add({}) : started.replace({});
        QVERIFY(!started.isShown());
        QCOMPARE(started.program.note(), QString());
        started.add(u"Next"_s);
        QVERIFY(started.isShown());
        QCOMPARE(started.program.note(), u"\nNext"_s);
    }

    void anEmptyTextHidesAWindowThatWasNotShown()
    {
        Started started;
        started.replace({});
        QVERIFY(!started.isShown());
        started.replace({});
        QVERIFY(!started.isShown());
        QVERIFY(started.keepsTheFocus());
    }

    void notesWhileTheActiveWindowIsMinimisedAreDropped_data()
    {
        QTest::addColumn<bool>("active");
        QTest::newRow("the main window is active") << true;
        QTest::newRow("no window is active") << false;
    }

    void notesWhileTheActiveWindowIsMinimisedAreDropped()
    {
        QFETCH(bool, active);
        Started started;
        MainWindow &window = started.program.window;
        window.showMinimized();
        setActiveWindow(active ? &window : nullptr);
        started.replace(u"replaced"_s);
        started.add(u"added"_s);
        QVERIFY(!started.isShown());
        QCOMPARE(started.program.note(), QString());

        window.showNormal();
        setActiveWindow(&window);
        QCoreApplication::processEvents();
        QVERIFY(!started.isShown());
        QCOMPARE(started.program.note(), QString());
        started.add(u"later"_s);
        QVERIFY(started.isShown());
        QCOMPARE(started.program.note(), u"\nlater"_s);
    }

    void theNoteThatWasThereBeforeStaysWhileMinimised()
    {
        Started started;
        started.replace(u"before"_s);
        started.program.window.showMinimized();
        setActiveWindow(&started.program.window);
        started.replace(u"replaced"_s);
        started.add(u"added"_s);
        QCOMPARE(started.program.note(), u"before"_s);
    }

    void anEmptyTextHidesTheWindowAlsoWhileMinimised()
    {
        Started started;
        started.replace(u"before"_s);
        started.program.window.showMinimized();
        setActiveWindow(&started.program.window);
        started.replace({});
        QVERIFY(!started.isShown());
        QCOMPARE(started.program.note(), QString());
    }

    void notesOfAProgramInTheBackgroundAreShown()
    {
        Started started;
        setActiveWindow(nullptr);
        started.program.output.showprogress(u"Saving RCON output..."_s, Progress::Replace);
        QVERIFY(started.isShown());
        QCOMPARE(started.program.note(), u"Saving RCON output..."_s);
    }

    void theFocusStaysWhereItWas()
    {
        Started started;
        QVERIFY(started.keepsTheFocus());
        started.replace(u"one"_s);
        QTRY_VERIFY(started.keepsTheFocus());
        started.add(u"two"_s);
        QTRY_VERIFY(started.keepsTheFocus());
        started.replace({});
        QTRY_VERIFY(started.keepsTheFocus());
        started.replace(u"three"_s);
        QTRY_VERIFY(started.keepsTheFocus());
    }

    void theKeyboardStaysWhereItWas()
    {
        Started started;
        started.line->clear();
        started.replace(u"one"_s);
        QTRY_VERIFY(started.keepsTheFocus());
        QTest::keyClick(QGuiApplication::focusWindow(), Qt::Key_A);
        QCOMPARE(started.line->text(), u"a"_s);
    }

    void aClickOnTheNoteTakesNoFocus()
    {
        Started started;
        started.replace(u"one"_s);
        QTRY_VERIFY(started.keepsTheFocus());
        auto *note = started.program.progress()->findChild<QPlainTextEdit *>(u"txtprogress"_s);
        QTest::mouseClick(note->viewport(), Qt::LeftButton);
        QVERIFY(started.keepsTheFocus());
        QVERIFY(started.program.progress()->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
    }

    void theFocusStaysInAnotherWindowOfTheProgram()
    {
        Started started;
        QLineEdit other;
        other.setObjectName(u"frmhob"_s);
        other.show();
        QTRY_COMPARE(QApplication::activeWindow(), &other);
        started.replace(u"Heat of Battle MOD..."_s);
        QTRY_COMPARE(QApplication::activeWindow(), &other);
        started.replace({});
        QTRY_COMPARE(QApplication::activeWindow(), &other);
    }
};

WINDOW_TEST(ProgressWindowTest)
#include "tst_progress_window.moc"
