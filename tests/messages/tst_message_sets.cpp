// SPDX-License-Identifier: MIT
#include "sample_sets.h"
#include "test_class.h"

using namespace Qt::StringLiterals;

/// The message sets apart from any window: loading them, and what becomes of them in the editor.
class MessageSetsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void loading_data()
    {
        QTest::addColumn<QByteArray>("settings");
        QTest::addColumn<QStringList>("setNames");
        QTest::addColumn<QStringList>("first"); ///< the messages of the first slot
        QTest::newRow("an empty file") << QByteArray() << QStringList() << QStringList();
        QTest::newRow("no name") << QByteArray("[set0]\r\nmess0=a\r\n") << QStringList() << QStringList();
        QTest::newRow("an empty name") << QByteArray("[set0]\r\nname=\r\nmess0=a\r\n") << QStringList()
                                       << QStringList();
        QTest::newRow("a gap ends the sets")
            << QByteArray("[set0]\r\nname=A\r\n[set1]\r\nname=B\r\n[set3]\r\nname=D\r\n") << QStringList{u"A"_s, u"B"_s}
            << QStringList();
        QTest::newRow("a gap ends the messages") << QByteArray("[set0]\r\nname=A\r\nmess0=x\r\nmess1=y\r\nmess3=z\r\n")
                                                 << QStringList{u"A"_s} << QStringList{u"x"_s, u"y"_s};
        QTest::newRow("an empty message ends them")
            << QByteArray("[set0]\r\nname=A\r\nmess0=\r\nmess1=y\r\n") << QStringList{u"A"_s} << QStringList();
        QTest::newRow("an eleventh set is not read") <<
            [] {
                QByteArray text;
                for (int number = 0; number < 11; ++number)
                    text += "[set" + QByteArray::number(number) + "]\r\nname=S" + QByteArray::number(number) + "\r\n";
                return text;
            }() << QStringList{u"S0"_s, u"S1"_s, u"S2"_s, u"S3"_s, u"S4"_s, u"S5"_s, u"S6"_s, u"S7"_s, u"S8"_s, u"S9"_s}
                                                     << QStringList();
        QTest::newRow("199 characters of a long name and a long message")
            << QByteArray("[set0]\r\nname=" + QByteArray(200, 'n') + "\r\nmess0=" + QByteArray(500, 'm') +
                          "\r\nmess1=" + QByteArray(199, 'o') + "\r\n")
            << QStringList{QString(199, u'n')} << QStringList{QString(199, u'm'), QString(199, u'o')};
    }

    void loading()
    {
        QFETCH(QByteArray, settings);
        QFETCH(QStringList, setNames);
        const MessageSets sets = loaded(settings);
        QCOMPARE(sets.setcount(), setNames.size());
        QCOMPARE(sets.currentset(), 0);
        QCOMPARE(names(sets), padded(setNames));
        QTEST(sets.messages(), "first");
        for (const QString &name : setNames)
            QCOMPARE(sets.savedSlotOf(name), sets.slotOf(name));
    }

    void loadingAgainForgetsWhatWasThere()
    {
        MessageSets sets = four();
        sets.select(u"Dan"_s);
        sets.load(IniText("[set0]\r\nname=New\r\n"));
        QCOMPARE(names(sets), padded({u"New"_s}));
        QCOMPARE(sets.setcount(), 1);
        QCOMPARE(sets.currentset(), 0);
        QCOMPARE(sets.messages(), QStringList());
        QCOMPARE(sets.savedSlotOf(u"Dan"_s), -1);
    }

    void aNewSetTakesTheFirstFreeSlot()
    {
        MessageSets sets = four();
        sets.removeSet(u"Ben"_s);
        QCOMPARE(sets.setcount(), 3);
        sets.create(u"Eve"_s);
        QCOMPARE(sets.currentset(), 1);
        QCOMPARE(sets.setcount(), 4);
        QCOMPARE(sets.messages(), QStringList());
        QCOMPARE(names(sets), padded({u"Ann"_s, u"Eve"_s, u"Cem"_s, u"Dan"_s}));
    }

    void messagesTypedBeforeAnySetJoinTheFirst()
    {
        MessageSets sets;
        sets.add(u"early"_s);
        QVERIFY(!sets.entries().contains(IniEntry{u"set0"_s, u"mess0"_s, u"early"_s}));
        sets.create(u"Ann"_s);
        QCOMPARE(sets.messages(), QStringList{u"early"_s});
    }

    void tenSetsLeaveNoFreeSlot()
    {
        MessageSets sets;
        for (int number = 0; number < 10; ++number) {
            QVERIFY(sets.hasFreeSlot());
            sets.create(u"S%1"_s.arg(number));
        }
        QVERIFY(!sets.hasFreeSlot());
        sets.removeSet(u"S4"_s);
        QVERIFY(sets.hasFreeSlot());
    }

    void aSetIsFoundByItsExactName()
    {
        MessageSets sets = four();
        sets.select(u"Cem"_s);
        QCOMPARE(sets.currentset(), 2);
        QCOMPARE(sets.slotOf(u"cem"_s), -1);
        sets.select(u"cem"_s);
        QCOMPARE(sets.currentset(), 2);
    }

    void aMessageFillsTheFirstHole()
    {
        MessageSets sets = withMessages({u"a"_s, u"b"_s, u"c"_s});
        sets.removeAt(1);
        QCOMPARE(sets.messages(), (QStringList{u"a"_s, u"c"_s}));
        sets.add(u"new"_s);
        QCOMPARE(sets.messages(), (QStringList{u"a"_s, u"new"_s, u"c"_s}));
    }

    void editingReplacesTheFirstOfEqualMessages()
    {
        MessageSets sets = withMessages({u"a"_s, u"b"_s, u"b"_s});
        QVERIFY(sets.edit(u"b"_s, u"x"_s));
        QCOMPARE(sets.messages(), (QStringList{u"a"_s, u"x"_s, u"b"_s}));
        QVERIFY2(!sets.edit(u"a"_s, u"a"_s), "nothing changes");
        QVERIFY2(!sets.edit(u"none"_s, u"y"_s), "nothing is replaced");
        QCOMPARE(sets.messages(), (QStringList{u"a"_s, u"x"_s, u"b"_s}));
    }

    void messagesChangePlaces()
    {
        MessageSets sets = withMessages({u"a"_s, u"b"_s, u"c"_s});
        sets.swap(0, 1);
        sets.swap(2, 1);
        QCOMPARE(sets.messages(), (QStringList{u"b"_s, u"c"_s, u"a"_s}));
    }

    // After a save the current set is the first slot, while the list may still show another, longer one.
    void aRowBeyondTheStoreIsNoPosition()
    {
        MessageSets sets;
        sets.create(u"A"_s);
        sets.add(u"one"_s);
        sets.removeAt(7);
        QCOMPARE(sets.messages(), QStringList{u"one"_s});
        sets.swap(0, 2);
        QCOMPARE(sets.messages(), QStringList{u"one"_s});
        sets.add(u"two"_s);
        QCOMPARE(sets.messages(), QStringList({u"two"_s, u"one"_s}));
    }
};

GUILESS_TEST(MessageSetsTest)
#include "tst_message_sets.moc"
