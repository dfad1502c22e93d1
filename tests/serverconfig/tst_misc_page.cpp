// SPDX-License-Identifier: MIT
#include "connected_program.h"
#include "window_test.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>

using namespace Qt::StringLiterals;

namespace {

const Box execQuestion{u"Exec CFG"_s,
                       u"Are you sure you want to Exec the selected CFG file\rExecuting CFGs is at your own risk!\r\r"
                       "Please ensure you know what the file performs"_s,
                       BoxIcon::Question, BoxButtons::OkCancel};

const QString notes = uR"(Map Rotation;
Top box is the Map rotation seen when Molvar connected to server.

Bottom Box is the EDIT area for you to type a TEMPORARY Map rotation.
(This could be useful to setup for a match so next map is right one)
When the EDIT rotation has finished the server reverts to TOP box rotation

Best way for matches is set the two maps you want in EDIT box and then do
a map restart command. That will end current map and start with first in EDIT.

Button "Default -> EDIT" pastes the default into the Edit box.
Button "Clear EDIT" empties the EDIT box
Button "Set Server to Default" resets the server to the Default Map
Rotation in top box.
Button "Set server to EDIT" sets the server to the map rotation in
Bottom box.

Do not prefix text with rcon variable, I will do that.
Please ensure you format the line correctly !!!
Format is;
GAMETYPE xxx MAP xxxxxx  repeating
Where xxx is the gametype prefix, DM, TDM, SD, RE, HQ, BEL or Modprefix
xxxxxx is the map name, for example; mp_pavlov)"_s;

/// A program that is connected to a server which answers shortly, and has forgotten what connecting asked.
struct Connected final : ConnectedProgram {
    explicit Connected(const QByteArray &listing = "---\n/server.cfg\n/match.cfg\n",
                       const QByteArray &rotation = "sv_mapRotation \"gametype sd map mp_decoy\"\n")
        : ConnectedProgram({.prepare = [&](PracticeServer &taught) {
              answerBriefly(taught);
              taught.answer("fdir *.cfg", {listing});
              taught.answer("dvarlist sv_maprotation", {rotation});
          }})
    {
    }
};

} // namespace

class MiscPageTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void thePageIsCaptionedBeforeAnyConnection()
    {
        Program program;
        program.start();
        QCOMPARE(program.find<QGroupBox>(u"frmmaprot"_s)->title(), u"Server Map Rotation"_s);
        QCOMPARE(program.find<QLabel>(u"lblcurmaprot_0"_s)->text(), u"Server Default Map Rotation"_s);
        QCOMPARE(program.find<QLabel>(u"lblcurmaprot_1"_s)->text(), u"Server EDIT Map Rotation"_s);
        QCOMPARE(program.find<QWidget>(u"txtcurmaprot_0"_s)->toolTip(), u"Server map rotation (when we connected)"_s);
        QCOMPARE(program.find<QWidget>(u"txtcurmaprot_1"_s)->toolTip(), u"Change server map rotation"_s);
        QCOMPARE(program.text(u"txtcurmaprot_0"_s), u""_s);
        QCOMPARE(program.text(u"txtcurmaprot_1"_s), u"gametype xxx map xxxxxx"_s);
        QCOMPARE(program.text(u"cmdsmrpaste_0"_s), u"Default -> EDIT"_s);
        QCOMPARE(program.text(u"cmdsmrpaste_1"_s), u"Clear EDIT"_s);
        QCOMPARE(program.text(u"cmdsetservedit"_s), u"Set Server to EDIT"_s);
        QCOMPARE(program.text(u"cmdcfgexec"_s), u"Exec CFG"_s);
        QCOMPARE(program.find<QLabel>(u"lblsmrnotes"_s)->text(), u"Click for Notes"_s);
        QVERIFY(program.rows(u"lstcfgs"_s).isEmpty());
    }

    void theNotesTakeThePlaceOfTheFiles()
    {
        Program program;
        program.start();
        program.find<QTabWidget>(u"SSTab"_s)->setCurrentIndex(7);
        auto *label = program.find<QLabel>(u"lblsmrnotes"_s);
        const QWidgetList files{program.find<QWidget>(u"lstcfgs"_s), program.find<QWidget>(u"cmdcfgexec"_s)};
        const auto *box = program.find<QPlainTextEdit>(u"txtsmrnotes"_s);
        QVERIFY(box->isHidden());
        QVERIFY(files[0]->isVisible() && files[1]->isVisible());

        QTest::mouseClick(label, Qt::LeftButton);
        QCOMPARE(label->text(), u"Click to remove"_s);
        QVERIFY(box->isVisible());
        QVERIFY(files[0]->isHidden() && files[1]->isHidden());
        QCOMPARE(box->toPlainText(), notes);

        QTest::mouseClick(label, Qt::LeftButton);
        QCOMPARE(label->text(), u"Click for Notes"_s);
        QVERIFY(box->isHidden());
        QVERIFY(files[0]->isVisible() && files[1]->isVisible());
    }

    void theRotationCanBePastedAndCleared()
    {
        Connected to;
        to.program.click(u"cmdsmrpaste_0"_s);
        QCOMPARE(to.program.text(u"txtcurmaprot_1"_s), u"gametype sd map mp_decoy"_s);
        to.program.click(u"cmdsmrpaste_1"_s);
        QCOMPARE(to.program.text(u"txtcurmaprot_1"_s), u""_s);
        QCOMPARE(to.program.text(u"txtcurmaprot_0"_s), u"gametype sd map mp_decoy"_s);
        QVERIFY(to.server.requests().isEmpty());
    }

    void theEditedRotationIsSentInQuotes()
    {
        Connected to;
        to.program.find<QPlainTextEdit>(u"txtcurmaprot_1"_s)->setPlainText(u"gametype dm map mp_a map mp_b"_s);
        to.program.click(u"cmdsetservedit"_s);
        QCOMPARE(to.server.commands(), QList<QByteArray>{"sv_maprotationcurrent \"gametype dm map mp_a map mp_b\""});
        QCOMPARE(to.program.messages().constLast(), u"Set Map rotation to Custom choice."_s);
    }

    void anEmptyEditedRotationDoesNothing()
    {
        Connected to;
        to.program.click(u"cmdsmrpaste_1"_s);
        const QStringList messages = to.program.messages();
        to.program.click(u"cmdsetservedit"_s);
        QVERIFY(to.server.requests().isEmpty());
        QCOMPARE(to.program.messages(), messages);
    }

    void aRotationThatWasCutOffIsNotShown()
    {
        Connected to("---\n/server.cfg\n", "sv_mapRotation \"gametype sd map mp_");
        QVERIFY(to.program.prompts.takeBoxes().isEmpty());
        QCOMPARE(to.program.text(u"txtcurmaprot_0"_s), u"Server did not give rotation."_s);
        QVERIFY(to.program.find<QPlainTextEdit>(u"txtcurmaprot_0"_s)->font().bold());
        QVERIFY(!to.program.find<QPushButton>(u"cmdsmrpaste_0"_s)->isEnabled());
        QCOMPARE(to.connecting.constLast(), "fdir *.cfg");
        QCOMPARE(to.program.rows(u"lstcfgs"_s), QStringList{u"server.cfg"_s});
    }

    void anAnswerWithoutTheRotationShowsAnEmptyOne()
    {
        Connected to("---\n/server.cfg\n", "\n0 total dvars\n");
        QCOMPARE(to.program.text(u"txtcurmaprot_0"_s), u""_s);
        QVERIFY(!to.program.find<QPlainTextEdit>(u"txtcurmaprot_0"_s)->font().bold());
        QVERIFY(to.program.find<QPushButton>(u"cmdsmrpaste_0"_s)->isEnabled());
        QVERIFY(to.program.find<QPushButton>(u"cmdsmrpaste_1"_s)->isEnabled());
    }

    void theListingFillsTheFiles_data()
    {
        QTest::addColumn<QByteArray>("listing");
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<bool>("told");
        QTest::newRow("two files") << QByteArray("---\n/a.cfg\n/b.cfg\n") << QStringList({u"a.cfg"_s, u"b.cfg"_s})
                                   << false;
        QTest::newRow("a skipped line") << QByteArray("---\nx.cfg\n/b.cfg\n") << QStringList{u"b.cfg"_s} << false;
        QTest::newRow("no file") << QByteArray("---\n0 files listed\n") << QStringList() << false;
        QTest::newRow("no line feed") << QByteArray("nothing") << QStringList() << true;
        QTest::newRow("an empty reply") << QByteArray("") << QStringList() << true;
        QTest::newRow("one file without a line feed") << QByteArray("/a.cfg") << QStringList{u"a.cfg"_s} << true;
        QTest::newRow("no last line feed") << QByteArray("---\n/a.cfg") << QStringList{u"a.cfg"_s} << false;
        QTest::newRow("no heading") << QByteArray("/a.cfg\n/b.cfg\n") << QStringList({u"a.cfg"_s, u"b.cfg"_s}) << false;
    }

    void theListingFillsTheFiles()
    {
        QFETCH(QByteArray, listing);
        QFETCH(QStringList, files);
        QFETCH(bool, told);
        Connected to(listing);
        QCOMPARE(to.program.rows(u"lstcfgs"_s), files);
        QCOMPARE(to.program.find<QComboBox>(u"lstcfgs"_s)->currentIndex(), files.isEmpty() ? -1 : 0);
        QVERIFY2(to.program.find<QPushButton>(u"cmdcfgexec"_s)->isEnabled(), "enabled whatever was listed");
        const QString message = u"Server has no CFG files - Disabling fields..."_s;
        QCOMPARE(to.program.messages().mid(1), told ? QStringList{message} : QStringList());
    }

    void aFileIsExecutedWhenThePersonAgrees()
    {
        Connected to;
        to.program.find<QComboBox>(u"lstcfgs"_s)->setCurrentIndex(1);
        const QString pane = to.program.pane();
        to.program.click(u"cmdcfgexec"_s);
        QCOMPARE(to.program.prompts.takeBoxes(), QList<Box>{execQuestion});
        QCOMPARE(to.server.commands(), QList<QByteArray>{"exec match.cfg"});
        QCOMPARE(to.program.messages().constLast(), u"Performed EXEC of match.cfg"_s);
        QVERIFY2(!to.program.pane().mid(pane.size()).contains(u">>RCON sent"), "sent quietly");
    }

    void theExecutionIsToldASecondAfterTheReply()
    {
        Connected to;
        const double before = to.program.clock.secondsSinceMidnight();
        to.program.click(u"cmdcfgexec"_s);
        to.program.prompts.takeBoxes();
        // The slot of the reply and the pause behind it: two seconds, but for half a one.
        QVERIFY(to.program.clock.secondsSinceMidnight() - before > 1.4);
    }

    void cancelExecutesNothing()
    {
        Connected to;
        const QStringList messages = to.program.messages();
        to.program.prompts.answers = {Answer::Cancel};
        to.program.click(u"cmdcfgexec"_s);
        QCOMPARE(to.program.prompts.takeBoxes(), QList<Box>{execQuestion});
        QVERIFY(to.server.requests().isEmpty());
        QCOMPARE(to.program.messages(), messages);
    }

    void withoutAFileTheExtensionAloneIsExecuted()
    {
        Connected to("---\n0 files listed\n");
        to.program.click(u"cmdcfgexec"_s);
        QCOMPARE(to.program.prompts.takeBoxes(), QList<Box>{execQuestion});
        QCOMPARE(to.server.requests(), QList<QByteArray>{QByteArray(4, '\xFF') + "rcon practice exec .cfg"});
        QCOMPARE(to.program.messages().constLast(), u"Performed EXEC of "_s);
    }
};

WINDOW_TEST(MiscPageTest)
#include "tst_misc_page.moc"
