// SPDX-License-Identifier: MIT
#include "messages_tab.h"

using namespace Qt::StringLiterals;

/// The messages of one set: adding, editing, moving and deleting them.
class MessagesEditorTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void tenMessagesAreTypedWithoutTheMouse()
    {
        MessagesTab tab(setsFile({{"Ann", {}}}));
        tab.program.setText(u"comdirect"_s, u"kick all"_s);
        tab.message()->setFocus();
        QStringList wanted;
        for (int number = 0; number < 10; ++number) {
            QTest::keyClicks(QApplication::focusWidget(), u"Line %1"_s.arg(number));
            QTest::keyClick(QApplication::focusWidget(), number % 2 == 0 ? Qt::Key_Return : Qt::Key_Enter);
            QCOMPARE(QApplication::focusWidget(), tab.message());
            QCOMPARE(tab.message()->text(), QString());
            wanted.append(u"Line %1"_s.arg(number));
            QCOMPARE(tab.messages(), wanted);
        }
        QVERIFY(tab.isPending());
        QCOMPARE(tab.saved(u"set0"_s, u"mess0"_s), QString());
        QVERIFY2(tab.program.messages().isEmpty(), "the console line is not sent");
    }

    void leavingTheBoxAddsTheMessageAndComesBack()
    {
        MessagesTab tab(setsFile({{"Ann", {"a0"}}}));
        tab.type(u"one more"_s);
        tab.leave();
        QCOMPARE(tab.messages(), (QStringList{u"a0"_s, u"one more"_s}));
        QCOMPARE(QApplication::focusWidget(), tab.message());
        tab.leave();
        QVERIFY(QApplication::focusWidget() != tab.message());
        QCOMPARE(tab.messages().size(), 2);
    }

    void anEmptyMessageIsNotAdded()
    {
        MessagesTab tab(setsFile({{"Ann", {"a0"}}}));
        tab.add({});
        QCOMPARE(tab.messages(), QStringList{u"a0"_s});
        QVERIFY(QApplication::focusWidget() != tab.message());
        QVERIFY(!tab.isPending());
    }

    void aMessageGoesToTheSetThatIsShown()
    {
        MessagesTab tab(threeSets());
        tab.choose(u"Ben"_s);
        tab.add(u"b1"_s);
        tab.choose(u"Ann"_s);
        QCOMPARE(tab.messages(), (QStringList{u"a0"_s, u"a1"_s, u"a2"_s}));
        tab.choose(u"Ben"_s);
        QCOMPARE(tab.messages(), (QStringList{u"b0"_s, u"b1"_s}));
    }

    void aDoubleClickTakesAMessageForEditing()
    {
        MessagesTab tab(threeSets());
        tab.doubleClick(1);
        QCOMPARE(tab.message()->text(), u"a1"_s);
        QCOMPARE(QApplication::focusWidget(), tab.message());
        QVERIFY(!tab.isPending());
        tab.add(u"changed"_s);
        QCOMPARE(tab.messages(), (QStringList{u"a0"_s, u"changed"_s, u"a2"_s}));
        QCOMPARE(tab.message()->text(), QString());
        QVERIFY(tab.isPending());
        tab.add(u"new"_s);
        QCOMPARE(tab.messages(), (QStringList{u"a0"_s, u"changed"_s, u"a2"_s, u"new"_s}));
    }

    void aMessageThatWasNotEditedStays()
    {
        MessagesTab tab(threeSets());
        tab.doubleClick(1);
        tab.leave();
        QCOMPARE(tab.message()->text(), QString());
        QCOMPARE(tab.messages(), (QStringList{u"a0"_s, u"a1"_s, u"a2"_s}));
        QVERIFY(!tab.isPending());
        tab.add(u"new"_s);
        QCOMPARE(tab.messages(), (QStringList{u"a0"_s, u"a1"_s, u"a2"_s, u"new"_s}));
    }

    void theSameTextTypedAgainChangesNothing()
    {
        MessagesTab tab(threeSets());
        tab.doubleClick(1);
        tab.add(u"a1"_s);
        QCOMPARE(tab.messages(), (QStringList{u"a0"_s, u"a1"_s, u"a2"_s}));
        QCOMPARE(tab.message()->text(), QString());
        QVERIFY(!tab.isPending());
    }

    // The message is still the one that is edited.
    void anEmptiedMessageIsReplacedByTheNextText()
    {
        MessagesTab tab(threeSets());
        tab.doubleClick(2);
        tab.type({});
        tab.leave();
        QCOMPARE(tab.messages(), (QStringList{u"a0"_s, u"a1"_s, u"a2"_s}));
        tab.add(u"other"_s);
        QCOMPARE(tab.messages(), (QStringList{u"a0"_s, u"a1"_s, u"other"_s}));
    }

    // The list's row changes, and the set's first of the two.
    void ofTwoEqualMessagesTheFirstIsReplaced()
    {
        MessagesTab tab(setsFile({{"Ann", {"same", "same"}}}));
        tab.doubleClick(1);
        tab.add(u"other"_s);
        QCOMPARE(tab.messages(), (QStringList{u"same"_s, u"other"_s}));
        tab.choose(u"Ann"_s);
        QCOMPARE(tab.messages(), (QStringList{u"other"_s, u"same"_s}));
    }

    void messagesMove_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<int>("row");
        QTest::addColumn<QStringList>("messages");
        QTest::addColumn<int>("selected");
        const QStringList unchanged{u"a0"_s, u"a1"_s, u"a2"_s};
        QTest::newRow("up") << u"imgup"_s << 2 << QStringList{u"a0"_s, u"a2"_s, u"a1"_s} << 1;
        QTest::newRow("down") << u"imgdown"_s << 0 << QStringList{u"a1"_s, u"a0"_s, u"a2"_s} << 1;
        QTest::newRow("up from the top") << u"imgup"_s << 0 << unchanged << 0;
        QTest::newRow("down from the bottom") << u"imgdown"_s << 2 << unchanged << 2;
        QTest::newRow("up without a row") << u"imgup"_s << -1 << unchanged << -1;
        QTest::newRow("down without a row") << u"imgdown"_s << -1 << unchanged << -1;
    }

    void messagesMove()
    {
        QFETCH(QString, button);
        QFETCH(int, row);
        QFETCH(QStringList, messages);
        QFETCH(int, selected);
        for (const bool byKeyboard : {false, true}) {
            MessagesTab tab(threeSets());
            if (row >= 0)
                tab.select(row);
            press(tab, button, byKeyboard);
            QCOMPARE(tab.messages(), messages);
            QCOMPARE(selectedRows(tab), selected < 0 ? QList<int>() : QList<int>{selected});
            QCOMPARE(tab.isPending(), selected != row);
            tab.choose(u"Ann"_s);
            QCOMPARE(tab.messages(), messages);
        }
    }

    void aMessageTravelsThroughTheWholeList()
    {
        MessagesTab tab(threeSets());
        tab.select(0);
        for (int step = 0; step < 3; ++step)
            tab.click(u"imgdown"_s);
        QCOMPARE(tab.messages(), (QStringList{u"a1"_s, u"a2"_s, u"a0"_s}));
        for (int step = 0; step < 3; ++step)
            tab.click(u"imgup"_s);
        QCOMPARE(tab.messages(), (QStringList{u"a0"_s, u"a1"_s, u"a2"_s}));
    }

    void aMessageIsDeleted()
    {
        for (const bool byKeyboard : {false, true}) {
            MessagesTab tab(threeSets());
            press(tab, u"imgdel"_s, byKeyboard);
            QVERIFY2(!tab.isPending(), "no row is selected");
            tab.select(1);
            press(tab, u"imgdel"_s, byKeyboard);
            QCOMPARE(tab.messages(), (QStringList{u"a0"_s, u"a2"_s}));
            QVERIFY(tab.isPending());
            tab.choose(u"Ann"_s);
            QCOMPARE(tab.messages(), (QStringList{u"a0"_s, u"a2"_s}));
        }
    }

    // The row is taken for the position in the set: what the list no longer shows is still there.
    void theFirstRowDeletedTwiceLeavesItsSecondMessage()
    {
        MessagesTab tab(threeSets());
        for (int time = 0; time < 2; ++time) {
            tab.select(0);
            tab.click(u"imgdel"_s);
        }
        QCOMPARE(tab.messages(), QStringList{u"a2"_s});
        tab.save();
        QCOMPARE(tab.saved(u"set0"_s, u"mess0"_s), QString());
        QCOMPARE(tab.saved(u"set0"_s, u"mess1"_s), u"a1"_s);
        QCOMPARE(tab.saved(u"set0"_s, u"mess2"_s), u"a2"_s);
        tab.choose(u"Ann"_s);
        QCOMPARE(tab.messages(), (QStringList{u"a1"_s, u"a2"_s}));
    }

private:
    static void press(const MessagesTab &tab, const QString &button, bool byKeyboard)
    {
        if (!byKeyboard) {
            tab.click(button);
            return;
        }
        auto *picture = tab.program.find<QAbstractButton>(button);
        picture->setFocus(Qt::TabFocusReason);
        QTest::keyClick(picture, Qt::Key_Space);
    }
    static QList<int> selectedRows(const MessagesTab &tab)
    {
        QList<int> rows;
        for (const QListWidgetItem *item : tab.list()->selectedItems())
            rows.append(tab.list()->row(item));
        return rows;
    }
};

WINDOW_TEST(MessagesEditorTest)
#include "tst_messages_editor.moc"
