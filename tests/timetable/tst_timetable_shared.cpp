// SPDX-License-Identifier: MIT
#include "activation.h"
#include "timetable_hands.h"
#include "window_test.h"

#include <QDir>
#include <QFocusEvent>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

const QString toldOfOthers = u"Another program has changed the timetable; these are its lists"_s;

/// Three lists, of which the first is switched on, and which another program changes.
struct Shared final : TimetableHands {
    Shared()
    {
        for (const QString &name : {u"x"_s, u"y"_s, u"z"_s})
            add(name, {u"say "_s + name}, u"every N minutes"_s);
        choose(0);
        activate();
        before = file();
    }

    /// It switches the first list off.
    void switchOff()
    {
        theirs = file();
        if (!theirs.replace("\"active\": true", "\"active\": false").contains("\"x\"") || theirs == file())
            failTest(u"nothing to switch off"_s);
        put(theirs);
    }
    /// It has only one list by now.
    void leaveOne()
    {
        theirs = R"({"version":1,"lists":[{"name":"theirs","commands":["say theirs"],"active":false,)"
                 R"("when":"by hand","time":"10:00","days":[],"minutes":5}]})";
        put(theirs);
    }
    /// Changes a field without leaving it.
    void beginToType(const QString &text) const { find<QLineEdit>("txtttname")->setText(text); }
    [[nodiscard]] QStringList lists() const { return rows("lsttimetable"); }
    [[nodiscard]] bool hasNothingChosen() const
    {
        return find<QListWidget>("lsttimetable")->currentRow() < 0 && !find<QLineEdit>("txtttname")->isEnabled() &&
               !find<QPushButton>("cmdttrun")->isEnabled() && name().isEmpty();
    }
    [[nodiscard]] QString name() const { return find<QLineEdit>("txtttname")->text(); }

    QByteArray before;
    QByteArray theirs;
};

} // namespace

/// The file of the timetable, at which another program or a person may have been meanwhile.
class TimetableSharedTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void anotherProgramsListsAreNotWrittenOver()
    {
        Shared it;
        it.leaveOne();
        it.type(u"txtttname"_s, u"changed"_s);
        QCOMPARE(it.file(), it.theirs);
        QCOMPARE(it.next(), toldOfOthers);
        QCOMPARE(it.status(), toldOfOthers);
        QCOMPARE(it.lists(), QStringList{u"theirs (off)"_s});
        QVERIFY(it.hasNothingChosen());
        it.window->close();
        QCOMPARE(it.file(), it.theirs);
        it.open();
        it.choose(0);
        QCOMPARE(it.name(), u"theirs"_s);
        it.type(u"txtttname"_s, u"ours now"_s);
        QVERIFY(it.file().contains("ours now") && it.file().contains("say theirs"));
    }

    void closingTheWindowWritesNoOldFieldsOverThem()
    {
        Shared it;
        it.switchOff();
        it.type(u"txtttname"_s, u"changed"_s);
        QVERIFY(!it.find<QCheckBox>("chkttactive")->isChecked());
        it.window->close();
        QCOMPARE(it.file(), it.theirs);
        QVERIFY(!it.timer()->isActive());
    }

    void addingWritesNoOldFieldsOverThem()
    {
        Shared it;
        it.switchOff();
        it.click(u"cmdttadd"_s);
        QCOMPARE(it.file(), it.theirs);
        QCOMPARE(it.lists(), (QStringList{u"x (off)"_s, u"y (off)"_s, u"z (off)"_s}));
        it.click(u"cmdttadd"_s); // now that the person knows
        QCOMPARE(it.lists().constLast(), u"List 4 (off)"_s);
    }

    void addingWhenTheOtherHasFewerLists()
    {
        Shared it;
        it.choose(2);
        it.leaveOne();
        it.click(u"cmdttadd"_s);
        QCOMPARE(it.file(), it.theirs);
        QCOMPARE(it.lists(), QStringList{u"theirs (off)"_s});
        QVERIFY(it.hasNothingChosen());
    }

    void choosingAnotherRowWithAnUnfinishedEdit()
    {
        Shared it;
        it.beginToType(u"changed"_s);
        it.leaveOne();
        it.choose(2);
        QCOMPARE(it.file(), it.theirs);
        QVERIFY(it.hasNothingChosen());
    }

    void removingWithAnUnfinishedEdit()
    {
        Shared it;
        it.choose(2);
        it.beginToType(u"changed"_s);
        it.leaveOne();
        it.click(u"cmdttremove"_s);
        QCOMPARE(it.on.program.prompts.takeBoxes(), QList<Box>());
        QCOMPARE(it.file(), it.theirs);
    }

    void removingTakesNoneOfTheirs()
    {
        Shared it;
        it.switchOff();
        it.click(u"cmdttremove"_s);
        QCOMPARE(it.on.program.prompts.takeBoxes().size(), 1);
        QCOMPARE(it.file(), it.theirs);
        QCOMPARE(it.lists().size(), 3);
        QVERIFY(it.hasNothingChosen());
    }

    void runNowSendsNoneOfTheirs()
    {
        Shared it;
        it.beginToType(u"changed"_s);
        it.leaveOne();
        it.click(u"cmdttrun"_s);
        QVERIFY(it.hasNothingChosen());
        QCOMPARE(it.rows("lstttresults"), QStringList());
        QVERIFY(it.on.showsReplies());
        QVERIFY(!it.on.server.commands().contains("say theirs"));
    }

    void aClickThatLeavesAnUnfinishedFieldDoesNothingToTheirs_data()
    {
        QTest::addColumn<QString>("control");
        QTest::newRow("run") << u"cmdttrun"_s;
        QTest::newRow("switch") << u"chkttactive"_s;
        QTest::newRow("remove") << u"cmdttremove"_s;
    }

    void aClickThatLeavesAnUnfinishedFieldDoesNothingToTheirs()
    {
        QFETCH(QString, control);
        Shared it;
        QVERIFY(becomesActive(it.window));
        auto *name = it.find<QLineEdit>("txtttname");
        name->setFocus();
        QTRY_VERIFY(name->hasFocus());
        name->setText(u"changed"_s);
        it.leaveOne();
        auto *button = it.find<QAbstractButton>(control);
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(8, button->height() / 2));
        QVERIFY(it.hasNothingChosen());
        QCOMPARE(it.file(), it.theirs);
        QCOMPARE(it.on.program.prompts.takeBoxes(), QList<Box>());
        QCOMPARE(it.rows("lstttresults"), QStringList());
        QVERIFY(it.on.showsReplies());
        QVERIFY(!it.on.server.commands().contains("say theirs"));
    }

    void oneThatBreaksWhileTheProgramRunsIsPutAside()
    {
        Shared it;
        it.put("{broken");
        it.type(u"txtttname"_s, u"changed"_s);
        QCOMPARE(it.on.program.file(u"molvark-timetable.broken-1.json"_s), QByteArray("{broken"));
        QVERIFY(it.file().contains("changed"));
        QCOMPARE(it.status(), u"The timetable was broken and is kept as molvark-timetable.broken-1.json"_s);
    }

    void oneThatCannotBeReadWhileTheProgramRunsIsLeftAlone()
    {
        Shared it;
        const QString path = QDir::current().absoluteFilePath(timetableFile);
        QVERIFY(QFile::remove(path) && QDir().mkpath(path));
        it.type(u"txtttname"_s, u"changed"_s);
        QVERIFY(QFileInfo(path).isDir());
        QVERIFY2(it.next().startsWith(u"The timetable molvark-timetable.json could not be read: "_s),
                 qPrintable(it.next()));
        QCOMPARE(it.lists().constFirst(), u"changed"_s); // for this run
    }

    void itStandsBesideTheSettings()
    {
        const TimetableHands it({.connects = false});
        const QTemporaryDir elsewhere;
        QVERIFY(QDir::setCurrent(elsewhere.path()));
        it.add(u"Friday"_s, {u"say one"_s});
        QVERIFY(it.file().contains("Friday"));
        QVERIFY(!QFileInfo::exists(elsewhere.filePath(timetableFile)));
    }

    void halfACommandIsNotTakenWhileThePersonLooksElsewhere()
    {
        Shared it;
        auto *commands = it.find<QPlainTextEdit>("txtttcommands");
        commands->setPlainText(u"map"_s);
        for (const Qt::FocusReason reason : {Qt::ActiveWindowFocusReason, Qt::PopupFocusReason}) {
            QFocusEvent leaving(QEvent::FocusOut, reason);
            QApplication::sendEvent(commands, &leaving);
            QCOMPARE(it.file(), it.before);
        }
        commands->setPlainText(u"map_rotate"_s);
        QFocusEvent done(QEvent::FocusOut, Qt::TabFocusReason);
        QApplication::sendEvent(commands, &done);
        QVERIFY(it.file().contains("\"map_rotate\""));
    }

    void norWhenTheWindowIsMadeSmall()
    {
        Shared it;
        it.find<QPlainTextEdit>("txtttcommands")->setPlainText(u"map"_s);
        QHideEvent event;
        QSpontaneKeyEvent::setSpontaneous(&event);
        QVERIFY(event.spontaneous());
        (void)qApp->notify(it.window, &event);
        QCOMPARE(it.file(), it.before);
        it.window->close();
        QVERIFY(it.file().contains("\"map\""));
    }
};

WINDOW_TEST(TimetableSharedTest)

#include "tst_timetable_shared.moc"
