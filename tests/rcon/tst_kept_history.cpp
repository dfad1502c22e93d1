// SPDX-License-Identifier: MIT
#include "activation.h"
#include "completion_hands.h"
#include "window_test.h"

#include <QContextMenuEvent>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace {

const QByteArray on = keepsOutput + "[window]\r\nconsolehistory=1\r\n";
const QString words = u"molvark-words.json"_s;

/// The console line's menu, as the right mouse button and the menu key bring it.
QMenu *lineMenu(const Program &program, bool byKey)
{
    auto *line = program.find<QComboBox>(u"comdirect"_s);
    QWidget *asked = byKey ? static_cast<QWidget *>(line) : line->lineEdit();
    QContextMenuEvent event(byKey ? QContextMenuEvent::Keyboard : QContextMenuEvent::Mouse, QPoint(3, 3),
                            asked->mapToGlobal(QPoint(3, 3)));
    QApplication::sendEvent(asked, &event);
    return qobject_cast<QMenu *>(QApplication::activePopupWidget());
}

QAction *switchIn(const QMenu *menu)
{
    return menu ? menu->findChild<QAction *>(u"mconsolehistory"_s) : nullptr;
}

void close(Program &program, QMenu *menu)
{
    menu->close();
    QApplication::processEvents();
    setActiveWindow(&program.window);
    QVERIFY(becomesActive(&program.window));
}

void switchHistory(Program &program)
{
    QMenu *menu = lineMenu(program, false);
    QVERIFY(switchIn(menu));
    switchIn(menu)->trigger();
    close(program, menu);
}

QStringList historyIn(const QByteArray &file)
{
    QStringList lines;
    for (const QJsonValue &line : QJsonDocument::fromJson(file).object().value("history"_L1).toArray())
        lines.append(line.toString());
    return lines;
}

} // namespace

/// The history of the console line between runs.
class KeptHistoryTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void itIsNotKeptAtFirst()
    {
        ConnectedProgram it;
        sendLine(it.program, u"say hello"_s);
        it.program.window.close();
        QVERIFY(it.program.file(words).isEmpty());
        QVERIFY(!it.program.file(u"molvark.ini"_s).contains("consolehistory"));
    }

    void theLinesMenuSwitchesIt_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("mouse") << false;
        QTest::newRow("menu key") << true;
    }

    void theLinesMenuSwitchesIt()
    {
        QFETCH(bool, byKey);
        QByteArray settings;
        QByteArray kept;
        {
            ConnectedProgram it;
            QMenu *menu = lineMenu(it.program, byKey);
            QAction *item = switchIn(menu);
            QVERIFY(item && item->isCheckable() && !item->isChecked());
            QCOMPARE(item->text().remove(u'&'), u"Keep history between runs"_s);
            QVERIFY(menu->actions().size() > 5); // what the menu of every line has
            item->trigger();
            close(it.program, menu);
            sendLine(it.program, u"say hello"_s);
            sendLine(it.program, u"status"_s);
            it.program.window.close();
            settings = it.program.file(u"molvark.ini"_s);
            kept = it.program.file(words);
        }
        QVERIFY2(settings.contains("[window]\r\n") && settings.contains("consolehistory=1"), settings.constData());
        QCOMPARE(historyIn(kept), QStringList({u"say hello"_s, u"status"_s}));

        Program later(settings);
        later.write(words, kept);
        later.start();
        QCOMPARE(later.rows(u"comdirect"_s), QStringList({u"say hello"_s, u"status"_s}));
        QCOMPARE(consoleLine(later), QString());
        QMenu *menu = lineMenu(later, byKey);
        QVERIFY(switchIn(menu)->isChecked());
        menu->close();
    }

    void linesWithAPasswordAreNeverKept()
    {
        ConnectedProgram it({.settings = on});
        for (const QString &line :
             {u"say one"_s, u"g_password geheim"_s, u"set sv_privatePassword \"geheim\""_s, u"rcon_password"_s,
              u"say my word is practice"_s, u"set x 1;seta G_PASSWORD\"geheim\""_s, u"say two"_s})
            sendLine(it.program, line);
        QCOMPARE(it.program.rows(u"comdirect"_s).size(), 7); // the history of this run has them
        it.program.click(u"cmdconnect"_s);
        it.program.setText(u"txtPWD"_s, u"another"_s); // it was a password when it was sent
        it.program.window.close();
        const QByteArray file = it.program.file(words);
        QCOMPARE(historyIn(file), QStringList({u"say one"_s, u"say two"_s}));
        QVERIFY(!file.contains("geheim") && !file.contains("practice"));
    }

    void thePasswordOfTheEndIsLookedForToo()
    {
        ConnectedProgram it({.settings = on});
        sendLine(it.program, u"say tomorrows word"_s);
        it.program.click(u"cmdconnect"_s);
        it.program.setText(u"txtPWD"_s, u"tomorrows"_s);
        it.program.window.close();
        QVERIFY(it.program.file(words).isEmpty());
    }

    void theLinesOfAProgramThatWasClosedMeanwhileStay()
    {
        ConnectedProgram it({.settings = on});
        sendLine(it.program, u"say ours"_s);
        it.program.write(words, "{\"history\": [\"say theirs\"]}");
        it.program.window.close();
        QCOMPARE(historyIn(it.program.file(words)), QStringList({u"say theirs"_s, u"say ours"_s}));
    }

    void theLinesOfEarlierRunsAreNotAddedAgain()
    {
        Program program(on);
        program.write(words, "{\"history\": [\"say one\"]}");
        program.start();
        QCOMPARE(program.rows(u"comdirect"_s), QStringList{u"say one"_s});
        program.write(words, "{\"history\": [\"say one\", \"say two\"]}");
        program.window.close();
        QCOMPARE(historyIn(program.file(words)), QStringList({u"say one"_s, u"say two"_s}));
    }

    void thePasswordOfTheEndIsLookedForInEarlierLinesToo()
    {
        Program program(on);
        program.write(words, "{\"history\": [\"say one\", \"say tomorrows word\"]}");
        program.start();
        program.setText(u"txtPWD"_s, u"tomorrows"_s);
        program.window.close();
        QCOMPARE(historyIn(program.file(words)), QStringList{u"say one"_s});
    }

    void whatWasTypedWhileTheProgramStartedStays()
    {
        Program program(on);
        program.write(words, "{\"history\": [\"say hello\"]}");
        program.window.show();
        program.setText(u"comdirect"_s, u"sta"_s);
        program.start();
        QCOMPARE(consoleLine(program), u"sta"_s);
        QCOMPARE(program.rows(u"comdirect"_s), QStringList{u"say hello"_s});
    }

    void switchingItOffForgetsTheLinesAtOnce()
    {
        Program program(on);
        program.write(words,
                      "{\"history\": [\"say hello\"], \"servers\": [{\"address\": \"x:1\", \"variables\": [\"a\"]}]}");
        program.start();
        QApplication::processEvents();
        switchHistory(program);
        QCOMPARE(historyIn(program.file(words)), QStringList());
        QVERIFY(program.file(words).contains("\"x:1\""));
        QCOMPARE(program.rows(u"comdirect"_s), QStringList{u"say hello"_s}); // for this run
        program.window.close();
        QCOMPARE(historyIn(program.file(words)), QStringList());
        QVERIFY(program.file(u"molvark.ini"_s).contains("consolehistory=0"));
    }

    void switchedOnAgainItKeepsWhatIsInTheList()
    {
        Program program(on);
        program.write(words, "{\"history\": [\"say hello\"]}");
        program.start();
        QApplication::processEvents();
        switchHistory(program);
        switchHistory(program);
        program.window.close();
        QCOMPARE(historyIn(program.file(words)), QStringList{u"say hello"_s});
    }

    void resettingTheWindowSwitchesItOff()
    {
        Program program(on);
        program.write(words, "{\"history\": [\"say hello\"]}");
        program.start();
        program.trigger(u"resetwindow"_s);
        QCOMPARE(historyIn(program.file(words)), QStringList());
        QMenu *menu = lineMenu(program, false);
        QVERIFY(!switchIn(menu)->isChecked());
        menu->close();
    }

    void anythingElseInTheSettingsIsOff()
    {
        Program program("[window]\r\nconsolehistory=yes\r\n");
        program.write(words, "{\"history\": [\"say hello\"]}");
        program.start();
        QCOMPARE(program.rows(u"comdirect"_s), QStringList());
        program.window.close();
        QCOMPARE(historyIn(program.file(words)), QStringList{u"say hello"_s});
    }

    void aWindowThatIsClosedBeforeItHasReadAnythingLeavesTheLines()
    {
        Program program(on);
        program.write(words, "{\"history\": [\"say hello\"]}");
        program.window.show();
        program.window.close();
        QCOMPARE(historyIn(program.file(words)), QStringList{u"say hello"_s});
    }

    void aBrokenFileIsPutAsideAndTheProgramGoesOn()
    {
        Program program(on);
        program.write(words, "{\"history\": [\"say");
        program.start();
        QCOMPARE(program.messages(), QStringList{u"molvark-words.json is broken (line 1: unterminated string). It is "
                                                 "called molvark-words.broken-1.json now, and a new one is begun."_s});
        QCOMPARE(program.file(u"molvark-words.broken-1.json"_s), QByteArray("{\"history\": [\"say"));
        program.window.close();
        QCOMPARE(program.file(u"molvark-words.broken-1.json"_s), QByteArray("{\"history\": [\"say"));
    }
};

WINDOW_TEST(KeptHistoryTest)
#include "tst_kept_history.moc"
