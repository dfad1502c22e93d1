// SPDX-License-Identifier: MIT
#include "sample_sets.h"
#include "test_class.h"

using namespace Qt::StringLiterals;

/// The message sets apart from any window: what is saved of them, and what comes back.
class MessageSetsSavedTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void thePositionsAreSharedByAllSets()
    {
        MessageSets sets = four();
        QCOMPARE(sets.savedMessages(0), (QStringList{u"a0"_s, {}}));
        QCOMPARE(sets.savedMessages(3), (QStringList{u"d0"_s, u"d1"_s}));
        QCOMPARE(sets.savedMessages(9), (QStringList{{}, {}}));
        sets.select(u"Ben"_s);
        for (const QString &message : {u"b1"_s, u"b2"_s, u"b3"_s})
            sets.add(message);
        QCOMPARE(sets.messages(), (QStringList{u"b0"_s, u"b1"_s, u"b2"_s, u"b3"_s}));
        sets.select(u"Ann"_s);
        QCOMPARE(sets.messages(), QStringList{u"a0"_s});
        QCOMPARE(sets.savedMessages(1).size(), 2);
        saved(sets);
        QCOMPARE(sets.savedMessages(0), (QStringList{u"a0"_s, {}, {}, {}}));
        QCOMPARE(sets.savedMessages(1), (QStringList{u"b0"_s, u"b1"_s, u"b2"_s, u"b3"_s}));
    }

    // The row is taken for the position: a hole moves like a message.
    void aHoleChangesPlacesToo()
    {
        MessageSets sets = withMessages({u"a"_s, u"b"_s, u"c"_s});
        sets.removeAt(0);
        sets.swap(0, 1);
        QCOMPARE(saved(sets).mid(0, 4),
                 (QStringList{u"set0/name=Ann"_s, u"set0/mess0=b"_s, u"set0/mess1=c"_s, u"set0/mess2="_s}));
    }

    void theFirstRowDeletedTwiceLeavesItsSecondMessage()
    {
        MessageSets sets = withMessages({u"a"_s, u"b"_s, u"c"_s});
        sets.removeAt(0);
        sets.removeAt(0);
        QCOMPARE(sets.messages(), (QStringList{u"b"_s, u"c"_s}));
        QCOMPARE(saved(sets), (QStringList{u"set0/name=Ann"_s, u"set0/mess0="_s, u"set0/mess1=b"_s, u"set0/mess2=c"_s,
                                           u"set0/mess3="_s} +
                               emptyNames(1)));
    }

    void aSetWithoutMessagesIsWrittenWithAnEmptyFirst()
    {
        MessageSets sets = withMessages({});
        QCOMPARE(saved(sets), QStringList({u"set0/name=Ann"_s, u"set0/mess0="_s, u"set0/mess1="_s}) + emptyNames(1));
    }

    void withoutSetsAllNamesAreEmptied()
    {
        MessageSets sets;
        QCOMPARE(saved(sets), emptyNames(0));
    }

    void theThirdOfFourDeletedIsSavedWithoutAGap()
    {
        MessageSets sets = four();
        sets.removeSet(u"Cem"_s);
        const QStringList wanted{u"set0/name=Ann"_s, u"set0/mess0=a0"_s, u"set0/mess1="_s,   u"set1/name=Ben"_s,
                                 u"set1/mess0=b0"_s, u"set1/mess1="_s,   u"set2/name=Dan"_s, u"set2/mess0=d0"_s,
                                 u"set2/mess1=d1"_s, u"set2/mess2="_s};
        QCOMPARE(saved(sets), wanted + emptyNames(3));
        QCOMPARE(sets.setcount(), 3);
        QVERIFY2(sets.name(2).isEmpty() && sets.name(3) == u"Dan"_s, "in memory each stays in its slot");
    }

    void savingGoesBackToTheFirstSlot()
    {
        MessageSets sets = four();
        sets.select(u"Cem"_s);
        saved(sets);
        QCOMPARE(sets.currentset(), 0);
        sets.add(u"late"_s);
        QCOMPARE(sets.messages(), (QStringList{u"a0"_s, u"late"_s}));
    }

    void aLongMessageIsWrittenWholeAndReadCut()
    {
        const QString text = QString(198, u'x') + u"yz"_s;
        MessageSets sets = withMessages({text});
        QVERIFY(sets.entries().contains(IniEntry{u"set0"_s, u"mess0"_s, text}));
        IniText ini;
        for (const IniEntry &entry : sets.entries())
            ini.set(entry);
        QCOMPARE(loaded(ini.bytes()).messages(), QStringList{QString(198, u'x') + u'y'});
    }

    void whatIsSavedIsWhatTheCyclerSees()
    {
        MessageSets sets = four();
        sets.select(u"Ann"_s);
        sets.add(u"a1"_s);
        QCOMPARE(sets.savedMessages(0), (QStringList{u"a0"_s, {}}));
        sets.create(u"Eve"_s);
        QCOMPARE(sets.savedSlotOf(u"Eve"_s), -1);
        saved(sets);
        QCOMPARE(sets.savedMessages(0), (QStringList{u"a0"_s, u"a1"_s}));
        QCOMPARE(sets.savedSlotOf(u"Eve"_s), 4);
    }

    void discardingPutsTheSavedSetsBack()
    {
        MessageSets sets = four();
        sets.removeSet(u"Ben"_s);
        sets.select(u"Ann"_s);
        sets.edit(u"a0"_s, u"other"_s);
        sets.add(u"more"_s);
        QCOMPARE(sets.discard(), (QStringList{u"Ann"_s, u"Ben"_s, u"Cem"_s, u"Dan"_s}));
        QCOMPARE(names(sets), padded({u"Ann"_s, u"Ben"_s, u"Cem"_s, u"Dan"_s}));
        QCOMPARE(sets.messages(), QStringList{u"a0"_s});
        sets.select(u"Ben"_s);
        QCOMPARE(sets.messages(), QStringList{u"b0"_s});
        QVERIFY2(sets.setcount() == 3, "the count stays as it was");
    }

    // The name stays in its slot, without its messages.
    void aCreatedSetOutlivesDiscarding()
    {
        MessageSets sets = four();
        sets.create(u"Eve"_s);
        sets.add(u"e0"_s);
        QCOMPARE(sets.discard(), (QStringList{u"Ann"_s, u"Ben"_s, u"Cem"_s, u"Dan"_s}));
        QCOMPARE(sets.setcount(), 5);
        QCOMPARE(sets.currentset(), 4);
        QCOMPARE(sets.name(4), u"Eve"_s);
        const QStringList lines = saved(sets);
        QCOMPARE(lines.mid(lines.indexOf(u"set4/name=Eve"_s)),
                 QStringList({u"set4/name=Eve"_s, u"set4/mess0="_s, u"set4/mess1="_s}) + emptyNames(5));
    }

    void theSavedNameOfADeletedSetComesBackWithoutMessages()
    {
        MessageSets sets = four();
        sets.removeSet(u"Cem"_s);
        saved(sets);
        QCOMPARE(sets.discard(), (QStringList{u"Ann"_s, u"Ben"_s, u"Cem"_s, u"Dan"_s}));
        sets.select(u"Cem"_s);
        QCOMPARE(sets.messages(), QStringList());
        QCOMPARE(sets.setcount(), 3);
    }

    void aFailedSaveLeavesTheCountAtNothing()
    {
        MessageSets sets = four();
        sets.select(u"Cem"_s);
        sets.beginSave();
        QCOMPARE(sets.setcount(), 0);
        QCOMPARE(sets.currentset(), 0);
        QCOMPARE(names(sets), padded({u"Ann"_s, u"Ben"_s, u"Cem"_s, u"Dan"_s}));
        QCOMPARE(sets.messages(), QStringList{u"a0"_s});
        QCOMPARE(sets.savedMessages(0), (QStringList{{}, {}}));
        const QStringList lines = saved(sets);
        QVERIFY2(lines.contains(u"set3/mess1=d1"_s) && sets.setcount() == 4, "the next save writes all");
    }
};

GUILESS_TEST(MessageSetsSavedTest)
#include "tst_message_sets_saved.moc"
