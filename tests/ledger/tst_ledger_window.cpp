// SPDX-License-Identifier: MIT
#include "activation.h"
#include "app/status_bar.h"
#include "at_request.h"
#include "exchange_boxes.h"
#include "ledger_hands.h"
#include "link.h"
#include "rcon/conversation.h"
#include "window_test.h"

#include <QCheckBox>
#include <QClipboard>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

/// The program beside a server that nothing has been taught.
Beginning plain(const PracticeOptions &options = {})
{
    return {.practice = options, .prepare = {}};
}

const QString lblverdict = u"lblverdict"_s;

} // namespace

/// The window of the ledger, and what stands in it after what happened.
class LedgerWindowTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theWindowHasItsColumns()
    {
        const LedgerHands it({.connects = false});
        QStringList headers;
        for (int column = 0; column < it.table()->model()->columnCount(); ++column)
            headers.append(it.table()->model()->headerData(column, Qt::Horizontal).toString());
        QCOMPARE(headers.join(u'|'), u"Time|Command|Copies|First answer|Datagrams|Bytes|Verdict"_s);
        QCOMPARE(it.table()->model()->rowCount(), 0);
        QCOMPARE(it.find<QCheckBox>(u"chkledgerbad"_s)->text().remove(u'&'), u"Only what was not acknowledged"_s);
        QCOMPARE(it.reply(), QString());
    }

    void escClosesIt()
    {
        const LedgerHands it({.connects = false});
        QVERIFY(becomesActive(it.window));
        QTest::keyClick(it.window, Qt::Key_Escape);
        QVERIFY(!it.window->isVisible());
    }

    void itGoesWithTheMainWindow()
    {
        const LedgerHands it({.connects = false});
        it.on.program.window.close();
        QVERIFY(!it.window->isVisible());
    }

    void theCursorStaysWhereThePersonWorks()
    {
        const LedgerHands it;
        auto *line = it.on.program.find<QComboBox>(u"comdirect"_s);
        line->setFocus();
        QVERIFY(becomesActive(it.window));
        it.on.program.window.activateWindow();
        QVERIFY(becomesActive(&it.on.program.window));
        QVERIFY(line->hasFocus());
    }

    void connectingIsInTheLedgerButThePublicQueryIsNot()
    {
        const LedgerHands it;
        QCOMPARE(it.commands(), QStringList({u"status"_s, u"dvarlist sv_maprotation"_s, u"fdir *.cfg"_s}));
        QCOMPARE(it.verdicts(), QStringList(3, u"answered"_s));
        QVERIFY(it.on.connecting.contains("getstatus"));
        const QStringList status = it.cells(0);
        QCOMPARE(status.at(0).size(), 8);
        QCOMPARE(status.at(2), u"1"_s);
        QVERIFY(!status.at(3).isEmpty());
        QCOMPARE(status.at(4), u"1"_s);
        QCOMPARE(status.at(5), QString::number(printed("map: mp_carentan\nnum score\n\n").size()));
    }

    // A person's, a page's and the refresh's: each is a command. The public query is none.
    void everyStatusIsInTheLedgerAndNoPublicQuery()
    {
        LedgerHands it;
        const int connecting = it.table()->model()->rowCount();
        const auto commands = [&] { return it.commands().mid(connecting); };
        it.enter(u"status"_s);
        QCOMPARE(commands(), QStringList{u"status"_s});
        QTRY_COMPARE(it.verdict(), u"answered"_s);
        QVERIFY(it.on.isRefreshing());
        QTRY_COMPARE(commands(), QStringList({u"status"_s, u"status"_s}));
        QTRY_COMPARE(it.verdict(), u"answered"_s);

        it.on.program.find<QCheckBox>(u"chkplyq"_s)->setChecked(true);
        it.on.forget();
        QVERIFY(it.on.isRefreshing());
        QTRY_VERIFY(it.on.server.commands().contains("getstatus"));
        QCOMPARE(commands().size(), 2);
    }

    void aDeviceIsNoFile()
    {
        LedgerHands it;
        it.on.program.prompts.lines = {u"/dev/null"_s};
        it.find<QPushButton>(u"cmdledgersave"_s)->click();
        const QList<Box> boxes = it.on.program.prompts.takeBoxes();
        QCOMPARE(boxes.size(), 1);
        QVERIFY(boxes.constFirst().text.endsWith(u"\rLedger not written"_s));
    }

    void aNewPasswordIsHiddenInTheAnswerToItsOwnCommand()
    {
        LedgerHands it;
        it.on.server.answer("rcon_password newword", {"it is new", "word now, and was practice\n"});
        it.enter(u"rcon_password newword"_s);
        QTRY_COMPARE(it.cells(it.table()->model()->rowCount() - 1).at(4), u"2"_s);
        it.chooseNewest();
        QCOMPARE(it.reply(), u"it is ******* now, and was ********\n"_s);
    }

    void aFormerPasswordIsHiddenInLateAnswers()
    {
        LedgerHands it;
        it.on.server.setSilent(true);
        it.enter(u"sv_x"_s);
        QTRY_COMPARE(it.on.server.requests().size(), 1);
        it.on.program.setText(u"txtPWD"_s, u"otherword"_s);
        it.enter(u"sv_y"_s);
        QTRY_COMPARE(it.on.server.requests().size(), 2);
        QVERIFY(it.on.server.sendRaw(printed("\"sv_x\" is: \"practice otherword^7\"\n")));
        QTRY_COMPARE(it.cells(3).at(4), u"1"_s);
        it.choose(3);
        QCOMPARE(it.reply(), u"\"sv_x\" is: \"******** *********^7\"\n"_s);
    }

    void whatTheServerSaysIsTheVerdict_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("verdict");
        QTest::addColumn<QString>("said"); // how it begins
        const auto row = [](const char *line, const char *verdict, const char *said) {
            QTest::newRow(line) << QString::fromLatin1(line) << QString::fromLatin1(verdict)
                                << QString::fromLatin1(said);
        };
        row("say hello", "acknowledged", "");
        row("set sv_hostname new", "acknowledged", "");
        row("sv_hostname", "answered", "\"sv_hostname\" is: ");
        row("foo", "unknown command", "Unknown command \"foo\"");
        row("clientkick 15", "no such player", "Client 15 is not active");
        row("clientkick 99", "no such player", "Bad client slot: 99");
        row("dir", "usage", "usage: dir ");
        row("set", "usage", "USAGE: set ");
        row("exec", "usage", "exec <filename>");
    }

    void whatTheServerSaysIsTheVerdict()
    {
        QFETCH(QString, line);
        QFETCH(QString, verdict);
        QFETCH(QString, said);
        const LedgerHands it(plain());
        it.enter(line);
        QTRY_COMPARE(it.verdict(), verdict);
        it.chooseNewest();
        QCOMPARE(it.commands().constLast(), line);
        QVERIFY2(it.reply().startsWith(said) && said.isEmpty() == it.reply().isEmpty(), qPrintable(it.reply()));
        const bool isGood = verdict == u"acknowledged" || verdict == u"answered";
        QCOMPARE(it.status(lblverdict), isGood ? QString() : verdict + u": "_s + line);
    }

    void everyWordingOfARefusalIsOne_data()
    {
        QTest::addColumn<QString>("wording");
        for (const QString &wording :
             {u"Bad rconpassword."_s, u"Invalid password."_s, u"Bad rcon"_s, u"No rconpassword set on the server."_s,
              u"The server must set 'rcon_password' for clients to use 'rcon'."_s,
              u"The password is shorter than 8 characters."_s})
            QTest::newRow(qPrintable(wording)) << wording;
    }

    void everyWordingOfARefusalIsOne()
    {
        QFETCH(QString, wording);
        PracticeOptions options;
        options.refusal = wording;
        const LedgerHands it(plain(options));
        it.on.program.setText(u"txtPWD"_s, u"wrong"_s);
        it.enter(u"say hello"_s);
        QTRY_COMPARE(it.verdict(), u"password refused"_s);
        it.chooseNewest();
        QVERIFY(it.reply().startsWith(wording));
        QVERIFY(it.note().contains(u"password"_s));
    }

    void anUnansweredCommandIsSilentAndThenLate()
    {
        LedgerHands it;
        it.on.server.setSilent(true);
        it.on.program.click(u"cmdstatus"_s);
        QCOMPARE(it.on.program.prompts.takeBoxes(), QList<Box>{noResponseBox()});
        QCOMPARE(it.verdict(), u"silent"_s);
        it.chooseNewest();
        QCOMPARE(it.cells(3).at(2), u"5"_s);
        QCOMPARE(it.cells(3).at(3), QString());
        const QString note = it.note();
        QCOMPARE(it.status(lblverdict), u"silent: Status"_s);
        QVERIFY(it.on.server.sendRaw(printed("map: mp_decoy\n")));
        QTRY_COMPARE(it.verdict(), u"late"_s);
        QCOMPARE(it.reply(), u"map: mp_decoy\n"_s);
        QVERIFY(it.note() != note);
        QCOMPARE(it.status(lblverdict), u"late: Status"_s);
    }

    void aConsoleLineIsLateAfterThreeSeconds_data()
    {
        QTest::addColumn<int>("milliseconds");
        QTest::addColumn<QString>("verdict");
        QTest::newRow("in time") << 2900 << u"acknowledged"_s;
        QTest::newRow("late") << 3100 << u"late"_s;
    }

    void aConsoleLineIsLateAfterThreeSeconds()
    {
        QFETCH(int, milliseconds);
        QFETCH(QString, verdict);
        LedgerHands it;
        it.on.server.answer("say hello", {});
        it.enter(u"say hello"_s);
        QTRY_COMPARE(it.on.server.requests().size(), 1);
        it.pass(milliseconds);
        QCOMPARE(it.verdict(), QString());
        QVERIFY(it.on.server.sendRaw(printed({})));
        QTRY_COMPARE(it.verdict(), verdict);
        it.judgeSilence();
        QCOMPARE(it.verdict(), verdict);
    }

    void andSilentAfterFifteen()
    {
        LedgerHands it;
        auto *timer = it.on.program.find<QTimer>(u"tmrledger"_s);
        QVERIFY2(!timer->isActive(), "nothing is waited for");
        it.on.server.setSilent(true);
        it.enter(u"say hello"_s);
        QVERIFY(timer->isActive() && timer->isSingleShot());
        QVERIFY2(timer->interval() > 14'000 && timer->interval() <= 15'000,
                 qPrintable(QString::number(timer->interval())));
        it.pass(14'000);
        it.judgeSilence();
        QCOMPARE(it.verdict(), QString());
        it.pass(1'000);
        it.judgeSilence();
        QCOMPARE(it.verdict(), u"silent"_s);
    }

    void aMapThatIsLoadedIsJudgedLikeAConsoleLine()
    {
        LedgerHands it;
        it.on.server.setSilent(true);
        it.on.program.trigger(u"commmap_rotate"_s);
        QCOMPARE(it.commands().constLast(), u"map_rotate"_s);
        QCOMPARE(it.verdict(), QString());
        QCOMPARE(it.cells(3).at(2), u"1"_s);
        it.pass(15'000);
        it.judgeSilence();
        QCOMPARE(it.verdict(), u"silent"_s);
    }

    void aDatagramThatIsTooLargeIsCut()
    {
        LedgerHands it;
        it.on.server.answerRaw("sv_x", {printed(QByteArray(8183, 'x'))});
        it.enter(u"sv_x"_s);
        QTRY_COMPARE(it.verdict(), u"cut"_s);
        QCOMPARE(it.on.program.prompts.takeBoxes(), QList<Box>{truncatedBox()});
        QCOMPARE(it.cells(3).at(5), u"8193"_s);
        it.chooseNewest();
        QCOMPARE(it.reply().remove(u'\n'), QString(8182, u'x'));
    }

    void aLongCommandIsToldWhatTheServerReads()
    {
        const LedgerHands it(plain());
        const QString line = u"say "_s + QString(1010, u'x') + u"end"_s;
        it.enter(line);
        QCOMPARE(it.verdict(), u"too long"_s);
        it.chooseNewest();
        QVERIFY2(it.note().endsWith(u": "_s + line.first(1023 - 14)), qPrintable(it.note()));
    }

    void aCharacterWithoutAByteIsUnreadable()
    {
        const LedgerHands it(plain());
        it.enter(u"say \u0142\u00F3d\u017A?"_s);
        QCOMPARE(it.verdict(), u"unreadable"_s);
        QCOMPARE(it.commands().constLast(), u"say \u0142\u00F3d\u017A?"_s);
        QTRY_COMPARE(it.on.server.requests().size(), 1);
        QCOMPARE(it.on.server.commands().constLast(), "say ?\xF3"
                                                      "d??");
    }

    void noPasswordIsInTheLedger()
    {
        LedgerHands it;
        it.on.server.answer("rcon_password", {"\"rcon_password\" is: \"prac", "tice^7\"\n"});
        it.on.server.setMapLoad(0);
        it.on.program.setText(u"txtservpass"_s, u"letmein"_s);
        it.on.program.click(u"cmdservsetpass"_s);
        QVERIFY(it.commands().contains(u"g_password \"*******\""_s));
        it.enter(u"sets sv_privatePassword letmein"_s);
        QCOMPARE(it.commands().constLast(), u"sets sv_privatePassword *******"_s);
        it.enter(u"say practice makes perfect"_s);
        QCOMPARE(it.commands().constLast(), u"say ******** makes perfect"_s);
        QTRY_VERIFY(!it.verdicts().contains(QString())); // all is answered
        it.enter(u"rcon_password"_s);
        QTRY_COMPARE(it.cells(it.table()->model()->rowCount() - 1).at(4), u"2"_s);
        it.chooseNewest();
        QCOMPARE(it.reply(), u"\"rcon_password\" is: \"********^7\"\n"_s);
    }

    void theFilterLooksAtCommandsAndVerdicts()
    {
        const LedgerHands it(plain());
        it.enter(u"foo"_s);
        QTRY_COMPARE(it.verdict(), u"unknown command"_s);
        auto *filter = it.find<QLineEdit>(u"txtledgerfilter"_s);
        filter->setText(u"DVARLIST"_s);
        QCOMPARE(it.commands(), QStringList{u"dvarlist sv_maprotation"_s});
        filter->setText(u"unknown"_s);
        QCOMPARE(it.commands(), QStringList{u"foo"_s});
        filter->setText(u"nothing like it"_s);
        QCOMPARE(it.commands(), QStringList());
        filter->clear();
        QCOMPARE(it.commands().size(), 4);
    }

    void whatWasAcknowledgedOrAnsweredCanBeHidden()
    {
        const LedgerHands it(plain());
        it.find<QCheckBox>(u"chkledgerbad"_s)->setChecked(true);
        QCOMPARE(it.commands(), QStringList());
        it.enter(u"say hello"_s);
        QCOMPARE(it.commands(), QStringList{u"say hello"_s}); // there is no answer yet
        QTRY_COMPARE(it.commands(), QStringList());
        it.enter(u"foo"_s);
        QTRY_COMPARE(it.verdicts(), QStringList{u"unknown command"_s});
        it.find<QCheckBox>(u"chkledgerbad"_s)->setChecked(false);
        QCOMPARE(it.verdicts(),
                 QStringList({u"answered"_s, u"answered"_s, u"answered"_s, u"acknowledged"_s, u"unknown command"_s}));
    }

    void theChosenRowsAreCopiedElseAllThatAreShown()
    {
        LedgerHands it;
        it.on.program.clock.set({QDate(2006, 3, 5), QTime(13, 0, 7)});
        it.on.program.clock.speed = 0;
        it.enter(u"say a"_s);
        QTRY_COMPARE(it.verdict(), u"acknowledged"_s);
        const QString header = u"Time\tCommand\tCopies\tFirst answer\tDatagrams\tBytes\tVerdict\n"_s;
        const QString row = u"2006-03-05 13:00:07\tsay a\t1\t0\t1\t10\tacknowledged\n"_s;
        it.chooseNewest();
        it.find<QPushButton>(u"cmdledgercopy"_s)->click();
        QCOMPARE(QGuiApplication::clipboard()->text(), header + row);
        it.table()->clearSelection();
        it.find<QPushButton>(u"cmdledgercopy"_s)->click();
        const QStringList lines = QGuiApplication::clipboard()->text().split(u'\n');
        QCOMPARE(lines.size(), 1 + 4 + 1);
        QCOMPARE(lines.at(4) + u'\n', row);
        it.find<QLineEdit>(u"txtledgerfilter"_s)->setText(u"say"_s);
        it.find<QPushButton>(u"cmdledgercopy"_s)->click();
        QCOMPARE(QGuiApplication::clipboard()->text(), header + row);
    }

    void whatIsShownIsSavedAsCsv()
    {
        LedgerHands it;
        it.on.program.clock.set({QDate(2006, 3, 5), QTime(13, 0, 7)});
        it.on.program.clock.speed = 0;
        it.enter(u"say \"a, b\" \u0142"_s);
        QTRY_COMPARE(it.cells(3).at(4), u"1"_s);
        it.find<QLineEdit>(u"txtledgerfilter"_s)->setText(u"say"_s);
        it.on.program.prompts.lines = {QDir::currentPath() + u"/ledger.csv"_s};
        it.find<QPushButton>(u"cmdledgersave"_s)->click();
        QCOMPARE(it.on.program.prompts.asked.constLast(),
                 QStringList({u"Save file as..."_s, u"csv"_s, u"molvark_ledger_050306"_s}));
        const QByteArray expected =
            "\xEF\xBB\xBF\"Time\",\"Command\",\"Copies\",\"First answer\",\"Datagrams\",\"Bytes\",\"Verdict\"\r\n"
            "\"2006-03-05 13:00:07\",\"say \"\"a, b\"\" \xC5\x82\",\"1\",\"0\",\"1\",\"10\",\"unreadable\"\r\n";
        QCOMPARE(it.on.program.file(u"ledger.csv"_s), expected);
    }

    void aFileThatIsThereIsReplacedOnlyWhenThePersonSaysSo()
    {
        LedgerHands it;
        it.on.program.write(u"ledger.csv"_s, "mine");
        const QString name = QDir::currentPath() + u"/ledger.csv"_s;
        const Box question{u"Save as CSV"_s, u"This file is there already. Replace it?\r"_s + name, BoxIcon::Question,
                           BoxButtons::YesNo};
        for (const Answer answer : {Answer::No, Answer::Yes}) {
            it.on.program.prompts.lines = {name};
            it.on.program.prompts.answers = {answer};
            it.find<QPushButton>(u"cmdledgersave"_s)->click();
            QCOMPARE(it.on.program.prompts.takeBoxes(), QList<Box>{question});
            QCOMPARE(it.on.program.file(u"ledger.csv"_s) == "mine", answer == Answer::No);
        }
    }

    void aFileThatCannotBeWrittenIsTold()
    {
        LedgerHands it;
        it.on.program.prompts.lines = {QDir::currentPath() + u"/nowhere/ledger.csv"_s};
        it.find<QPushButton>(u"cmdledgersave"_s)->click();
        const QList<Box> boxes = it.on.program.prompts.takeBoxes();
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(boxes.constFirst().title, u"Failed to Save"_s);
        QVERIFY(boxes.constFirst().text.endsWith(u"\rLedger not written"_s));
    }

    void theLastBadVerdictIsShownUntilTheNextGoodOne()
    {
        const LedgerHands it(plain());
        QCOMPARE(it.status(lblverdict), QString());
        it.enter(u"foo"_s);
        QTRY_COMPARE(it.status(lblverdict), u"unknown command: foo"_s);
        it.enter(u"clientkick 99"_s);
        QTRY_COMPARE(it.status(lblverdict), u"no such player: clientkick 99"_s);
        it.enter(u"say hello"_s);
        QTRY_COMPARE(it.status(lblverdict), QString());
    }

    void aClickOnItOpensTheLedgerThere()
    {
        const LedgerHands it(plain());
        it.enter(u"foo"_s);
        QTRY_COMPARE(it.status(lblverdict), u"unknown command: foo"_s);
        it.find<QLineEdit>(u"txtledgerfilter"_s)->setText(u"status"_s);
        it.window->close();
        QTest::mouseClick(it.on.program.find<QLabel>(lblverdict), Qt::RightButton);
        QVERIFY(!it.window->isVisible());
        QTest::mouseClick(it.on.program.find<QLabel>(lblverdict), Qt::LeftButton);
        QVERIFY(it.window->isVisible());
        QCOMPARE(it.status(lblverdict), QString());
        const QModelIndexList chosen = it.table()->selectionModel()->selectedRows(1);
        QCOMPARE(chosen.size(), 1);
        QCOMPARE(chosen.constFirst().data().toString(), u"foo"_s);
        QVERIFY(it.reply().startsWith(u"Unknown command"_s));
    }

    // An answer to an earlier command comes behind the bad one to a newer.
    void anOlderVerdictHidesNoNewerOne()
    {
        const LedgerHands it(plain());
        auto &bar = *it.on.program.find<StatusBar>(u"statusbar"_s);
        bar.showVerdict(1008, u"silent"_s, u"newer"_s);
        bar.showVerdict(1007, {}, u"older"_s);
        QCOMPARE(it.status(lblverdict), u"silent: newer"_s);
        bar.showVerdict(1008, {}, u"newer"_s);
        QCOMPARE(it.status(lblverdict), QString());
        bar.showVerdict(1008, u"silent"_s, u"newer"_s);
        bar.showVerdict(1009, {}, u"newest"_s);
        QCOMPARE(it.status(lblverdict), QString());
    }

    // Desktops put a plain window behind the one to which it belongs.
    void itIsADialogThatCanBeMadeLargerAndSmaller()
    {
        const LedgerHands it({.connects = false});
        QCOMPARE(it.window->windowType(), Qt::Dialog);
        QVERIFY(it.window->windowFlags().testFlags(Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint));
        QCOMPARE(it.window->windowHandle()->type(), Qt::Dialog);
        QCOMPARE(it.window->windowHandle()->transientParent(), it.on.program.window.windowHandle());
    }

    void allColumnsAreSeenWhenItOpens()
    {
        const LedgerHands it({.connects = false});
        QCOMPARE(it.window->size(), QSize(900, 560));
        const QHeaderView *header = it.table()->horizontalHeader();
        QVERIFY(header->sectionViewportPosition(6) + header->sectionSize(6) <= it.table()->viewport()->width());
        QVERIFY(header->sectionSize(1) >= 100);
    }

    void ofALongReplyTheBeginningIsShown()
    {
        LedgerHands it(plain());
        it.on.server.setSilent(true);
        it.enter(u"dvarlist"_s);
        it.chooseNewest();
        const auto *view = it.find<QPlainTextEdit>(u"txtledgerreply"_s);
        int changes = 0;
        QObject::connect(view, &QPlainTextEdit::textChanged, view, [&changes] { ++changes; });
        for (int datagram = 0; datagram < 40; ++datagram) {
            QVERIFY(it.on.server.sendRaw(printed(QByteArray(5000, 'x') + "\xA0\r\n")));
            QTRY_COMPARE(it.cells(it.table()->model()->rowCount() - 1).at(4), QString::number(datagram + 1));
        }
        QTRY_VERIFY(it.reply().endsWith(u"\n(the rest is not shown)"_s));
        QVERIFY2(it.reply().size() < 100'200, qPrintable(QString::number(it.reply().size())));
        for (const QString &line : it.reply().split(u'\n'))
            QVERIFY(line.size() <= 2000);
        QVERIFY2(changes < 40, qPrintable(u"%1 changes"_s.arg(changes)));
        // It is shown as far as it ever is.
        const int before = changes;
        QVERIFY(it.on.server.sendRaw(printed("more")));
        QTRY_COMPARE(it.cells(it.table()->model()->rowCount() - 1).at(4), u"41"_s);
        QMetaObject::invokeMethod(it.find<QTimer>(u"tmrdetails"_s), "timeout");
        QCOMPARE(changes, before);
    }

    // Who reads in a reply that goes on stays where he reads.
    void whatGrowsIsAddedTo()
    {
        LedgerHands it(plain());
        it.on.server.setSilent(true);
        it.enter(u"dvarlist"_s);
        it.chooseNewest();
        QVERIFY(it.on.server.sendRaw(printed(QByteArray("line\n").repeated(200))));
        QTRY_COMPARE(it.reply().count(u'\n'), 200);
        auto *view = it.find<QPlainTextEdit>(u"txtledgerreply"_s);
        view->verticalScrollBar()->setValue(100);
        QTextCursor cursor = view->textCursor();
        cursor.setPosition(500);
        view->setTextCursor(cursor);
        view->verticalScrollBar()->setValue(100);
        QVERIFY(it.on.server.sendRaw(printed("the end\n")));
        QTRY_VERIFY(it.reply().endsWith(u"the end\n"_s));
        QCOMPARE(view->verticalScrollBar()->value(), 100);
        QCOMPARE(view->textCursor().position(), 500);
    }

    void theTableFollowsTheNewestUnlessThePersonLooksElsewhere()
    {
        LedgerHands it;
        it.on.server.setSilent(true);
        it.window->resize(800, 400);
        for (int line = 0; line < 60; ++line)
            it.enter(u"say %1"_s.arg(line));
        const QScrollBar *bar = it.table()->verticalScrollBar();
        QTRY_VERIFY(bar->maximum() > 0 && bar->value() == bar->maximum());
        it.table()->scrollToTop();
        it.enter(u"say one more"_s);
        QApplication::processEvents();
        QCOMPARE(bar->value(), 0);
    }

    void aThousandAreKeptAndTheChosenOneStaysChosen()
    {
        LedgerHands it;
        it.on.server.setSilent(true);
        const Conversation talk(it.on.program.services);
        for (int line = 0; line < 997; ++line)
            QVERIFY(talk.tellWithoutWaiting(u"say %1"_s.arg(line)));
        QCOMPARE(it.table()->model()->rowCount(), 1000);
        it.choose(500);
        const QString chosen = it.cells(500).at(1);
        it.enter(u"say one more"_s);
        QCOMPARE(it.table()->model()->rowCount(), 1000);
        QCOMPARE(it.commands().constFirst(), u"dvarlist sv_maprotation"_s);
        QCOMPARE(it.table()->selectionModel()->selectedRows(1).value(0).data().toString(), chosen);
    }

    void theLedgerSendsNothing()
    {
        LedgerHands it;
        it.enter(u"say hello"_s);
        QTRY_COMPARE(it.verdict(), u"acknowledged"_s);
        it.on.forget();
        it.open();
        it.chooseNewest();
        it.pass(60'000);
        it.judgeSilence();
        QApplication::processEvents();
        QCOMPARE(it.on.server.requests().size(), 0);
        QCOMPARE(it.on.lines(), QStringList());
    }
};

WINDOW_TEST(LedgerWindowTest)
#include "tst_ledger_window.moc"
