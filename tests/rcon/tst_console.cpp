// SPDX-License-Identifier: MIT
#include "console_hands.h"
#include "window_test.h"

#include <QComboBox>

using namespace Qt::StringLiterals;

class ConsoleTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theConsoleLineIsSentOnceWithoutWaiting()
    {
        Link link;
        link.server.setSilent(true);
        type(link, u"say hello"_s);
        const QDateTime start = link.program.clock.now();
        link.program.click(u"cmdsend"_s);
        QVERIFY(start.msecsTo(link.program.clock.now()) < 500);
        QVERIFY(!link.session.rconnowait);
        QTRY_COMPARE(link.server.requests(), QList<QByteArray>{request("say hello")});
        link.server.setSilent(false);
        QCOMPARE(commandsSoFar(link), QList<QByteArray>{"say hello"});
        QCOMPARE(link.program.messages(), QStringList{u"say hello"_s});
    }

    void theReplyIsShownWhenItComesWithoutAnEchoLine()
    {
        Link link;
        link.server.answer("sv_maprotation", {"map mp_toujane\n"});
        type(link, u"sv_maprotation"_s);
        link.program.click(u"cmdsend"_s);
        QTRY_COMPARE(link.program.pane(), u"map mp_toujane\r\n"_s);
    }

    void theSentLineIsSelectedAndHasTheFocus()
    {
        Link link;
        type(link, u"say hello"_s);
        link.program.find<QWidget>(u"txtprefix"_s)->setFocus();
        link.program.click(u"cmdsend"_s);
        const QLineEdit *line = link.program.find<QComboBox>(u"comdirect"_s)->lineEdit();
        QCOMPARE(focused(), u"comdirect"_s);
        QCOMPARE(line->selectionStart(), 0);
        QCOMPARE(line->selectedText(), u"say hello"_s);
    }

    void anEmptyLineDoesNothingAtAll()
    {
        Link link;
        link.program.setText(u"comdirect"_s, {});
        focus(link.program, u"txtprefix"_s);
        link.program.click(u"cmdsend"_s);
        QCOMPARE(focused(), u"txtprefix"_s);
        QCOMPARE(link.program.messages(), QStringList());
        QCOMPARE(link.program.rows(u"comdirect"_s), QStringList());
        QVERIFY(!link.session.rconnowait);
        QCOMPARE(commandsSoFar(link), QList<QByteArray>());
    }

    void aLineOfBlanksIsACommand()
    {
        Link link;
        type(link, u"  "_s);
        link.program.click(u"cmdsend"_s);
        QCOMPARE(link.program.messages(), QStringList{u"  "_s});
        QTRY_COMPARE(link.server.requests(), QList<QByteArray>{request("  ")});
    }

    void theNewestCommandIsListedAgainAndAnOlderOneIsNot()
    {
        Link link;
        const auto send = [&](const QString &command) {
            type(link, command);
            link.program.click(u"cmdsend"_s);
            return link.program.rows(u"comdirect"_s);
        };
        QCOMPARE(send(u"a"_s), QStringList({u"a"_s}));
        QCOMPARE(send(u"a"_s), QStringList({u"a"_s, u"a"_s}));
        QCOMPARE(send(u"a"_s), QStringList({u"a"_s, u"a"_s}));
        QCOMPARE(send(u"b"_s), QStringList({u"a"_s, u"a"_s, u"b"_s}));
        QCOMPARE(send(u"a"_s), QStringList({u"a"_s, u"a"_s, u"b"_s}));
        QCOMPARE(send(u"b"_s), QStringList({u"a"_s, u"a"_s, u"b"_s, u"b"_s}));
        QCOMPARE(send(u"B"_s), QStringList({u"a"_s, u"a"_s, u"b"_s, u"b"_s, u"B"_s}));
        QCOMPARE(commandsSoFar(link), QList<QByteArray>({"a", "a", "a", "b", "a", "b", "B"}));
        QCOMPARE(link.program.messages().size(), 7);
    }

    void aCommandIsNotedBelowTheBoxOfAClosedSocket()
    {
        Link link;
        link.program.udpclient.Close();
        type(link, u"say hello"_s);
        QStringList notedBefore{u"not asked"_s};
        link.program.prompts.whileOpen = [&] { notedBefore = link.program.messages(); };
        link.program.click(u"cmdsend"_s);
        QCOMPARE(link.program.prompts.takeBoxes(), QList<Box>{notConnectedBox()});
        QCOMPARE(notedBefore, QStringList());
        QCOMPARE(link.program.messages(), QStringList{u"say hello"_s});
        QCOMPARE(link.program.rows(u"comdirect"_s), QStringList{u"say hello"_s});
        QVERIFY(link.session.rconnowait);
    }

    void theTwoQueriesWaitForTheirReplyAndAreNoted_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<QString>("message");
        QTest::newRow("status") << u"cmdstatus"_s << QByteArray("Status") << u"Server Status requested"_s;
        QTest::newRow("serverinfo") << u"cmsserverinfo"_s << QByteArray("serverinfo") << u"Server Info requested"_s;
    }

    void theTwoQueriesWaitForTheirReplyAndAreNoted()
    {
        QFETCH(QString, button);
        QFETCH(QByteArray, command);
        QFETCH(QString, message);
        Link link;
        link.server.answer(command, {"the reply\n"});
        QStringList notedBefore{u"not asked"_s};
        link.onNextRequest([&] { notedBefore = link.program.messages(); });
        link.program.click(button);
        QCOMPARE(link.server.requests(), QList<QByteArray>{request(command)});
        QCOMPARE(link.program.pane(), u"the reply\r\n"_s);
        QCOMPARE(notedBefore, QStringList());
        QCOMPARE(link.program.messages(), QStringList{message});

        link.server.setSilent(true);
        link.program.click(button);
        QCOMPARE(link.program.prompts.takeBoxes(), QList<Box>{noResponseBox()});
        QCOMPARE(link.program.messages(), QStringList({message, message}));
    }

    void returnInTheConsoleLineSendsIt_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("Return") << Qt::Key_Return;
        QTest::newRow("Enter") << Qt::Key_Enter;
    }

    void returnInTheConsoleLineSendsIt()
    {
        QFETCH(Qt::Key, key);
        Link link;
        type(link, u"say hello"_s);
        press(key);
        QCOMPARE(link.program.messages(), QStringList{u"say hello"_s});
        QCOMPARE(commandsSoFar(link), QList<QByteArray>{"say hello"});
        QCOMPARE(link.program.rows(u"comdirect"_s), QStringList{u"say hello"_s});
        QCOMPARE(focused(), u"comdirect"_s);
    }
};

WINDOW_TEST(ConsoleTest)
#include "tst_console.moc"
