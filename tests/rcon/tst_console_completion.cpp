// SPDX-License-Identifier: MIT
#include "completion_hands.h"
#include "window_test.h"

#include <QTabWidget>

using namespace Qt::StringLiterals;

namespace {

/// A connected program with the completed word chosen by the keys.
void chooseFirst(const Program &program)
{
    pressInLine(program, Qt::Key_Down);
    pressInLine(program, Qt::Key_Tab);
}

/// The commands that have come to the server by the time at which it has answered one more.
QList<QByteArray> sentSoFar(ConnectedProgram &it)
{
    it.server.answer("serverinfo", {"here\n"});
    it.program.click(u"cmsserverinfo"_s);
    QList<QByteArray> commands = it.server.commands();
    commands.removeAll("serverinfo");
    return commands;
}

/// A saved question to the server whose answer is in the pane.
void askFor(ConnectedProgram &it, const QString &command, const QString &answer)
{
    sendLine(it.program, command);
    QTRY_VERIFY(it.program.pane().contains(answer));
}

} // namespace

/// The console line completes what is typed, and only when the person wants it.
class ConsoleCompletionTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void threeLettersOpenTheList()
    {
        const ConnectedProgram it;
        typeWord(it.program, u"sv"_s);
        QVERIFY(!openList(it.program));
        pressInLine(it.program, Qt::Key_Underscore);
        QVERIFY(openList(it.program));
        QVERIFY(offeredWords(it.program).contains(u"sv_hostname"_s));
        QCOMPARE(consoleLine(it.program), u"sv_"_s);
        QTest::keyClicks(it.program.find<QComboBox>(u"comdirect"_s), u"hostn"_s);
        QCOMPARE(offeredWords(it.program), QStringList{u"sv_hostname"_s});
        pressInLine(it.program, Qt::Key_X);
        QVERIFY(!openList(it.program));
        QCOMPARE(consoleLine(it.program), u"sv_hostnx"_s);
    }

    void takingLettersAwayOpensNothing()
    {
        const ConnectedProgram it;
        it.program.setText(u"comdirect"_s, u"statu"_s);
        it.program.find<QWidget>(u"comdirect"_s)->setFocus();
        QVERIFY(!openList(it.program));
        pressInLine(it.program, Qt::Key_End);
        pressInLine(it.program, Qt::Key_Backspace);
        QVERIFY(!openList(it.program));
        pressInLine(it.program, Qt::Key_U);
        QVERIFY(openList(it.program));
        for (int letter = 0; letter < 3; ++letter)
            pressInLine(it.program, Qt::Key_Backspace);
        QCOMPARE(consoleLine(it.program), u"st"_s);
        QVERIFY(!openList(it.program));
    }

    void ctrlSpaceOpensItAtOnceAndTypesNothing()
    {
        const ConnectedProgram it;
        typeWord(it.program, {});
        pressInLine(it.program, Qt::Key_Space, Qt::ControlModifier);
        const QStringList all = offeredWords(it.program);
        QVERIFY(all.contains(u"status"_s) && all.contains(u"sv_hostname"_s) && all.size() > 150);
        QCOMPARE(consoleLine(it.program), QString());
        QTest::keyClicks(it.program.find<QComboBox>(u"comdirect"_s), u"l"_s); // one letter is enough by now
        QVERIFY(offeredWords(it.program).contains(u"logfile"_s));
    }

    void returnSendsTheLineAsItStandsAndClosesTheList_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("Return") << Qt::Key_Return;
        QTest::newRow("Enter") << Qt::Key_Enter;
    }

    void returnSendsTheLineAsItStandsAndClosesTheList()
    {
        QFETCH(Qt::Key, key);
        ConnectedProgram it;
        typeWord(it.program, u"sv_h"_s);
        pressInLine(it.program, Qt::Key_Down);
        QCOMPARE(openList(it.program)->currentIndex().row(), 0);
        QCOMPARE(consoleLine(it.program), u"sv_h"_s);
        pressInLine(it.program, key);
        QVERIFY(!openList(it.program));
        QCOMPARE(consoleLine(it.program), u"sv_h"_s);
        QCOMPARE(it.lines(), QStringList{u"sv_h"_s});
        QCOMPARE(sentSoFar(it), QList<QByteArray>{"sv_h"});
    }

    void theButtonSendsItToo()
    {
        ConnectedProgram it;
        typeWord(it.program, u"sv_h"_s);
        QTest::mouseClick(it.program.find<QWidget>(u"cmdsend"_s), Qt::LeftButton);
        QVERIFY(!openList(it.program));
        QCOMPARE(sentSoFar(it), QList<QByteArray>{"sv_h"});
    }

    void downAndTabChoose()
    {
        const ConnectedProgram it;
        typeWord(it.program, u"sv_hostn"_s);
        chooseFirst(it.program);
        QCOMPARE(consoleLine(it.program), u"sv_hostname"_s);
        QVERIFY(!openList(it.program));
        QCOMPARE(QApplication::focusWidget()->objectName(), u"comdirect"_s);
        QTest::keyClicks(it.program.find<QComboBox>(u"comdirect"_s), u" My"_s);
        QCOMPARE(consoleLine(it.program), u"sv_hostname My"_s);
        QVERIFY(!openList(it.program));
    }

    void aClickChooses()
    {
        const ConnectedProgram it;
        typeWord(it.program, u"set hostn"_s);
        QListView *list = openList(it.program);
        QVERIFY(list);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->model()->index(0, 0)).center());
        QCOMPARE(consoleLine(it.program), u"set sv_hostname"_s);
        QVERIFY(!openList(it.program));
        QCOMPARE(QApplication::focusWidget()->objectName(), u"comdirect"_s);
    }

    void theWordAroundTheCursorIsReplacedInOneEdit()
    {
        const ConnectedProgram it;
        typeWord(it.program, u"sv_hostnix my server"_s);
        auto *edit = it.program.find<QComboBox>(u"comdirect"_s)->lineEdit();
        edit->setCursorPosition(8);
        pressInLine(it.program, Qt::Key_Space, Qt::ControlModifier);
        chooseFirst(it.program);
        QCOMPARE(consoleLine(it.program), u"sv_hostname my server"_s);
        QCOMPARE(edit->cursorPosition(), 11);
        pressInLine(it.program, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(consoleLine(it.program), u"sv_hostnix my server"_s);
    }

    void upAndPageKeysWalkTheList()
    {
        const ConnectedProgram it;
        typeWord(it.program, u"scr_"_s);
        const QListView *list = openList(it.program);
        const int last = list->model()->rowCount() - 1;
        QVERIFY(!list->currentIndex().isValid());
        pressInLine(it.program, Qt::Key_Up);
        QCOMPARE(list->currentIndex().row(), last);
        pressInLine(it.program, Qt::Key_Down);
        QCOMPARE(list->currentIndex().row(), 0);
        pressInLine(it.program, Qt::Key_PageDown);
        QCOMPARE(list->currentIndex().row(), 8);
        pressInLine(it.program, Qt::Key_Up);
        QCOMPARE(list->currentIndex().row(), 7);
        pressInLine(it.program, Qt::Key_PageUp);
        QCOMPARE(list->currentIndex().row(), 0);
        QCOMPARE(consoleLine(it.program), u"scr_"_s);
    }

    void tabWithoutAChoiceLeadsOn()
    {
        const ConnectedProgram it;
        typeWord(it.program, u"sv_h"_s);
        pressInLine(it.program, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget()->objectName(), u"cmdsend"_s);
        QVERIFY(!openList(it.program));
        QCOMPARE(consoleLine(it.program), u"sv_h"_s);
    }

    void escClosesTheListAndOnlyThenWhatElseIsOpen()
    {
        const ConnectedProgram it;
        QTest::keyClick(&it.program.window, Qt::Key_F, Qt::ControlModifier);
        const auto *bar = it.program.find<QWidget>(u"frmfind"_s);
        typeWord(it.program, u"sv_h"_s);
        QVERIFY(bar->isVisible() && openList(it.program));
        pressInLine(it.program, Qt::Key_Escape);
        QVERIFY(!openList(it.program));
        QVERIFY(bar->isVisible());
        QCOMPARE(consoleLine(it.program), u"sv_h"_s);
        pressInLine(it.program, Qt::Key_O); // the same word
        QVERIFY(!openList(it.program));
        pressInLine(it.program, Qt::Key_Escape);
        QVERIFY(!bar->isVisible());
        typeWord(it.program, u"set sv_h"_s); // another one
        QVERIFY(openList(it.program));
    }

    void withoutTheListUpAndDownAreTheHistorys()
    {
        const ConnectedProgram it;
        for (const QString &line : {u"say one"_s, u"say two"_s, u"say three"_s})
            sendLine(it.program, line);
        typeWord(it.program, {});
        pressInLine(it.program, Qt::Key_Up);
        QCOMPARE(consoleLine(it.program), u"say two"_s);
        pressInLine(it.program, Qt::Key_Up);
        QCOMPARE(consoleLine(it.program), u"say one"_s);
        pressInLine(it.program, Qt::Key_Down);
        QCOMPARE(consoleLine(it.program), u"say two"_s);
        QVERIFY(!openList(it.program));
    }

    void linesThatWereSentAreOfferedWhole()
    {
        const ConnectedProgram it;
        sendLine(it.program, u"say hello to all"_s);
        sendLine(it.program, u"rcon_password secret"_s);
        typeWord(it.program, u"say h"_s);
        QCOMPARE(offeredWords(it.program), QStringList{u"say hello to all"_s});
        QCOMPARE(describedWord(it.program), u"Sent before"_s);
        chooseFirst(it.program);
        QCOMPARE(consoleLine(it.program), u"say hello to all"_s);
        typeWord(it.program, u"rcon_"_s);
        QVERIFY(!offeredWords(it.program).contains(u"rcon_password secret"_s));
    }

    void theLinesBelowSayWhatAVariableIsAndHas()
    {
        ConnectedProgram it;
        typeWord(it.program, u"sv_fps"_s);
        QCOMPARE(describedWord(it.program),
                 u"Variable: frames a second of the server\nNot read yet, default \"20\", 10 to 1000"_s);
        pressInLine(it.program, Qt::Key_Return);
        QTRY_VERIFY(it.program.pane().contains(u"\"sv_fps\" is:"));
        askFor(it, u"sv_fps 30"_s, u"\"sv_fps\" is:"_s);
        it.program.output.clearrcon();
        askFor(it, u"sv_fps"_s, u"Domain is"_s);
        const QString time = it.program.clock.now().time().toString(u"HH:mm");
        typeWord(it.program, u"sv_fps"_s);
        QCOMPARE(describedWord(it.program),
                 u"Variable: frames a second of the server\n\"30\", read %1, default \"20\", "
                 "any integer from 10 to 1000"_s.arg(time));
        typeWord(it.program, u"clientk"_s);
        QCOMPARE(describedWord(it.program), u"Command: throws out the player in a slot: clientkick NUMBER"_s);
    }

    void whatAPageHasReadIsShown()
    {
        ConnectedProgram it({.prepare = {}, .tab = 0});
        it.program.click(u"cmdservpop"_s);
        typeWord(it.program, u"sv_hostname"_s);
        QVERIFY2(describedWord(it.program).contains(u"\n\"CoD2Host\", read "), qPrintable(describedWord(it.program)));
    }

    void anotherConnectionKnowsNoValues()
    {
        ConnectedProgram it;
        askFor(it, u"sv_fps"_s, u"Domain is"_s);
        it.program.click(u"cmdconnect"_s);
        typeWord(it.program, u"sv_fps"_s);
        QVERIFY2(describedWord(it.program).contains(u"Not read yet"), qPrintable(describedWord(it.program)));
        it.program.connectTo(it.server);
        typeWord(it.program, u"sv_fps"_s);
        QVERIFY2(describedWord(it.program).contains(u"Not read yet"), qPrintable(describedWord(it.program)));
    }

    void passwordsAreNotShown()
    {
        ConnectedProgram it;
        askFor(it, u"rcon_password"_s, u"\"rcon_password\" is:"_s);
        typeWord(it.program, u"rcon_p"_s);
        QVERIFY2(describedWord(it.program).contains(u"Its value is not shown"), qPrintable(describedWord(it.program)));
        QVERIFY(!describedWord(it.program).contains(u"practice"));
    }

    void whatAServerSaysIsShownAsItIsInOneLine()
    {
        ConnectedProgram it;
        it.server.answer("dvarlist hostile", {"A       sv_fps \"<b>1</b>\x07\t" + QByteArray(300, 'x') + "\"\n"});
        sendLine(it.program, u"dvarlist hostile"_s);
        QTRY_VERIFY(it.program.pane().contains(u"<b>"));
        typeWord(it.program, u"sv_fps"_s);
        const QStringList lines = describedWord(it.program).split(u'\n');
        QCOMPARE(lines.size(), 2);
        QVERIFY2(lines.at(1).startsWith(u"\"<b>1</b>  xxx"), qPrintable(lines.at(1)));
        QVERIFY2(lines.at(1).contains(u'\u2026'), qPrintable(lines.at(1)));
        const auto *label = it.program.find<QLabel>(u"lblcomplete"_s);
        QCOMPARE(label->textFormat(), Qt::PlainText);
        QVERIFY(label->sizeHint().width() <= label->width());
    }

    void whatComesBesideTheLineClosesTheList_data()
    {
        QTest::addColumn<QString>("what");
        for (const char *what : {"click", "focus", "resize", "tab", "history", "cursor"})
            QTest::newRow(what) << QString::fromLatin1(what);
    }

    void whatComesBesideTheLineClosesTheList()
    {
        QFETCH(QString, what);
        ConnectedProgram it;
        typeWord(it.program, u"sv_h"_s);
        QVERIFY(openList(it.program));
        if (what == u"click")
            QTest::mouseClick(it.program.find<QWidget>(u"lblouttitle"_s), Qt::LeftButton);
        else if (what == u"focus")
            it.program.find<QWidget>(u"txtprefix"_s)->setFocus();
        else if (what == u"resize")
            it.program.window.resize(it.program.window.size() - QSize(30, 30));
        else if (what == u"tab")
            QTest::keyClick(&it.program.window, Qt::Key_3, Qt::ControlModifier);
        else if (what == u"history")
            it.program.setText(u"comdirect"_s, u"say hello"_s);
        else
            pressInLine(it.program, Qt::Key_Home);
        QTRY_VERIFY(!openList(it.program));
    }

    void itLiesWithinTheWindowBesideTheLine_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("small") << QSize(1024, 700);
        QTest::newRow("large") << QSize(1440, 900);
    }

    void itLiesWithinTheWindowBesideTheLine()
    {
        QFETCH(QSize, size);
        ConnectedProgram it;
        it.program.window.resize(size);
        QTRY_COMPARE(it.program.window.size(), size);
        typeWord(it.program, u"sv_"_s);
        const auto *popup = it.program.find<QWidget>(u"frmcomplete"_s);
        const auto *line = it.program.find<QWidget>(u"comdirect"_s);
        QVERIFY(it.program.window.rect().contains(popup->geometry()));
        const QRect lineRect(line->mapTo(&it.program.window, QPoint()), line->size());
        QVERIFY(!popup->geometry().intersects(lineRect));
        QVERIFY(popup->geometry().adjusted(0, -1, 0, 1).intersects(lineRect));
        QVERIFY(openList(it.program)->height() >= 8 * openList(it.program)->sizeHintForRow(0));
        QCOMPARE(QApplication::focusWidget()->objectName(), u"comdirect"_s);
    }
};

WINDOW_TEST(ConsoleCompletionTest)
#include "tst_console_completion.moc"
