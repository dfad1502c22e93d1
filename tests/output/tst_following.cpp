// SPDX-License-Identifier: MIT
#include "program.h"
#include "shown_pane.h"
#include "window_test.h"

using namespace Qt::StringLiterals;

/// What the RCON pane shows when text comes: the newest, unless the person looks at older lines.
class FollowingTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theNewestTextIsFollowed()
    {
        Pane shown;
        for (int reply = 0; reply < 10; ++reply) {
            shown.append(lines(20));
            QTRY_VERIFY(shown.isAtEnd());
        }
        QVERIFY(shown.bar()->value() > 100);
    }

    void aBurstOfTextIsFollowed()
    {
        Pane shown;
        for (int line = 0; line < 200; ++line)
            shown.pane.append(lines(1));
        QTRY_VERIFY(shown.bar()->maximum() > 100);
        QTRY_VERIFY(shown.isAtEnd());
    }

    void longLinesAreFollowed_data()
    {
        QTest::addColumn<QStringList>("replies");
        const QString longText =
            u"sv_mapRotation gametype tdm map mp_toujane gametype sd map mp_carentan "_s.repeated(2);
        const QString longLine = longText + u"\r\n"_s;
        QTest::newRow("a long line after others") << QStringList({lines(30), u"word "_s.repeated(600) + u"\r\n"_s});
        QTest::newRow("many lines at once") << QStringList(longLine.repeated(200));
        QTest::newRow("many lines one by one") << QStringList(200, longLine);
        QTest::newRow("many lines after short replies")
            << QStringList(30, longLine.repeated(2) + u"short\r\n"_s) + QStringList(longLine.repeated(300));
        QTest::newRow("a short line after many") << QStringList({longLine.repeated(100), lines(1)});
    }

    void longLinesAreFollowed()
    {
        QFETCH(QStringList, replies);
        Pane shown;
        for (const QString &reply : std::as_const(replies))
            shown.append(reply);
        QTRY_VERIFY(shown.bar()->maximum() > 20);
        QTRY_VERIFY(shown.isAtEnd());
        shown.append(u"last\r\n"_s);
        QTRY_VERIFY(shown.isAtEnd());
    }

    void textThatCameWhileThePaneWasHiddenIsFollowed()
    {
        Pane shown;
        shown.pane.hide();
        shown.append(lines(200));
        shown.pane.show();
        QTRY_VERIFY(shown.bar()->maximum() > 100);
        QTRY_VERIFY(shown.isAtEnd());
    }

    void textThatCameBeforeTheFirstShowIsFollowed()
    {
        Program program;
        program.output.addrcon(lines(200));
        program.start();
        const QScrollBar *bar = program.output.pane().verticalScrollBar();
        QTRY_VERIFY(bar->maximum() > 50);
        QTRY_COMPARE(bar->value(), bar->maximum());
    }

    void aSmallerPaneStillShowsTheNewestText()
    {
        Pane shown;
        shown.append(lines(200));
        QTRY_VERIFY(shown.isAtEnd());
        const int before = shown.bar()->maximum();
        shown.pane.resize(500, 80);
        QTRY_VERIFY(shown.bar()->maximum() > before);
        QTRY_VERIFY(shown.isAtEnd());
    }

    void whoHasScrolledUpStaysThere()
    {
        Pane shown;
        shown.append(lines(200));
        QTRY_VERIFY(shown.isAtEnd());
        scrollUp(shown.pane);
        const int value = shown.bar()->value();
        const int before = shown.bar()->maximum();
        QVERIFY(value < before);

        for (int reply = 0; reply < 10; ++reply)
            shown.append(lines(20));
        QTRY_VERIFY(shown.bar()->maximum() >= before + 200);
        QCOMPARE(shown.bar()->value(), value);
    }

    void whoReadsTheOldestTextStaysThere()
    {
        Pane shown;
        shown.append(lines(200));
        QTRY_VERIFY(shown.isAtEnd());
        const int before = shown.bar()->maximum();
        shown.bar()->setValue(0);
        shown.append(lines(100));
        QTRY_VERIFY(shown.bar()->maximum() >= before + 100);
        QCOMPARE(shown.bar()->value(), 0);
    }

    void whoScrollsBackToTheEndFollowsAgain()
    {
        Pane shown;
        shown.append(lines(200));
        QTRY_VERIFY(shown.isAtEnd());
        scrollUp(shown.pane);
        shown.append(lines(20));
        QVERIFY(!shown.isAtEnd());
        shown.bar()->setValue(shown.bar()->maximum());
        const int before = shown.bar()->maximum();
        shown.append(lines(20));
        QTRY_VERIFY(shown.bar()->maximum() >= before + 20);
        QTRY_VERIFY(shown.isAtEnd());
    }

    void aClearedPaneFollowsAgain()
    {
        Program program;
        program.start();
        QScrollBar *bar = program.output.pane().verticalScrollBar();
        program.output.addrcon(lines(200));
        QTRY_VERIFY(bar->maximum() > 50);
        bar->setValue(10);
        program.output.clearrcon();
        QCOMPARE(program.pane(), QString());
        program.output.addrcon(lines(200));
        QTRY_VERIFY(bar->maximum() > 50);
        QTRY_COMPARE(bar->value(), bar->maximum());
    }
};

WINDOW_TEST(FollowingTest)
#include "tst_following.moc"
