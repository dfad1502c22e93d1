// SPDX-License-Identifier: MIT
#include "activation.h"
#include "other_windows.h"
#include "program.h"
#include "window_test.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QTimer>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

QString focusName()
{
    const QWidget *focus = QApplication::focusWidget();
    return focus ? focus->objectName() : QString();
}

void showAndLeaveABox(Program &program)
{
    QTimer::singleShot(0, &program.window, [] { QApplication::activeModalWidget()->close(); });
    QMessageBox(QMessageBox::Information, u"A title"_s, u"A text"_s, QMessageBox::Ok, &program.window).exec();
    program.window.activateWindow();
    QTRY_VERIFY(program.window.isActiveWindow());
}

/// As if a window of another program had been active: one that is no window of widgets.
void leaveAndReturn(Program &program)
{
    QWindow elsewhere;
    elsewhere.show();
    elsewhere.requestActivate();
    QTRY_VERIFY(!QApplication::activeWindow());
    program.window.activateWindow();
    QTRY_VERIFY(program.window.isActiveWindow());
}

void leaveForWindow(Program &program, const QString &name)
{
    if (name == u"frmhob")
        program.window.showhob();
    else
        program.trigger(name == u"frmpref" ? u"mpref"_s : u"helpabout"_s);
    QWidget *other = otherWindow(name);
    QVERIFY(other && becomesActive(other));
    program.window.activateWindow();
    QTRY_VERIFY(program.window.isActiveWindow());
}

void type(QComboBox *combo, const QString &text)
{
    combo->setFocus();
    combo->clearEditText();
    QTest::keyClicks(combo, text);
}

void goOn(const Program &program)
{
    program.find<QLineEdit>(u"txtPWD"_s)->setFocus();
}

void comboRows()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("server") << u"comserver"_s;
    QTest::newRow("port") << u"comport"_s;
}

} // namespace

class MainWindowFocusTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theFirstShowStartsInTheServerField()
    {
        Program program;
        program.start();
        QCOMPARE(focusName(), u"comserver"_s);
    }

    void returningFromAWindowOfTheProgramGoesToTheServerField_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"frmpref", "frmAbout", "frmhob"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }

    void returningFromAWindowOfTheProgramGoesToTheServerField()
    {
        QFETCH(QString, name);
        Program program;
        program.start();
        goOn(program);
        leaveForWindow(program, name);
        QTRY_COMPARE(focusName(), u"comserver"_s);
        goOn(program);
        leaveForWindow(program, name);
        QTRY_COMPARE(focusName(), u"comserver"_s);
    }

    void aMessageBoxGivesTheFocusBack()
    {
        Program program;
        program.start();
        goOn(program);
        showAndLeaveABox(program);
        QTRY_COMPARE(focusName(), u"txtPWD"_s);
    }

    void theProgressWindowTakesNoFocus()
    {
        Program program;
        program.start();
        goOn(program);
        program.output.showprogress(u"a note"_s, Progress::Replace);
        QVERIFY(program.progress()->isVisible());
        QTRY_VERIFY(program.window.isActiveWindow());
        QCOMPARE(focusName(), u"txtPWD"_s);
        program.output.showprogress({}, Progress::Replace);
        program.window.activateWindow();
        QTRY_VERIFY(program.window.isActiveWindow());
        QCOMPARE(focusName(), u"txtPWD"_s);
    }

    void returningFromAnotherProgramKeepsTheFocus()
    {
        Program program;
        program.start();
        goOn(program);
        leaveAndReturn(program);
        QTRY_COMPARE(focusName(), u"txtPWD"_s);
    }

    void onlyTheFirstTextIsRemembered_data() { comboRows(); }

    void onlyTheFirstTextIsRemembered()
    {
        QFETCH(QString, name);
        Program program;
        program.start();
        goOn(program);
        auto *combo = program.find<QComboBox>(name);
        combo->clear();
        type(combo, u"first"_s);
        QVERIFY(program.rows(name).isEmpty());
        goOn(program);
        QCOMPARE(program.rows(name), QStringList{u"first"_s});
        for (const QString &text : {u"second"_s, u"first"_s, u"First"_s}) {
            type(combo, text);
            goOn(program);
            QCOMPARE(program.rows(name), QStringList{u"first"_s});
            QCOMPARE(program.text(name), text);
        }
    }

    void theDefaultTextIsRememberedWhenItIsLeft()
    {
        Program program;
        program.start();
        goOn(program);
        QCOMPARE(program.rows(u"comserver"_s), QStringList{u"127.0.0.1"_s});
    }

    void anEmptyTextIsNotRemembered_data() { comboRows(); }

    void anEmptyTextIsNotRemembered()
    {
        QFETCH(QString, name);
        Program program;
        program.start();
        goOn(program);
        auto *combo = program.find<QComboBox>(name);
        combo->clear();
        type(combo, u""_s);
        goOn(program);
        QVERIFY(program.rows(name).isEmpty());
        type(combo, u"later"_s);
        goOn(program);
        QCOMPARE(program.rows(name), QStringList{u"later"_s});
    }

    void whatIsTypedIsNeitherCompletedNorAdded_data()
    {
        comboRows();
        QTest::newRow("console line") << u"comdirect"_s;
    }

    void whatIsTypedIsNeitherCompletedNorAdded()
    {
        QFETCH(QString, name);
        Program program;
        program.start();
        auto *combo = program.find<QComboBox>(name);
        combo->addItem(u"10.0.0.12"_s);
        type(combo, u"10"_s);
        QCOMPARE(program.text(name), u"10"_s);
        if (name == u"comdirect")
            return; // there Return sends, which is what adds to its list
        QTest::keyClick(combo, Qt::Key_Return);
        QTest::keyClick(combo, Qt::Key_Enter);
        QCOMPARE(program.text(name), u"10"_s);
        QCOMPARE(program.rows(name), QStringList{u"10.0.0.12"_s});
    }

    void aBoxAListAMenuAndDeactivationLeaveTheFocusWhereItIs()
    {
        Program program;
        program.start();
        auto *other = program.find<QComboBox>(u"comport"_s);
        other->addItem(u"28960"_s);
        QCOMPARE(focusName(), u"comserver"_s);
        type(program.find<QComboBox>(u"comserver"_s), u"typed"_s);

        showAndLeaveABox(program);
        QVERIFY2(program.rows(u"comserver"_s).isEmpty(), "a box came up");

        other->showPopup();
        QCoreApplication::processEvents();
        other->hidePopup();
        QVERIFY2(program.rows(u"comserver"_s).isEmpty(), "a list was opened");

        auto *menu = program.find<QMenu>(u"file"_s);
        menu->popup(program.window.mapToGlobal(QPoint(5, 5)));
        QCoreApplication::processEvents();
        menu->close();
        QVERIFY2(program.rows(u"comserver"_s).isEmpty(), "a menu was opened");

        leaveAndReturn(program);
        QVERIFY2(program.rows(u"comserver"_s).isEmpty(), "the program was deactivated");

        QTRY_COMPARE(focusName(), u"comserver"_s);
        goOn(program);
        QCOMPARE(program.rows(u"comserver"_s), QStringList{u"typed"_s});
    }
};

WINDOW_TEST(MainWindowFocusTest)
#include "tst_main_window_focus.moc"
