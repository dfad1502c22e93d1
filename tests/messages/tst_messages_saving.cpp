// SPDX-License-Identifier: MIT
#include "messages_tab.h"

#include <QDir>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;

namespace {

const QString settingsFile = u"molvark.ini"_s;
const Box failedBox{u"Failed to write INI"_s,
                    u"Failed to write to INI file, Please report bug and messages attempted"_s, BoxIcon::Exclamation,
                    BoxButtons::Ok};
const Box unsavedBox{u"Unsaved Messages Sets"_s,
                     u"Message changes not saved\rClick OK if you wish to go back to save them"_s, BoxIcon::Exclamation,
                     BoxButtons::OkCancel};

/// What the file holds under the keys of one set, up to the empty message at its end.
QStringList savedSet(const MessagesTab &tab, int number)
{
    const QString section = u"set%1"_s.arg(number);
    QStringList texts{tab.saved(section, u"name"_s)};
    for (int message = 0; !tab.saved(section, u"mess%1"_s.arg(message)).isEmpty(); ++message)
        texts.append(tab.saved(section, u"mess%1"_s.arg(message)));
    return texts;
}

} // namespace

/// Saving the sets to the settings file, and discarding changes.
class MessagesSavingTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void savingWritesTheSets()
    {
        MessagesTab tab(threeSets());
        tab.add(u"a3"_s);
        tab.choose(u"New"_s);
        tab.add(u"n0"_s);
        tab.program.prompts.takeBoxes();
        QCOMPARE(savedSet(tab, 0), (QStringList{u"Ann"_s, u"a0"_s, u"a1"_s, u"a2"_s}));
        QStringList notes;
        connect(tab.program.progress()->findChild<QPlainTextEdit *>(u"txtprogress"_s), &QPlainTextEdit::textChanged,
                this, [&] { notes.append(tab.program.note()); });
        tab.save();
        QCOMPARE(savedSet(tab, 0), (QStringList{u"Ann"_s, u"a0"_s, u"a1"_s, u"a2"_s, u"a3"_s}));
        QCOMPARE(savedSet(tab, 3), (QStringList{u"New"_s, u"n0"_s}));
        QVERIFY(!tab.isPending());
        QCOMPARE(tab.free(), u"6"_s);
        QVERIFY(notes.first().endsWith(u"Writing changes to INI file"));
        QVERIFY(!tab.program.progress()->isVisible());
    }

    // The click takes the focus out of the message box first.
    void aMessageThatIsStillInItsBoxIsSavedToo()
    {
        MessagesTab tab(threeSets());
        tab.add(u"a3"_s);
        tab.type(u"a4"_s);
        tab.click(u"cmdsetsave"_s);
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{saveBox()});
        QCOMPARE(savedSet(tab, 0), (QStringList{u"Ann"_s, u"a0"_s, u"a1"_s, u"a2"_s, u"a3"_s, u"a4"_s}));
    }

    void savingKeepsTheRestOfTheFile()
    {
        const QByteArray others = "; mine\r\n[options]\r\nsavercon=0\r\n";
        MessagesTab tab(others);
        tab.choose(u"New"_s);
        tab.program.prompts.takeBoxes();
        tab.save();
        QVERIFY(tab.program.file(settingsFile).startsWith(others));
        QCOMPARE(tab.free(), u"9"_s);
    }

    void theThirdOfFourDeletedIsSavedWithoutAGap()
    {
        MessagesTab tab(setsFile({{"Ann", {"a0"}}, {"Ben", {"b0"}}, {"Cem", {"c0"}}, {"Dan", {"d0", "d1"}}}));
        tab.choose(u"Cem"_s);
        tab.click(u"cmdsetdel"_s);
        tab.program.prompts.takeBoxes();
        tab.save();
        QCOMPARE(savedSet(tab, 1), (QStringList{u"Ben"_s, u"b0"_s}));
        QCOMPARE(savedSet(tab, 2), (QStringList{u"Dan"_s, u"d0"_s, u"d1"_s}));
        for (int number = 3; number <= 9; ++number)
            QVERIFY(tab.program.file(settingsFile).contains("[set" + QByteArray::number(number) + "]\r\nname=\r\n"));
        QCOMPARE(tab.free(), u"7"_s);
    }

    // Until a set is chosen again, the first one is edited whatever the box shows.
    void afterSavingMessagesGoToTheFirstSet()
    {
        MessagesTab tab(threeSets());
        tab.choose(u"Ben"_s);
        tab.add(u"b1"_s);
        tab.save();
        tab.add(u"late"_s);
        QCOMPARE(tab.messages(), (QStringList{u"b0"_s, u"b1"_s, u"late"_s}));
        tab.choose(u"Ben"_s);
        QCOMPARE(tab.messages(), (QStringList{u"b0"_s, u"b1"_s}));
        tab.choose(u"Ann"_s);
        QCOMPARE(tab.messages(), (QStringList{u"a0"_s, u"a1"_s, u"a2"_s, u"late"_s}));
    }

    void aLongMessageIsSavedWholeAndReadCut()
    {
        const QString text = QString(199, u'x') + u"end"_s;
        MessagesTab tab(setsFile({{"Ann", {}}}));
        tab.add(text);
        tab.save();
        QCOMPARE(tab.saved(u"set0"_s, u"mess0"_s), text);
        const MessagesTab next(tab.program.file(settingsFile));
        QCOMPARE(next.messages(), QStringList{QString(199, u'x')});
    }

    void aSaveThatFailsIsTold()
    {
        MessagesTab tab(threeSets());
        tab.choose(u"New"_s);
        tab.program.prompts.takeBoxes();
        QVERIFY(QFile::remove(settingsFile) && QDir().mkdir(settingsFile));
        tab.program.click(u"cmdsetsave"_s);
        QCOMPARE(tab.program.prompts.takeBoxes(), (QList<Box>{saveBox(), failedBox}));
        QVERIFY(!tab.isPending());
        QCOMPARE(tab.free(), u" 6"_s);
        QVERIFY(!tab.program.progress()->isVisible());
        QCOMPARE(tab.sets(), (QStringList{u"Ann"_s, u"Ben"_s, u"Cem"_s, u"New"_s}));

        QVERIFY(QDir().rmdir(settingsFile));
        tab.choose(u"Ann"_s);
        tab.add(u"more"_s);
        tab.save();
        QCOMPARE(savedSet(tab, 0), (QStringList{u"Ann"_s, u"a0"_s, u"a1"_s, u"a2"_s, u"more"_s}));
        QCOMPARE(tab.free(), u"6"_s);
    }

    void discardingGoesBackToWhatWasSaved_data()
    {
        QTest::addColumn<bool>("bySaving"); ///< through "Cancel" in the question of saving
        QTest::newRow("the button") << false;
        QTest::newRow("saving cancelled") << true;
    }

    void discardingGoesBackToWhatWasSaved()
    {
        QFETCH(bool, bySaving);
        MessagesTab tab(threeSets());
        tab.add(u"a3"_s);
        tab.choose(u"Cem"_s);
        tab.click(u"cmdsetdel"_s);
        tab.program.prompts.takeBoxes();
        const QByteArray before = tab.program.file(settingsFile);
        if (bySaving)
            tab.program.prompts.answers = {Answer::Cancel};
        tab.program.click(bySaving ? u"cmdsetsave"_s : u"cmdsetdis"_s);
        QCOMPARE(tab.program.prompts.takeBoxes(),
                 (bySaving ? QList<Box>{saveBox()} : QList<Box>()) + QList<Box>({discardBox(), revertedBox()}));
        QCOMPARE(tab.sets(), (QStringList{u"Ann"_s, u"Ben"_s, u"Cem"_s}));
        QCOMPARE(tab.set(), QString());
        QCOMPARE(tab.messages(), QStringList());
        QVERIFY(!tab.isPending());
        QVERIFY2(tab.free() == u"8", "the number stays as it was");
        QCOMPARE(tab.program.file(settingsFile), before);
        tab.choose(u"Ann"_s);
        QCOMPARE(tab.messages(), (QStringList{u"a0"_s, u"a1"_s, u"a2"_s}));
    }

    void discardingCanBeRefused()
    {
        MessagesTab tab(threeSets());
        tab.add(u"a3"_s);
        tab.program.prompts.answers = {Answer::No};
        tab.program.click(u"cmdsetdis"_s);
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{discardBox()});
        tab.program.prompts.answers = {Answer::Cancel, Answer::No};
        tab.program.click(u"cmdsetsave"_s);
        QCOMPARE(tab.program.prompts.takeBoxes(), (QList<Box>{saveBox(), discardBox()}));
        QCOMPARE(tab.messages(), (QStringList{u"a0"_s, u"a1"_s, u"a2"_s, u"a3"_s}));
        QVERIFY(tab.isPending());
        QCOMPARE(savedSet(tab, 0).size(), 4);
    }

    // Its name is still in its slot.
    void aDiscardedNewSetIsWrittenByTheNextSave()
    {
        MessagesTab tab(setsFile({{"Ann", {"a0"}}}));
        tab.choose(u"New"_s);
        tab.add(u"n0"_s);
        tab.program.click(u"cmdsetdis"_s);
        tab.program.prompts.takeBoxes();
        QCOMPARE(tab.sets(), QStringList{u"Ann"_s});
        tab.choose(u"Ann"_s);
        tab.add(u"a1"_s);
        tab.save();
        QCOMPARE(savedSet(tab, 0), (QStringList{u"Ann"_s, u"a0"_s, u"a1"_s}));
        QCOMPARE(savedSet(tab, 1), QStringList{u"New"_s});
        QCOMPARE(tab.free(), u"8"_s);
    }

    void aDeletedSetComesBackEmptyWhenChangesAreDiscardedAfterSaving()
    {
        MessagesTab tab(threeSets());
        tab.choose(u"Ben"_s);
        tab.click(u"cmdsetdel"_s);
        tab.program.prompts.takeBoxes();
        tab.save();
        QCOMPARE(savedSet(tab, 1), QStringList{u"Cem"_s});
        tab.choose(u"Ann"_s);
        tab.add(u"a3"_s);
        tab.program.click(u"cmdsetdis"_s);
        tab.program.prompts.takeBoxes();
        QCOMPARE(tab.sets(), (QStringList{u"Ann"_s, u"Ben"_s, u"Cem"_s}));
        tab.choose(u"Ben"_s);
        QCOMPARE(tab.messages(), QStringList());
    }

    void tenFullSetsAreThereAgainAfterTheProgramHasBeenClosed()
    {
        QByteArray file;
        QList<QStringList> wanted;
        {
            MessagesTab tab;
            for (int number = 0; number < 10; ++number) {
                QStringList messages;
                tab.choose(u"Server %1"_s.arg(number));
                for (int line = 0; line < 10; ++line) {
                    const QString text = u"^%1Set %2, line %3: \"%IP%\" = 'x'; [y] "_s.arg(line).arg(number).arg(line);
                    tab.type(text);
                    tab.message()->insert(u"é"_s);
                    QTest::keyClick(tab.message(), Qt::Key_Return);
                    messages.append(text + u'é');
                }
                wanted.append(messages);
            }
            QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>(10, newSetBox()));
            QCOMPARE(tab.free(), u" 0"_s);
            tab.save();
            QCOMPARE(tab.free(), u"0"_s);
            QVERIFY(tab.program.window.close());
            file = tab.program.file(settingsFile);
        }
        MessagesTab tab(file);
        QCOMPARE(tab.sets().size(), 10);
        QCOMPARE(tab.free(), u" 0"_s);
        QCOMPARE(tab.messages(), wanted.first());
        for (int number = 9; number >= 0; --number) {
            QCOMPARE(tab.sets().at(number), u"Server %1"_s.arg(number));
            tab.choose(u"Server %1"_s.arg(number));
            QCOMPARE(tab.messages(), wanted.at(number));
        }
        QVERIFY(!tab.isPending());
    }

    void closingAsksForUnsavedSets()
    {
        MessagesTab tab(threeSets());
        tab.add(u"a3"_s);
        QVERIFY(!tab.program.window.close());
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{unsavedBox});
        QVERIFY(tab.program.window.isVisible() && tab.isPending());
        tab.program.prompts.answers = {Answer::Cancel};
        QVERIFY(tab.program.window.close());
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{unsavedBox});
        QCOMPARE(savedSet(tab, 0).size(), 4);
    }

    void closingSavedSetsAsksNothing()
    {
        MessagesTab tab(threeSets());
        tab.add(u"a3"_s);
        tab.save();
        QVERIFY(tab.program.window.close());
    }
};

WINDOW_TEST(MessagesSavingTest)
#include "tst_messages_saving.moc"
