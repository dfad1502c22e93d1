// SPDX-License-Identifier: MIT
#include "activation.h"
#include "exchange_boxes.h"
#include "menus.h"
#include "rotation_hands.h"
#include "window_test.h"

#include <QDropEvent>
#include <QMimeData>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

const Beginning unconnected{.prepare = {}, .connects = false};
const Beginning plain{.prepare = {}};

Box told(const QString &text)
{
    return {u"Map rotation"_s, text, BoxIcon::Information, BoxButtons::Ok};
}

/// What the mouse brings when it drags the chosen lines, dropped on the border above the line `before`.
void drop(const QTreeView &list, const QMimeData &dragged, int before)
{
    const QRect row = list.visualRect(list.model()->index(before, 2));
    const QPoint place(row.left() + 10, row.top() + 1);
    QDragEnterEvent enter(place, Qt::MoveAction, &dragged, Qt::LeftButton, {});
    QApplication::sendEvent(list.viewport(), &enter);
    QDragMoveEvent move(place, Qt::MoveAction, &dragged, Qt::LeftButton, {});
    QApplication::sendEvent(list.viewport(), &move);
    QDropEvent event(place, Qt::MoveAction, &dragged, Qt::LeftButton, {});
    QApplication::sendEvent(list.viewport(), &event);
}

void dragChosen(const QTreeView &list, int before)
{
    const std::unique_ptr<QMimeData> dragged(list.model()->mimeData(list.selectionModel()->selectedIndexes()));
    drop(list, *dragged, before);
}

} // namespace

/// The window in which a rotation is put together, line by line.
class RotationWindowTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void itOpensWithTheServersText()
    {
        const RotationHands it;
        QCOMPARE(it.lines(), QStringList({u"1 sd mp_decoy"_s, u"2 sd mp_toujane"_s}));
        QCOMPARE(it.rows(u"lstrotproblems"_s), QStringList());
        QVERIFY(it.on.lines().isEmpty());
        QCOMPARE(it.on.server.commands(), QByteArrayList());
    }

    void unconnectedItOpensEmptyAndSaysSoWhenItIsAsked()
    {
        RotationHands it(unconnected);
        QCOMPARE(it.lines(), QStringList());
        it.click(u"cmdrotserver"_s);
        QCOMPARE(it.on.program.prompts.takeBoxes(),
                 QList<Box>{told(u"The server has not told its rotation. Connect to it first."_s)});
        it.on.program.connectTo(it.on.server);
        it.click(u"cmdrotserver"_s);
        QCOMPARE(it.lines().size(), 5);
        it.on.program.click(u"cmdconnect"_s);
        it.click(u"cmdrotserver"_s);
        QCOMPARE(it.on.program.prompts.takeBoxes().size(), 1);
        QCOMPARE(it.lines().size(), 5);
    }

    void whatStandsWhereTheRotationIsMissingIsNone()
    {
        const RotationHands it({.prepare = [](PracticeServer &server) {
            answerBriefly(server);
            server.answer("dvarlist sv_maprotation", {"sv_mapRotation \"gametype sd map mp_"});
        }});
        QCOMPARE(it.on.program.text(u"txtcurmaprot_0"_s), u"Server did not give rotation."_s);
        QCOMPARE(it.lines(), QStringList());
    }

    void itBeginsWithTheServersTextAgainAndUndoBringsTheOtherBack()
    {
        RotationHands it;
        QVERIFY(!it.button(u"cmdrotundo"_s)->isEnabled());
        it.read(u"map mp_harbor"_s);
        it.open(); // It is open already and only comes to the front.
        QCOMPARE(it.lines(), QStringList{u"! 1 (as it is) mp_harbor"_s});
        it.window->close();
        it.open();
        QCOMPARE(it.lines().size(), 2);
        it.click(u"cmdrotundo"_s);
        QCOMPARE(it.lines(), QStringList{u"! 1 (as it is) mp_harbor"_s});
    }

    void escClosesItAndTheMainWindowTakesItAlong()
    {
        RotationHands it;
        QVERIFY(becomesActive(it.window));
        QTest::keyClick(it.window, Qt::Key_Escape);
        QVERIFY(!it.window->isVisible());
        it.open();
        it.on.program.window.close();
        QVERIFY(!it.window->isVisible());
    }

    void itIsReadFromTheEditBox()
    {
        const RotationHands it;
        it.read(u"GAMETYPE tdm MAP mp_toujane\nmap mp_decoy foo"_s);
        QCOMPARE(it.lines(), QStringList({u"1 tdm mp_toujane"_s, u"2 tdm mp_decoy"_s, u"! 3  foo"_s}));
        it.click(u"cmdrotserver"_s);
        QCOMPARE(it.lines(), QStringList({u"1 sd mp_decoy"_s, u"2 sd mp_toujane"_s}));
    }

    void doublingEndsAtTheLongestRotation()
    {
        RotationHands it;
        it.read(u"map mp_decoy "_s.repeated(4000));
        it.list()->selectAll();
        it.click(u"cmdrotdouble"_s);
        QCOMPARE(it.on.program.prompts.takeBoxes(),
                 (QList<Box>{{u"Map rotation"_s,
                              u"The rotation would be longer than any server reads. It stays as it was."_s,
                              BoxIcon::Exclamation, BoxButtons::Ok}}));
        QCOMPARE(it.list()->model()->rowCount(), 4000);
        it.click(u"cmdrotundo"_s);
        QCOMPARE(it.lines().size(), 2); // what was refused is no step
    }

    void anEditBoxThatIsTooLongIsRefused()
    {
        RotationHands it;
        it.read(u"map mp_decoy "_s.repeated(6000));
        QCOMPARE(it.on.program.prompts.takeBoxes(),
                 (QList<Box>{{u"Map rotation"_s, u"This text is too long for a map rotation."_s, BoxIcon::Exclamation,
                              BoxButtons::Ok}}));
        QCOMPARE(it.lines().size(), 2);
    }

    void itIsReadFromAFile()
    {
        RotationHands it;
        it.on.program.write(u"server.cfg"_s, "set g_speed 190\r\nset sv_maprotation \"gametype dm map mp_decoy\"\r\n");
        it.on.program.prompts.lines = {u"server.cfg"_s};
        it.click(u"cmdrotfile"_s);
        QCOMPARE(it.on.program.prompts.asked.constLast().constFirst(), u"Read a rotation from..."_s);
        QCOMPARE(it.lines(), QStringList{u"1 dm mp_decoy"_s});
        it.on.program.write(u"marked.cfg"_s, "\xef\xbb\xbfset sv_maprotation \"gametype hq map mp_toujane\"\n");
        it.on.program.prompts.lines = {u"marked.cfg"_s};
        it.click(u"cmdrotfile"_s); // an editor has put a byte order mark before it
        QCOMPARE(it.lines(), QStringList{u"1 hq mp_toujane"_s});
        it.click(u"cmdrotundo"_s);
        it.click(u"cmdrotfile"_s); // cancelled
        QCOMPARE(it.lines(), QStringList{u"1 dm mp_decoy"_s});
    }

    void aFileWithoutARotationIsToldAndTakesNothingAway_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("text");
        QTest::newRow("a letter") << u"letter.txt"_s << u"There is no map rotation in this file."_s;
        QTest::newRow("too long") << u"long.txt"_s << u"There is no map rotation in this file."_s;
        QTest::newRow("a folder") << u"folder"_s << u"This file cannot be read: "_s;
    }

    void aFileWithoutARotationIsToldAndTakesNothingAway()
    {
        QFETCH(QString, name);
        QFETCH(QString, text);
        RotationHands it;
        it.on.program.write(u"letter.txt"_s, "see the map below");
        it.on.program.write(u"long.txt"_s, QByteArray("map mp_decoy ").repeated(6000));
        QDir::current().mkdir(u"folder"_s);
        it.on.program.prompts.lines = {name};
        it.click(u"cmdrotfile"_s);
        const QList<Box> boxes = it.on.program.prompts.takeBoxes();
        QCOMPARE(boxes.size(), 1);
        QVERIFY2(boxes.constFirst().text.startsWith(text), qPrintable(boxes.constFirst().text));
        QCOMPARE(it.lines().size(), 2);
    }

    void mapsAreAddedFromTheGamesOwnList()
    {
        const RotationHands it;
        QCOMPARE(it.entries(u"comrotgametype"_s).join(u' '), u"sd ctf tdm dm hq"_s);
        it.on.program.click(u"cmddefmaps"_s);
        QCOMPARE(it.entries(u"comrotmap"_s), it.on.program.rows(u"lstmaps"_s));
        it.setText(u"comrotgametype"_s, u"tdm"_s);
        it.find<QComboBox>(u"comrotmap"_s)->setCurrentIndex(3);
        it.click(u"cmdrotadd"_s);
        QCOMPARE(it.lines().constLast(), u"3 tdm mp_carentan"_s);
        QCOMPARE(it.chosen(), QStringList{u"3 tdm mp_carentan"_s});
        it.choose({0});
        it.setText(u"comrotmap"_s, u" mp_brecourt "_s);
        it.setText(u"comrotgametype"_s, {});
        QTest::keyClick(it.find<QComboBox>(u"comrotmap"_s), Qt::Key_Return);
        QCOMPARE(it.lines().at(1), u"2 sd mp_brecourt"_s);
        it.click(u"cmdrotcopy"_s);
        QCOMPARE(it.edit()->toPlainText(),
                 u"gametype sd map mp_decoy map mp_brecourt map mp_toujane gametype tdm map mp_carentan"_s);
    }

    void withoutAMapNothingIsAdded()
    {
        RotationHands it;
        it.setText(u"comrotmap"_s, u" "_s);
        it.click(u"cmdrotadd"_s);
        QCOMPARE(it.on.program.prompts.takeBoxes(), QList<Box>{told(u"Choose a map first"_s)});
        QCOMPARE(it.lines().size(), 2);
    }

    void theServersMapsAreOfferedAndDecideWhatIsUnknown()
    {
        RotationHands it;
        it.on.server.answer("dir maps/mp d3dbsp", {"Directory\n---\n\nmp_harbor.d3dbsp\nmp_decoy.d3dbsp\n"});
        it.read(u"gametype dm map mp_harbor map mp_toujane"_s);
        QCOMPARE(it.rows(u"lstrotproblems"_s),
                 QStringList{u"Line 1: unknown map mp_harbor: the game has none of this name, and the server's list "
                             "has not been read"_s});
        it.on.program.click(u"cmdpopmaps"_s);
        QCOMPARE(it.entries(u"comrotmap"_s).first(4).join(u'|'), u"mp_harbor|mp_decoy||mp_breakout"_s);
        QCOMPARE(it.entries(u"comrotmap"_s).count(u"mp_decoy"_s), 1);
        QCOMPARE(it.rows(u"lstrotproblems"_s),
                 QStringList{u"Line 2: unknown map mp_toujane: the server's list does not have it"_s});
        it.on.program.click(u"cmdconnect"_s);
        QCOMPARE(it.entries(u"comrotmap"_s).size(), 12);
    }

    void ofThousandsOfMapsTheFirstAreOfferedAndAllAreKnown()
    {
        RotationHands it;
        QList<QByteArray> datagrams{"Directory\n---\n\n"};
        for (int number = 0; number < 5000; ++number) {
            if (number % 500 == 0)
                datagrams.append(QByteArray());
            datagrams.last() += "m" + QByteArray::number(number) + ".d3dbsp\n";
        }
        it.on.server.answer("dir maps/mp d3dbsp", datagrams << "MP_Decoy.d3dbsp\n");
        it.on.program.click(u"cmdpopmaps"_s);
        QCOMPARE(it.on.program.rows(u"lstmaps"_s).size(), 5001);
        const QStringList offered = it.entries(u"comrotmap"_s);
        QCOMPARE(offered.at(4999), u"m4999"_s);
        QCOMPARE(offered.size(), 5000 + 1 + 11); // a line, and those of the game but for the one that the server has
        QVERIFY(!offered.contains(u"mp_decoy"_s, Qt::CaseInsensitive));
        QVERIFY2(it.label(u"lblrotmaps"_s).startsWith(u"The first 5,000 of the server's 5,001 maps; below them "_s),
                 qPrintable(it.label(u"lblrotmaps"_s)));
        it.read(u"gametype dm map mp_decoy map m17"_s);
        QCOMPARE(it.rows(u"lstrotproblems"_s), QStringList());
    }

    void linesAreDoubledRemovedAndUndone()
    {
        const RotationHands it(telling("gametype sd map mp_decoy gametype dm map mp_toujane map mp_burgundy"));
        for (const QString &name : {u"cmdrotdouble"_s, u"cmdrotremove"_s, u"cmdrotundo"_s})
            QVERIFY2(!it.button(name)->isEnabled(), qPrintable(name));
        const QStringList before = it.lines();
        it.choose({0, 2});
        it.click(u"cmdrotdouble"_s);
        QCOMPARE(it.lines(), before + QStringList({u"4 sd mp_decoy"_s, u"5 dm mp_burgundy"_s}));
        QCOMPARE(it.chosen(), it.lines().sliced(3));
        it.click(u"cmdrotremove"_s);
        QCOMPARE(it.lines(), before);
        QVERIFY(becomesActive(it.window));
        it.choose({0, 1});
        it.list()->setFocus();
        QTest::keyClick(it.list(), Qt::Key_Delete);
        QCOMPARE(it.lines(), QStringList{u"1 dm mp_burgundy"_s});
        QCOMPARE(it.chosen(), QStringList{u"1 dm mp_burgundy"_s});
        it.click(u"cmdrotundo"_s);
        QCOMPARE(it.lines(), before);
        QTest::keySequence(it.list(), QKeySequence::Undo);
        QCOMPARE(it.lines().size(), 5);
        it.click(u"cmdrotundo"_s);
        QCOMPARE(it.lines(), before);
        QVERIFY(!it.button(u"cmdrotundo"_s)->isEnabled());
    }

    void linesAreDragged()
    {
        const RotationHands it(telling("gametype sd map mp_decoy gametype dm map mp_toujane map mp_burgundy"));
        QVERIFY(becomesActive(it.window));
        QVERIFY(it.list()->dragEnabled());
        it.choose({2});
        dragChosen(*it.list(), 0);
        QCOMPARE(it.lines(), QStringList({u"1 dm mp_burgundy"_s, u"2 sd mp_decoy"_s, u"3 dm mp_toujane"_s}));
        QCOMPARE(it.chosen(), QStringList{u"1 dm mp_burgundy"_s});
        dragChosen(*it.list(), 2);
        QCOMPARE(it.lines(), QStringList({u"1 sd mp_decoy"_s, u"2 dm mp_burgundy"_s, u"3 dm mp_toujane"_s}));
        it.click(u"cmdrotundo"_s);
        QCOMPARE(it.lines().constFirst(), u"1 dm mp_burgundy"_s);

        QMimeData others;
        others.setData(it.list()->model()->mimeTypes().constFirst(), "1 0"); // of another program
        drop(*it.list(), others, 2);
        others.setText(u"map mp_decoy"_s);
        drop(*it.list(), others, 2);
        QCOMPARE(it.lines(), QStringList({u"1 dm mp_burgundy"_s, u"2 sd mp_decoy"_s, u"3 dm mp_toujane"_s}));
    }

    void linesAreMovedWithTheKeyboard()
    {
        const RotationHands it(telling("gametype sd map mp_decoy gametype dm map mp_toujane map mp_burgundy"));
        QVERIFY(becomesActive(it.window));
        it.choose({2});
        it.list()->setFocus();
        QTest::keyClick(it.list(), Qt::Key_Up, Qt::AltModifier);
        QCOMPARE(it.lines(), QStringList({u"1 sd mp_decoy"_s, u"2 dm mp_burgundy"_s, u"3 dm mp_toujane"_s}));
        QTest::keyClick(it.list(), Qt::Key_Up, Qt::AltModifier);
        QTest::keyClick(it.list(), Qt::Key_Up, Qt::AltModifier); // it is the first by now
        QCOMPARE(it.lines().constFirst(), u"1 dm mp_burgundy"_s);
        QTest::keyClick(it.list(), Qt::Key_Down, Qt::AltModifier);
        QTest::keyClick(it.list(), Qt::Key_Down, Qt::AltModifier);
        QTest::keyClick(it.list(), Qt::Key_Down, Qt::AltModifier);
        QCOMPARE(it.lines().constLast(), u"3 dm mp_burgundy"_s);
        QCOMPARE(it.chosen(), QStringList{u"3 dm mp_burgundy"_s});
    }

    void theMenuHasTheSameActions()
    {
        const RotationHands it;
        it.choose({0});
        const QPoint place = it.list()->visualRect(it.list()->model()->index(0, 2)).center();
        QCOMPARE(OpenMenu(*it.list(), place).captions().join(u'|'), u"Double|Remove|Move up|Move down"_s);
        OpenMenu(*it.list(), place).choose(u"Move down"_s);
        QCOMPARE(it.lines(), QStringList({u"1 sd mp_toujane"_s, u"2 sd mp_decoy"_s}));
        OpenMenu(*it.list(), place).choose(u"Remove"_s); // the line under the mouse
        QCOMPARE(it.lines(), QStringList{u"1 sd mp_decoy"_s});
        const QPoint beside = it.list()->viewport()->rect().bottomLeft() - QPoint(-3, 3);
        QVERIFY(!OpenMenu(*it.list(), beside).item(u"Remove"_s)->isEnabled());
    }

    void aLineIsChangedInItsPlace()
    {
        const RotationHands it(telling("gametype sd map mp_decoi map mp_toujane foo"));
        it.list()->edit(it.list()->model()->index(0, 2));
        auto *line = it.list()->findChild<QLineEdit *>();
        QVERIFY(line);
        line->setText(u"mp_decoy"_s);
        QTest::keyClick(line, Qt::Key_Return);
        QTRY_COMPARE(it.lines().constFirst(), u"1 sd mp_decoy"_s);
        QVERIFY(!it.list()->model()->setData(it.list()->model()->index(0, 2), u" "_s));
        QVERIFY(it.list()->model()->setData(it.list()->model()->index(0, 1), u"dm"_s));
        QVERIFY(it.list()->model()->setData(it.list()->model()->index(2, 2), u"map mp_burgundy"_s));
        QCOMPARE(it.lines(), QStringList({u"1 dm mp_decoy"_s, u"2 sd mp_toujane"_s, u"3 sd mp_burgundy"_s}));
    }

    void eachProblemHasItsLineAndLeadsToIt()
    {
        const RotationHands it;
        it.read(u"gametype xxx map mp_decoy gametype tdm map mp_decoi odd words"_s);
        QCOMPARE(it.rows(u"lstrotproblems"_s),
                 QStringList({u"Line 1: unknown game type xxx: the game has none of this name, only a mod could"_s,
                              u"Line 2: unknown map mp_decoi: the game has none of this name, and the server's list "
                              "has not been read"_s,
                              u"Line 3: \"odd words\": odd words, neither \"gametype\" nor \"map\" stands before "
                              "them"_s}));
        QCOMPARE(it.lines(), QStringList({u"! 1 xxx mp_decoy"_s, u"! 2 tdm mp_decoi"_s, u"! 3  odd words"_s}));
        auto *list = it.find<QListWidget>(u"lstrotproblems"_s);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(1)).center());
        QCOMPARE(it.chosen(), QStringList{u"! 2 tdm mp_decoi"_s});
        it.click(u"cmdrotremove"_s);
        QCOMPARE(it.rows(u"lstrotproblems"_s).size(), 2);
    }

    void aTextThatIsNoRotationHasItsFirstProblemsListed()
    {
        const RotationHands it;
        it.read(QString(60'000, u'x'));
        QCOMPARE(it.rows(u"lstrotproblems"_s),
                 QStringList({u"Line 1: \""_s + QString(60, u'x') +
                                  u"\u2026\": odd words, neither \"gametype\" nor \"map\" stands before them"_s,
                              u"Line 1: too long: the server would not read this line whole, nor those behind it"_s}));
        it.read(u"map a "_s.repeated(10'000));
        QCOMPARE(it.rows(u"lstrotproblems"_s).size(), 201);
        QCOMPARE(it.rows(u"lstrotproblems"_s).constLast(), u"and 9801 more"_s); // and that it is too long
        QVERIFY2(it.label(u"lblrotlength"_s).endsWith(u": too long"_s), qPrintable(it.label(u"lblrotlength"_s)));
    }

    void theLengthIsThatOfTheRequestAsItIsSent()
    {
        RotationHands it;
        it.click(u"cmdrotcopy"_s);
        it.on.program.click(u"cmdsetservedit"_s);
        const QByteArray sent = it.on.server.requests().constLast();
        QVERIFY2(sent.contains("sv_maprotationcurrent"), sent.constData());
        constexpr qsizetype header = 4;
        QCOMPARE(it.label(u"lblrotlength"_s),
                 u"The request has %1 of the 1,023 bytes that a server reads"_s.arg(sent.size() - header));
        QVERIFY(!it.label(u"lblrotlength"_s).contains(u"practice"_s));
    }

    void aRequestThatIsTooLongIsAProblem()
    {
        const RotationHands it;
        // "rcon practice sv_maprotationcurrent ..." leaves 985 bytes between the quotation marks: 75 lines of 13.
        it.read(u"map mp_decoy "_s.repeated(75));
        QVERIFY2(it.label(u"lblrotlength"_s).contains(u" 1,012 of the 1,023 bytes"_s),
                 qPrintable(it.label(u"lblrotlength"_s)));
        QCOMPARE(it.rows(u"lstrotproblems"_s), QStringList());
        it.choose({0});
        it.click(u"cmdrotdouble"_s);
        QVERIFY2(it.label(u"lblrotlength"_s).endsWith(u" 1,025 of the 1,023 bytes that a server reads: too long"_s),
                 qPrintable(it.label(u"lblrotlength"_s)));
        QCOMPARE(it.rows(u"lstrotproblems"_s),
                 QStringList{u"Line 76: too long: the server would not read this line whole, nor those behind it"_s});
    }

    void aLongerPasswordCountsAsSoonAsTheWindowIsLookedAt()
    {
        RotationHands it(unconnected);
        it.on.program.setText(u"txtPWD"_s, u"a"_s);
        it.read(u"map mp_decoy"_s);
        QVERIFY(it.label(u"lblrotlength"_s).contains(u" has 43 of "_s));
        it.on.program.window.activateWindow();
        QVERIFY(becomesActive(&it.on.program.window));
        it.on.program.setText(u"txtPWD"_s, u"abcdef"_s);
        it.window->activateWindow();
        QVERIFY(becomesActive(it.window));
        QVERIFY2(it.label(u"lblrotlength"_s).contains(u" has 48 of "_s), qPrintable(it.label(u"lblrotlength"_s)));
    }

    void copyToEditIsLikeTypingAndThePageSendsIt()
    {
        RotationHands it(plain);
        QCOMPARE(it.lines().size(), 5);
        const QString before = it.edit()->toPlainText();
        it.read(u"gametype dm map mp_decoy"_s);
        it.edit()->setPlainText(before);
        it.click(u"cmdrotcopy"_s);
        QCOMPARE(it.edit()->toPlainText(), u"gametype dm map mp_decoy"_s);
        QVERIFY(it.label(u"lblrotdone"_s).startsWith(u"Copied to EDIT."_s));
        QCOMPARE(it.on.server.commands(), QByteArrayList());
        it.on.program.click(u"cmdsetservedit"_s);
        QCOMPARE(it.on.server.commands(), QByteArrayList{"sv_maprotationcurrent \"gametype dm map mp_decoy\""});
        QCOMPARE(it.on.server.game().dvars().value(u"sv_mapRotationCurrent"_s), u"gametype dm map mp_decoy"_s);
        it.edit()->undo();
        QCOMPARE(it.edit()->toPlainText(), before);
    }

    void theConfigLineIsOnTheClipboard()
    {
        const RotationHands it;
        QCOMPARE(copiedBy([&] { it.click(u"cmdrotconfig"_s); }),
                 u"set sv_maprotation \"gametype sd map mp_decoy map mp_toujane\""_s);
    }

    void thePreviewSaysWhichMapComesWhen()
    {
        RotationHands it(plain);
        it.on.program.clock.set(QDateTime(QDate(2026, 11, 20), QTime(20, 0)));
        it.read(u"gametype dm map mp_decoy gametype sd map mp_toujane map mp_carentan"_s);
        QCOMPARE(
            it.rows(u"lstrotpreview"_s),
            QStringList({u"20:00  dm mp_decoy (time limit not read)"_s, u"then  sd mp_toujane (time limit not read)"_s,
                         u"then  sd mp_carentan (time limit not read)"_s, u"then  the rotation is over"_s}));
        QVERIFY(it.label(u"lblrotlimits"_s).startsWith(u"Time limits have not been read; "_s));

        it.on.program.click(u"cmdservpop"_s);
        it.on.program.clock.set(QDateTime(QDate(2026, 11, 20), QTime(21, 0)));
        it.read(u"gametype dm map mp_decoy gametype sd map mp_toujane map mp_carentan "_s);
        QCOMPARE(
            it.rows(u"lstrotpreview"_s),
            QStringList({u"21:00  dm mp_decoy (30 minutes)"_s, u"21:30  sd mp_toujane (no time limit: over by score)"_s,
                         u"then  sd mp_carentan (no time limit: over by score)"_s, u"then  the rotation is over"_s}));
        QVERIFY2(it.label(u"lblrotlimits"_s).startsWith(u"By the time limits as they were read at 20:0"_s),
                 qPrintable(it.label(u"lblrotlimits"_s)));

        it.on.program.click(u"cmdconnect"_s);
        QVERIFY(it.rows(u"lstrotpreview"_s).constFirst().endsWith(u"(time limit not read)"_s));
    }

    void limitsAndMapsThatWereReadBeforeItOpenedCount()
    {
        RotationHands it(plain);
        it.window->close();
        it.on.program.click(u"cmdservpop"_s);
        it.on.program.click(u"cmdpopmaps"_s);
        it.open();
        QVERIFY(it.rows(u"lstrotpreview"_s).constFirst().endsWith(u"  tdm mp_toujane (30 minutes)"_s));
        QVERIFY2(it.label(u"lblrotmaps"_s).startsWith(u"The server's 12 maps"_s),
                 qPrintable(it.label(u"lblrotmaps"_s)));
    }
};

WINDOW_TEST(RotationWindowTest)
#include "tst_rotation_window.moc"
