// SPDX-License-Identifier: MIT
#include "activation.h"
#include "connected_program.h"
#include "other_windows.h"
#include "output/rcon_pane.h"
#include "window_test.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QTabBar>

using namespace Qt::StringLiterals;

namespace {

void press(QWidget &window, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
{
    if (!becomesActive(&window))
        failTest(u"the window does not become active"_s);
    QTest::keyClick(&window, key, modifiers);
}

/// The items that have no key of their own in their menu.
QStringList withoutKey(const QList<QAction *> &actions, const QString &menu)
{
    QStringList found;
    QStringList keys;
    for (const QAction *action : actions) {
        if (action->isSeparator())
            continue;
        const QString key = QKeySequence::mnemonic(action->text()).toString();
        if (key.isEmpty() || keys.contains(key))
            found.append(menu + u": "_s + action->text());
        keys.append(key);
        if (action->menu())
            found += withoutKey(action->menu()->actions(), action->text());
    }
    return found;
}

} // namespace

/// The program by the keyboard.
class KeysTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void everyMenuItemHasAKeyOfItsOwn()
    {
        Program program;
        program.start();
        QCOMPARE(withoutKey(program.window.menuBar()->actions(), u"bar"_s), QStringList());
    }

    void altAndALetterTypesNothing_data()
    {
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("typed");
        QTest::newRow("Alt") << Qt::KeyboardModifiers(Qt::AltModifier) << u"z"_s << QString();
        QTest::newRow("Alt and Shift") << (Qt::AltModifier | Qt::ShiftModifier) << u"Z"_s << QString();
        QTest::newRow("AltGr") << Qt::KeyboardModifiers(Qt::GroupSwitchModifier) << u"@"_s << u"@"_s;
        QTest::newRow("Ctrl and Alt") << (Qt::ControlModifier | Qt::AltModifier) << u"@"_s << u"@"_s;
        QTest::newRow("nothing") << Qt::KeyboardModifiers() << u"z"_s << u"z"_s;
    }

    void altAndALetterTypesNothing()
    {
        QFETCH(Qt::KeyboardModifiers, modifiers);
        QFETCH(QString, text);
        Program program;
        program.start();
        for (const QString &name : {u"comdirect"_s, u"comserver"_s, u"commessset"_s, u"txtPWD"_s, u"txtprefix"_s}) {
            program.setText(name, {});
            auto *field = program.find<QWidget>(name);
            program.find<QTabWidget>(u"SSTab"_s)->setCurrentIndex(6);
            field->setFocus();
            QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_Z, text, modifiers);
            QTEST(program.text(name), "typed");
        }
        program.prompts.takeBoxes(); // a new message set has been named
    }

    void f5PopulatesThePageThatIsShown_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<QByteArray>("asked");
        QTest::newRow("Server") << 0 << QByteArray("dvarlist sv_*");
        QTest::newRow("COD2 Modes") << 1 << QByteArray();
        QTest::newRow("Maps") << 2 << QByteArray("dir maps/mp d3dbsp");
        QTest::newRow("Weapons") << 3 << QByteArray("dvarlist scr_allow_*");
        QTest::newRow("Players") << 4 << QByteArray("status");
        QTest::newRow("Mods") << 5 << QByteArray();
        QTest::newRow("Messages") << 6 << QByteArray();
        QTest::newRow("Misc") << 7 << QByteArray();
        QTest::newRow("COD2 other") << 8 << QByteArray("dvarlist scr_allow_*");
    }

    void f5PopulatesThePageThatIsShown()
    {
        QFETCH(int, tab);
        QFETCH(QByteArray, asked);
        ConnectedProgram it({.tab = tab});
        press(it.program.window, Qt::Key_F5);
        it.program.prompts.takeBoxes();
        QCOMPARE(it.server.commands().value(0), asked);
    }

    void f5PopulatesInTheWindowOfTheModToo()
    {
        ConnectedProgram it;
        it.program.click(u"cmdhob"_s);
        press(*otherWindow(u"frmhob"_s), Qt::Key_F5);
        it.program.prompts.takeBoxes();
        QCOMPARE(it.server.commands().value(0), QByteArray("dvarlist scr_hob_*"));
    }

    void keysLeadToTheConsoleLineAndTheTabs()
    {
        Program program;
        program.start();
        program.setText(u"comdirect"_s, u"status"_s);
        press(program.window, Qt::Key_L, Qt::ControlModifier);
        auto *line = program.find<QComboBox>(u"comdirect"_s)->lineEdit();
        QVERIFY(line->hasFocus());
        QCOMPARE(line->selectedText(), u"status"_s);
        auto *tabs = program.find<QTabWidget>(u"SSTab"_s);
        for (const int tab : {8, 0, 4, 1, 2, 3, 5, 6, 7}) {
            press(program.window, Qt::Key(Qt::Key_1 + tab), Qt::ControlModifier);
            QCOMPARE(tabs->currentIndex(), tab);
        }
    }

    void keysOpenThePreferencesAndEndTheProgram()
    {
        Program program;
        program.start();
        QCOMPARE(program.find<QAction>(u"mpref"_s)->shortcut(), QKeySequence(u"Ctrl+,"_s));
        QCOMPARE(program.find<QAction>(u"Exit"_s)->shortcut(), QKeySequence(u"Ctrl+Q"_s));
        press(program.window, Qt::Key_Comma, Qt::ControlModifier);
        QVERIFY(otherWindow(u"frmpref"_s));
        otherWindow(u"frmpref"_s)->close();
        program.window.activateWindow();
        press(program.window, Qt::Key_Q, Qt::ControlModifier);
        QVERIFY(program.session.closing);
    }

    void enterPressesTheButtonThatHasTheFocus_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("Return") << Qt::Key_Return;
        QTest::newRow("Enter") << Qt::Key_Enter;
    }

    void enterPressesTheButtonThatHasTheFocus()
    {
        QFETCH(Qt::Key, key);
        ConnectedProgram it;
        auto *button = it.program.find<QPushButton>(u"cmsserverinfo"_s);
        button->setFocus();
        QTest::keyClick(button, key);
        QCOMPARE(it.server.commands(), QList<QByteArray>{"serverinfo"});
    }

    void enterSavesThePreferencesFromAField()
    {
        Program program;
        program.start();
        program.trigger(u"mpref"_s);
        auto *save = otherWindow(u"frmpref"_s)->findChild<QPushButton *>(u"cmdsave"_s);
        QVERIFY(save->isDefault());
        program.prompts.answers = {Answer::Cancel};
        QTest::keyClick(otherWindow(u"frmpref"_s)->findChild<QWidget *>(u"moptsr"_s), Qt::Key_Return);
        QCOMPARE(program.prompts.takeBoxes().value(0).title, u"Save Changes"_s);
        QTest::keyClick(otherWindow(u"frmpref"_s)->findChild<QWidget *>(u"cmdexit"_s), Qt::Key_Return);
        QCOMPARE(program.prompts.takeBoxes().value(0).title, u"Have you Saved?"_s);
    }

    void escClosesTheOtherWindows()
    {
        Program program;
        program.start();
        program.trigger(u"mpref"_s);
        program.prompts.answers = {Answer::Cancel, Answer::Ok};
        press(*otherWindow(u"frmpref"_s), Qt::Key_Escape); // it presses the button, which goes down for a moment
        QVERIFY(QTest::qWaitFor([&program] { return !program.prompts.takeBoxes().isEmpty(); }));
        QVERIFY2(otherWindow(u"frmpref"_s), "its question was answered with Cancel");
        press(*otherWindow(u"frmpref"_s), Qt::Key_Escape);
        QTRY_VERIFY(!otherWindow(u"frmpref"_s));
        QCOMPARE(program.prompts.takeBoxes().size(), 1);

        program.trigger(u"helpabout"_s);
        QVERIFY(otherWindow(u"frmAbout"_s)->findChild<QPushButton *>(u"cmdOK"_s)->isDefault());
        press(*otherWindow(u"frmAbout"_s), Qt::Key_Escape);
        QTRY_VERIFY(!otherWindow(u"frmAbout"_s));
        program.trigger(u"helpabout"_s);
        press(*otherWindow(u"frmAbout"_s), Qt::Key_Return);
        QVERIFY(!otherWindow(u"frmAbout"_s));

        program.click(u"cmdhob"_s);
        press(*otherWindow(u"frmhob"_s), Qt::Key_Escape);
        QVERIFY(!otherWindow(u"frmhob"_s));
    }

    void escClosesTheFindBarThenANoteThatStayedBehind()
    {
        Program program;
        program.start();
        program.output.showprogress(u"left over"_s, Progress::Replace);
        press(program.window, Qt::Key_F, Qt::ControlModifier);
        const auto *bar = program.find<QWidget>(u"frmfind"_s);
        QVERIFY(bar->isVisible());
        press(program.window, Qt::Key_Escape);
        QVERIFY(!bar->isVisible());
        QVERIFY(program.progress()->isVisible());
        press(program.window, Qt::Key_Escape);
        QVERIFY(!program.progress()->isVisible());
        press(program.window, Qt::Key_Escape);
        QVERIFY(program.window.isVisible());
    }

    void escLeavesANoteOfWorkThatGoesOn()
    {
        ConnectedProgram it;
        bool wasVisible = false;
        connect(&it.server, &PracticeServer::requested, &it.program.window, [&] {
            press(it.program.window, Qt::Key_Escape);
            wasVisible = it.program.progress()->isVisible();
        });
        it.program.click(u"cmdservpop"_s);
        QVERIFY(wasVisible);
    }

    void theFindBarFindsInThePane()
    {
        Program program;
        program.start();
        program.output.addrcon(u"one\r\nTwo two\r\nthree\r\n"_s + QString(3000, u'x') + u"TWO\r\n"_s);
        press(program.window, Qt::Key_F, Qt::ControlModifier);
        auto *text = program.find<QLineEdit>(u"txtfind"_s);
        QVERIFY(text->hasFocus());
        const auto *found = program.find<QLabel>(u"lblfound"_s);
        QCOMPARE(found->text(), QString());
        const auto place = [&] {
            const QTextCursor cursor = program.output.pane().textCursor();
            return cursor.selectedText() + u" at "_s + QString::number(cursor.selectionStart());
        };
        QTest::keyClicks(text, u"two"_s);
        QCOMPARE(found->text(), u"3 matches"_s);
        QCOMPARE(place(), u"Two at 4"_s);
        program.click(u"cmdfindnext"_s);
        QCOMPARE(place(), u"two at 8"_s);
        QTest::keyClick(text, Qt::Key_Return);
        QVERIFY(place().startsWith(u"TWO"));
        program.click(u"cmdfindnext"_s);
        QCOMPARE(place(), u"Two at 4"_s);
        program.click(u"cmdfindprev"_s);
        QVERIFY(place().startsWith(u"TWO"));
        text->setText(u"three"_s);
        QCOMPARE(found->text(), u"1 match"_s);
        text->setText(u"four"_s);
        QCOMPARE(found->text(), u"0 matches"_s);
        program.click(u"cmdfindnext"_s);
        program.click(u"cmdfindprev"_s);
    }

    void whatIsSeenAcrossAnUnseenMarkIsFound()
    {
        Program program;
        program.start();
        program.output.addrcon(u"first\r\n>>RCON sent [12:00] \x18status\x18\r\nmore status\r\n"_s);
        QCOMPARE(program.output.pane().occurrences(u"] status"_s).size(), 1);
        const QList<int> found = program.output.pane().occurrences(u"status"_s);
        QCOMPARE(found.size(), 2);
        for (const int place : found) {
            program.output.pane().selectText(place, 6);
            QCOMPARE(program.output.pane().textCursor().selectedText().remove(QChar(0x18)), u"status"_s);
        }
    }

    void aHeldKeyCountsOnce()
    {
        ConnectedProgram it;
        const auto hold = [](QWidget *receiver, Qt::Key key) {
            for (int repeat = 0; repeat < 4; ++repeat) {
                QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, {}, true);
                if (!qt_sendShortcutOverrideEvent(receiver, 0, key, Qt::NoModifier, {}, true))
                    QApplication::sendEvent(receiver, &event);
            }
        };
        press(it.program.window, Qt::Key_F5);
        hold(&it.program.window, Qt::Key_F5);
        QCOMPARE(it.server.commands().count("dvarlist sv_*"), 1);

        it.program.trigger(u"mpref"_s);
        auto *exit = otherWindow(u"frmpref"_s)->findChild<QPushButton *>(u"cmdexit"_s);
        it.program.prompts.answers = {Answer::Cancel};
        exit->setFocus();
        QTest::keyClick(exit, Qt::Key_Return);
        hold(exit, Qt::Key_Return);
        QCOMPARE(it.program.prompts.takeBoxes().size(), 1);
    }

    void theFilterOfThePlayersIsReachedFromEveryTab()
    {
        Program program;
        program.start();
        press(program.window, Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(program.find<QTabWidget>(u"SSTab"_s)->currentIndex(), 4);
        QVERIFY(program.find<QLineEdit>(u"txtplyfilter"_s)->hasFocus());
    }

    void aTextAcrossTheBlocksOfALongLineIsFound()
    {
        Program program;
        program.start();
        program.output.addrcon(QString(1998, u'x') + u"border"_s + QString(1994, u'x') + u"border\r\n"_s);
        const QList<int> found = program.output.pane().occurrences(u"BORDER"_s);
        QCOMPARE(found.size(), 2);
        for (const int place : found) {
            program.output.pane().selectText(place, 6);
            QCOMPARE(program.output.pane().textCursor().selectedText().remove(QChar::ParagraphSeparator), u"border"_s);
        }
    }

    void theNumberOfMatchesFollowsThePane()
    {
        Program program;
        program.start();
        press(program.window, Qt::Key_F, Qt::ControlModifier);
        program.find<QLineEdit>(u"txtfind"_s)->setText(u"map"_s);
        QCOMPARE(program.find<QLabel>(u"lblfound"_s)->text(), u"0 matches"_s);
        program.output.addrcon(u"map map\r\n"_s);
        QTRY_COMPARE(program.find<QLabel>(u"lblfound"_s)->text(), u"2 matches"_s);
    }
};

WINDOW_TEST(KeysTest)
#include "tst_keys.moc"
