// SPDX-License-Identifier: MIT
#include "app/book_tools.h"
#include "book/sql_book_store.h"
#include "book_hands.h"
#include "evening.h"
#include "exchange_boxes.h"
#include "ledger/known_passwords.h"
#include "ledger/ledger_entry.h"
#include "other_eye.h"
#include "rcon/traffic.h"
#include "tests/players/losing_lists.h"

#include <QFile>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;

namespace {

PracticeOptions banningServer()
{
    PracticeOptions options = desertedServer();
    options.guidBans = true;
    return options;
}

/// The player book at the page of the bans; three players are listed, of whom the second is in slot 5.
struct BanBook final : BookHands {
    explicit BanBook(const QString &second = u"Ben"_s) : BookHands(keepsBook, banningServer())
    {
        put({somebody(3, u"Ann"_s), somebody(5, second), somebody(7, u"Cid"_s)});
        populate();
        open();
        showPage(2);
    }

    void act(int row, const QString &button)
    {
        program.window.activateWindow();
        select(row);
        program.click(button);
    }
    [[nodiscard]] QStringList states() const { return tableColumn("tblbans", 5); }
    /// Chooses the newest, and presses the button when it can be pressed.
    void unban()
    {
        const QString name = table("tblbans").value(0).value(2);
        choose("tblbans", name);
        server.forgetRequests();
        button("cmdunban")->click();
    }
    [[nodiscard]] QString hint() const { return label("lblbanhint").section(u'\n', 1); }
};

} // namespace

/// Actions in the book, and its page of the bans.
class BookBansTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theColumnsAreThese()
    {
        BanBook it;
        QStringList headers;
        const QAbstractItemModel *model = it.find<QTableView>("tblbans")->model();
        for (int column = 0; column < model->columnCount(); ++column)
            headers.append(model->headerData(column, Qt::Horizontal).toString());
        QCOMPARE(headers.join(u'|'), u"Time|Server|Player|GUID|Reason|State"_s);
        QVERIFY(it.label("lblbanhint").startsWith(u"No command lists the bans of a server"));
        QVERIFY(!it.button("cmdunban")->isEnabled());
    }

    void aBanIsInTheBook()
    {
        BanBook it;
        const QString time = it.program.clock.now().toString(u"yyyy-MM-dd HH:mm"_s);
        it.act(1, u"cmdplyban"_s);
        QTRY_COMPARE(it.table("tblbans"),
                     (QList<QStringList>{{time, it.address(), u"Ben^7"_s, u"100005"_s, QString(), u"in force"_s}}));
    }

    void aTemporaryBanIsListedAndAKickIsNot()
    {
        BanBook it;
        it.act(2, u"cmdtempban"_s);
        it.act(1, u"cmdplykick"_s);
        QTRY_COMPARE(it.states(), QStringList{u"temporary"_s});
        QCOMPARE(it.tableColumn("tblbans", 2), QStringList{u"Cid^7"_s});
        it.choose("tblbans", u"Cid^7"_s);
        QVERIFY(!it.button("cmdunban")->isEnabled());
        QVERIFY2(it.hint().contains(u"temporary"), qPrintable(it.hint()));
    }

    void aRefusedOneIsListedAsRefused()
    {
        BanBook it;
        it.server.game().players().remove(5);
        it.act(1, u"cmdplyban"_s);
        QTRY_COMPARE(it.states(), QStringList{u"refused"_s});
        it.choose("tblbans", u"Ben^7"_s);
        QVERIFY(!it.button("cmdunban")->isEnabled());
    }

    void everyActionStandsOnThePageOfThePlayer_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("word");
        QTest::addColumn<QString>("fate");
        QTest::newRow("kick") << u"cmdplykick"_s << u"kick"_s << u"answered"_s;
        QTest::newRow("ban") << u"cmdplyban"_s << u"ban"_s << u"answered, in force"_s;
        QTest::newRow("temporary ban") << u"cmdtempban"_s << u"temporary ban"_s << u"answered"_s;
    }

    void everyActionStandsOnThePageOfThePlayer()
    {
        QFETCH(QString, button);
        QFETCH(QString, word);
        QFETCH(QString, fate);
        BanBook it;
        const QString time = it.program.clock.now().toString(u"yyyy-MM-dd HH:mm"_s);
        it.showPage(0);
        it.choosePlayer(u"Ben^7"_s);
        it.act(1, button);
        const QString action = u"%1  %2 on %3, slot 5 as Ben^7: %4"_s.arg(time, word, it.address(), fate);
        QTRY_COMPARE(it.list("lstbookactions"), QStringList{action});
        QVERIFY(!it.button("cmdbookreason")->isEnabled());
        it.find<QListWidget>("lstbookactions")->setCurrentRow(0);
        it.type("txtbookreason", u"Spawn camping"_s);
        it.button("cmdbookreason")->click();
        QTRY_COMPARE(it.list("lstbookactions"), QStringList{action + u" (Spawn camping)"_s});
    }

    void aCheckedBanToo()
    {
        BanBook it;
        const QModelIndex cell = it.view()->model()->index(1, 3);
        OpenMenu(*it.view(), it.view()->visualRect(cell).center()).choose(u"Check and ban"_s);
        QTRY_COMPARE(it.states(), QStringList{u"in force"_s});
        QCOMPARE(it.tableColumn("tblbans", 3), QStringList{u"100005"_s});
    }

    void aSilentKickIsNotedAsSilent()
    {
        BanBook it;
        it.showPage(0);
        it.choosePlayer(u"Ben^7"_s);
        it.server.answer("clientkick 5", {});
        it.act(1, u"cmdplykick"_s);
        QCOMPARE(it.program.prompts.takeBoxes(), QList<Box>{noResponseBox()});
        QTRY_VERIFY(it.list("lstbookactions").value(0).endsWith(u"slot 5 as Ben^7: silent"));
        QCOMPARE(it.list("lstbookactions").size(), 1); // of five copies
    }

    void aCommandTypedByHandIsNoAction()
    {
        BanBook it;
        it.program.setText(u"comdirect"_s, u"banclient 5"_s);
        it.program.click(u"cmdsend"_s);
        QTRY_VERIFY(it.server.commands().contains("banclient 5"));
        it.act(2, u"cmdplyban"_s);
        QTRY_COMPARE(it.tableColumn("tblbans", 2), QStringList{u"Cid^7"_s});
    }

    void anActionOnADamagedRowIsNotedUnderSlotAndName()
    {
        PracticeOptions options = losingServer(40, 3);
        options.renames = false;
        BookHands it(keepsBook, options);
        it.populate();
        int row = 0;
        while (it.mark(row).isEmpty())
            ++row;
        const QString name = it.grid().at(row).at(3);
        it.select(row);
        it.program.click(u"cmdplyban"_s);
        (void)it.program.prompts.takeBoxes();
        it.open();
        it.showPage(2);
        QTRY_COMPARE(it.tableColumn("tblbans", 2).size(), 1);
        QVERIFY(it.tableColumn("tblbans", 2).first().contains(name.left(3)));
        QCOMPARE(it.tableColumn("tblbans", 3), QStringList{QString()});
    }

    void theAutomaticKickIsNoted()
    {
        BookHands it(QByteArray("autokick999=1\r\nautokick999int=2\r\n") + keepsBook);
        it.put({somebody(3, u"Ann"_s), somebody(5, u"Ben"_s, 999)});
        it.tickBox(u"chkautoupdate"_s);
        it.open();
        it.choosePlayer(u"Ben^7"_s);
        it.tick();
        it.tickBox(u"chkautoupdate"_s, false);
        QTRY_COMPARE(it.list("lstbookactions").size(), 1);
        QTRY_VERIFY2(it.list("lstbookactions").first().endsWith(u"slot 5 as Ben^7: answered"),
                     qPrintable(it.list("lstbookactions").first()));
        QVERIFY(it.list("lstbookactions").first().contains(u"kick, automatic on "));
    }

    // He is counted under his name and the slot number of then; in the meantime he has come back in another slot.
    void whereTheAutomaticKickMayHaveHitTwoBothAreNoted()
    {
        BookHands it(QByteArray("autokick999=1\r\nautokick999int=2\r\n") + keepsBook);
        it.put({somebody(5, u"Ben"_s, 999)});
        it.tickBox(u"chkautoupdate"_s);
        it.server.game().players().remove(5);
        Player ben = somebody(8, u"Ben"_s, 999);
        ben.guid = u"100005"_s;
        Player cid = somebody(5, u"Cid"_s);
        cid.guid = u"100099"_s;
        it.put({cid, ben});
        it.tick();
        it.tickBox(u"chkautoupdate"_s, false); // or he is kicked anew every few seconds
        QVERIFY(it.server.commands().contains("clientkick 5"));
        it.open();
        it.choosePlayer(u"Ben^7"_s);
        QTRY_VERIFY(it.list("lstbookactions").value(0).contains(u"kick, automatic, maybe on "));
        QTRY_COMPARE(it.list("lstbookactions").size(), 1);
        it.type("txtbooksearch", u"cid"_s);
        QTRY_COMPARE(it.players().size(), 1);
        it.choosePlayer(it.players().first());
        QTRY_VERIFY(it.list("lstbookactions").value(0).contains(u"kick, automatic, maybe on "));
    }

    void unbanningAsksAndThenLiftsAllOfThatName()
    {
        BanBook it;
        it.act(1, u"cmdplyban"_s);
        QTRY_COMPARE(it.states(), QStringList{u"in force"_s});
        Player other = somebody(6, u"^2BEN"_s);
        it.put({other});
        it.populate();
        it.pass(60);
        it.act(1, u"cmdplyban"_s);
        QTRY_COMPARE(it.states().size(), 2);
        it.program.prompts.answers = {Answer::No};
        it.unban();
        const Box asked = it.nextBox();
        QCOMPARE(asked.title, u"Unban"_s);
        QVERIFY(asked.text.contains(u"100005") && asked.text.contains(u"100006"));
        QCOMPARE(it.server.commands(), QByteArrayList());
        it.unban();
        QTRY_COMPARE(it.states(), QStringList({u"lifted"_s, u"lifted"_s}));
        (void)it.program.prompts.takeBoxes();
        QCOMPARE(it.server.commands().size(), 1);
        QCOMPARE(it.server.commands().first().toLower(), "unbanuser ben"_ba);
        QVERIFY2(it.hint().startsWith(u"The server has lifted"), qPrintable(it.hint()));
        QVERIFY(!it.server.game().bans().holdsForGood(u"100005"_s, {}));
        QVERIFY(!it.button("cmdunban")->isEnabled());
    }

    // Between the box and the server's answer another of that name is banned: of him the box said nothing.
    void whatTheBoxDidNotNameIsNotLifted()
    {
        BanBook it;
        it.act(1, u"cmdplyban"_s);
        QTRY_COMPARE(it.states(), QStringList{u"in force"_s});
        it.program.prompts.whileOpen = [] {
            OtherEye(u"molvark-players.db"_s)
                .ask("INSERT INTO actions (time, kind, server, num, guid, name, clean_name, address, maybe, automatic,"
                     " imported, lifted, verdict, reason) SELECT time + 60, kind, server, num, '77', name, clean_name,"
                     " address, maybe, automatic, imported, lifted, verdict, reason FROM actions");
        };
        it.unban();
        QTRY_COMPARE(it.states(), QStringList({u"in force"_s, u"lifted"_s}));
        QCOMPARE(it.tableColumn("tblbans", 3), QStringList({u"77"_s, u"100005"_s}));
        it.program.prompts.whileOpen = {};
        (void)it.program.prompts.takeBoxes();
    }

    void whatTheBookNotesOfACommand_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("reply");
        QTest::addColumn<Verdict>("verdict");
        QTest::addColumn<QString>("word");
        QTest::addColumn<bool>("isTaken");
        QTest::addColumn<int>("copies");
        const QString done = u"Ben was banned"_s;
        const QString notThere = u"Client 5 is not active"_s;
        const QString nobody = u"Can't ban user, GUID is 0"_s;
        const QString twice = u"no such player (sent 2 times)"_s;
        QTest::newRow("answered") << u"banclient 5"_s << done << Verdict::Answered << u"answered"_s << true << 1;
        QTest::newRow("late") << u"banclient 5"_s << done << Verdict::Late << u"late"_s << true << 2;
        QTest::newRow("refused") << u"banclient 5"_s << notThere << Verdict::NoSuchPlayer << u"no such player"_s
                                 << false << 1;
        QTest::newRow("refused late") << u"banclient 5"_s << notThere << Verdict::Late << u"no such player"_s << false
                                      << 1;
        QTest::newRow("not there for the second copy")
            << u"banclient 5"_s << notThere << Verdict::NoSuchPlayer << twice << false << 2;
        QTest::newRow("the same late") << u"banclient 5"_s << notThere << Verdict::Late << twice << false << 2;
        QTest::newRow("GUID 0") << u"banclient 5"_s << nobody << Verdict::Answered << u"answered: GUID is 0"_s << false
                                << 1;
        QTest::newRow("GUID 0 late") << u"tempbanclient 5"_s << nobody << Verdict::Late << u"answered: GUID is 0"_s
                                     << false << 1;
        QTest::newRow("silent") << u"banclient 5"_s << QString() << Verdict::Silent << u"silent"_s << false << 5;
    }

    void whatTheBookNotesOfACommand()
    {
        QFETCH(QString, command);
        QFETCH(QString, reply);
        QFETCH(Verdict, verdict);
        QFETCH(int, copies);
        const SentCopy copy{.number = 7, .comm = command, .password = {}, .datagram = {}};
        LedgerEntry entry(copy, KnownPasswords(), QDateTime(), {});
        entry.reply = reply;
        entry.verdict = verdict;
        entry.copies = copies;
        const CommandVerdict noted = bookVerdict(entry);
        QCOMPARE(noted.number, 7);
        QTEST(noted.word, "word");
        QTEST(noted.isTaken, "isTaken");
    }

    void aNameWithABlankIsQuoted()
    {
        BanBook it(u"^1Ben the Bad"_s);
        it.act(1, u"cmdplyban"_s);
        QTRY_COMPARE(it.states(), QStringList{u"in force"_s});
        it.unban();
        QTRY_COMPARE(it.states(), QStringList{u"lifted"_s});
        (void)it.program.prompts.takeBoxes();
        QCOMPARE(it.server.commands(), QByteArrayList{"unbanUser \"Ben the Bad\""});
    }

    // In the list of players two blanks are one, so the name under which the server has the ban is not known.
    void whatTheServerDoesNotFindStaysInForce()
    {
        BanBook it(u"^1Ben  the Bad"_s);
        it.act(1, u"cmdplyban"_s);
        QTRY_COMPARE(it.states(), QStringList{u"in force"_s});
        it.program.prompts.answers = {Answer::Yes, Answer::No};
        it.unban();
        QTRY_COMPARE(it.hint(), u"The bans of Ben the Bad have not been lifted: no such player."_s);
        (void)it.program.prompts.takeBoxes();
        QCOMPARE(it.states(), QStringList{u"in force"_s});
        QCOMPARE(it.server.commands(), QByteArrayList{"unbanUser \"Ben the Bad\""});
    }

    void aNameWithAQuotationMarkCannotBeLifted()
    {
        BanBook it(u"Ben \"B\""_s);
        it.act(1, u"cmdplyban"_s);
        QTRY_COMPARE(it.states(), QStringList{u"in force"_s});
        it.choose("tblbans", it.table("tblbans").first().at(2));
        QVERIFY(!it.button("cmdunban")->isEnabled());
        QVERIFY2(it.hint().contains(u"quotation mark"), qPrintable(it.hint()));
    }

    void silenceLiftsNothing()
    {
        BanBook it;
        it.act(1, u"cmdplyban"_s);
        QTRY_COMPARE(it.states(), QStringList{u"in force"_s});
        it.server.answer("unbanUser Ben", {});
        it.unban();
        QTRY_VERIFY2(it.hint().contains(u"have not been lifted: silent"), qPrintable(it.hint()));
        QCOMPARE(it.box().title, u"Unban"_s);
        QCOMPARE(it.states(), QStringList{u"in force"_s});
        QTRY_VERIFY(it.button("cmdunban")->isEnabled());
        QCOMPARE(it.server.commands(), QByteArrayList{"unbanUser Ben"});
    }

    // The server has banned him, and does not find him any more when the command comes again.
    void aBanWhoseFirstAnswerIsLostMayBeInForce()
    {
        BanBook it;
        it.server.answer("banclient 5", {});
        asSoonAs(
            &it.program.window, [&] { return it.server.commands().contains("banclient 5"); },
            [&] {
                (void)it.server.game().execute(u"banclient 5"_s);
                it.server.answerAsUsual("banclient 5");
            });
        it.act(1, u"cmdplyban"_s);
        QVERIFY(it.server.commands().count("banclient 5") > 1);
        QVERIFY(it.server.game().bans().holdsForGood(u"100005"_s, {}));
        QTRY_COMPARE(it.states(), QStringList{u"in force"_s});
        it.showPage(0);
        it.choosePlayer(u"Ben^7"_s);
        QTRY_VERIFY2(it.list("lstbookactions").value(0).endsWith(u"no such player (sent 2 times), in force"),
                     qPrintable(it.list("lstbookactions").value(0)));
        it.showPage(2);
        it.unban();
        QTRY_COMPARE(it.states(), QStringList{u"lifted"_s});
        (void)it.program.prompts.takeBoxes();
        QVERIFY(!it.server.game().bans().holdsForGood(u"100005"_s, {}));
    }

    // The answer was lost; the second time the server has no such ban any more.
    void whatTheServerDoesNotHaveCanBeMarkedAsLifted()
    {
        BanBook it;
        it.act(1, u"cmdplyban"_s);
        QTRY_COMPARE(it.states(), QStringList{u"in force"_s});
        (void)it.server.game().execute(u"unbanUser Ben"_s);
        it.program.prompts.answers = {Answer::Yes, Answer::No};
        it.unban();
        QTRY_COMPARE(it.hint(), u"The bans of Ben have not been lifted: no such player."_s);
        QTRY_VERIFY(it.button("cmdunban")->isEnabled());
        QList<Box> boxes = it.program.prompts.takeBoxes();
        QCOMPARE(boxes.size(), 2);
        QVERIFY2(boxes.last().text.contains(u"has no ban of the name Ben") && boxes.last().text.contains(u"100005"),
                 qPrintable(boxes.last().text));
        QCOMPARE(it.states(), QStringList{u"in force"_s});
        it.program.prompts.answers = {Answer::Yes, Answer::Yes};
        it.unban();
        QTRY_COMPARE(it.states(), QStringList{u"lifted"_s});
        QVERIFY2(it.hint().startsWith(u"The bans of Ben are marked as lifted"), qPrintable(it.hint()));
        QCOMPARE(it.program.prompts.takeBoxes().size(), 2);
        QCOMPARE(it.server.commands().size(), 1);
    }

    void oneClickIsEnough()
    {
        BanBook it;
        it.act(1, u"cmdplyban"_s);
        QTRY_COMPARE(it.states(), QStringList{u"in force"_s});
        it.program.prompts.whileOpen = [&it] { it.button("cmdunban")->click(); };
        it.unban();
        QVERIFY2(!it.button("cmdunban")->isEnabled(), "the book has not answered yet");
        it.button("cmdunban")->click();
        QTRY_COMPARE(it.states(), QStringList{u"lifted"_s});
        it.program.prompts.whileOpen = {};
        QCOMPARE(it.box().title, u"Unban"_s);
        QCOMPARE(it.server.commands(), QByteArrayList{"unbanUser Ben"});
    }

    // Who was called "^^11Bob" is "^1Bob" in the server's file, from which it was imported.
    void anImportedNameIsTakenAsItIs()
    {
        BanBook it(u"^^11Bob"_s);
        it.program.write(u"ban.txt"_s, "77 ^1Bob\n78 Bob\n");
        it.program.prompts.lines = {u"ban.txt"_s};
        it.button("cmdbanimport")->click();
        QTRY_COMPARE(it.states().size(), 2);
        it.act(1, u"cmdplyban"_s);
        QTRY_COMPARE(it.states().size(), 3);
        it.choose("tblbans", u"^1Bob"_s);
        it.server.forgetRequests();
        it.button("cmdunban")->click();
        const Box asked = it.nextBox();
        QVERIFY2(asked.text.contains(u"of the name ^1Bob.") && asked.text.contains(u"GUID 77") &&
                     asked.text.contains(u"GUID 100005") && !asked.text.contains(u"GUID 78"),
                 qPrintable(asked.text));
        QTRY_COMPARE(it.states().count(u"lifted"_s), 2);
        QCOMPARE(it.server.commands(), QByteArrayList{"unbanUser ^1Bob"});
        QVERIFY(!it.server.game().bans().holdsForGood(u"100005"_s, {}));
    }

#ifndef Q_OS_WIN
    // While the person is asked a backup takes the book's place, in which the ban has another number.
    void bansOfAnotherBookAreNotLiftedByOldNumbers()
    {
        BanBook it;
        it.act(1, u"cmdplyban"_s);
        QTRY_COMPARE(it.states(), QStringList{u"in force"_s});
        {
            SqlBookStore other(u"other.db"_s);
            BookAction action;
            action.kind = BookAction::Ban;
            action.server = it.address();
            action.guid = u"55"_s;
            action.name = u"Zed"_s;
            other.addAction(action);
        }
        it.program.prompts.whileOpen = [] {
            QFile::remove(u"molvark-players.db"_s);
            QFile::rename(u"other.db"_s, u"molvark-players.db"_s);
        };
        it.unban();
        QTRY_COMPARE(it.tableColumn("tblbans", 2), QStringList{u"Zed"_s});
        it.program.prompts.whileOpen = {};
        (void)it.program.prompts.takeBoxes();
        QCOMPARE(it.states(), QStringList{u"in force"_s});
        QVERIFY2(it.status("lblbook").contains(u"is another one now"), qPrintable(it.status("lblbook")));
    }
#endif

    void neitherDoesARefusal()
    {
        BanBook it;
        it.act(1, u"cmdplyban"_s);
        QTRY_COMPARE(it.states(), QStringList{u"in force"_s});
        it.server.answer("unbanUser Ben", {"Unknown command \"unbanUser\"\n"});
        it.unban();
        QTRY_VERIFY2(it.hint().contains(u"have not been lifted: unknown command"), qPrintable(it.hint()));
        (void)it.program.prompts.takeBoxes();
        QCOMPARE(it.states(), QStringList{u"in force"_s});
    }

    void onlyTheServerOfTheBanCanLiftIt()
    {
        BanBook it;
        it.act(1, u"cmdplyban"_s);
        QTRY_COMPARE(it.states(), QStringList{u"in force"_s});
        it.choose("tblbans", u"Ben^7"_s);
        QVERIFY(it.button("cmdunban")->isEnabled());
        it.program.click(u"cmdconnect"_s);
        QVERIFY(!it.button("cmdunban")->isEnabled());
        QVERIFY2(it.hint().startsWith(u"Connect to the server"), qPrintable(it.hint()));
        PracticeServer second(banningServer());
        listenOrFail(second);
        answerBriefly(second);
        it.program.connectTo(second);
        QVERIFY(!it.button("cmdunban")->isEnabled());
        QVERIFY2(it.hint().contains(it.address()), qPrintable(it.hint()));
        it.program.click(u"cmdconnect"_s);
        it.program.connectTo(it.server);
        QVERIFY(it.button("cmdunban")->isEnabled());
    }

    void theReasonIsEditedInItsCell()
    {
        BanBook it;
        it.act(1, u"cmdplyban"_s);
        QTRY_COMPARE(it.states(), QStringList{u"in force"_s});
        auto *view = it.find<QTableView>("tblbans");
        const QModelIndex reason = view->model()->index(0, 4);
        QVERIFY(!view->model()->index(0, 2).flags().testFlag(Qt::ItemIsEditable));
        view->setCurrentIndex(reason);
        view->edit(reason);
        auto *editor = view->viewport()->findChild<QLineEdit *>();
        QVERIFY(editor);
        editor->setText(u"Wallhack"_s);
        QTest::keyClick(editor, Qt::Key_Return);
        QTRY_COMPARE(it.tableColumn("tblbans", 4), QStringList{u"Wallhack"_s});
        it.showPage(0);
        it.choosePlayer(u"Ben^7"_s);
        QTRY_VERIFY(it.list("lstbookactions").value(0).endsWith(u"(Wallhack)"));
    }

    void bansAreImportedOnce()
    {
        BanBook it;
        it.program.write(u"ban.txt"_s, "12345 Zed\r\n67890 ^1Bad Guy\n\nnonsense\n0 Nobody\n");
        it.program.prompts.lines = {u"ban.txt"_s, u"ban.txt"_s};
        it.button("cmdbanimport")->click();
        QTRY_COMPARE(it.states(), QStringList({u"imported"_s, u"imported"_s}));
        QStringList guids = it.tableColumn("tblbans", 3);
        guids.sort();
        QCOMPARE(guids, QStringList({u"12345"_s, u"67890"_s}));
        QVERIFY2(it.hint().startsWith(u"2 of 2 bans taken over") && it.hint().contains(u"2 lines are not"),
                 qPrintable(it.hint()));
        it.button("cmdbanimport")->click();
        QTRY_VERIFY2(it.hint().startsWith(u"0 of 2 bans taken over"), qPrintable(it.hint()));
        QCOMPARE(it.states().size(), 2);
    }

    void anImportedBanStandsOnThePageOfThePlayer()
    {
        BanBook it;
        const QString time = it.program.clock.now().toString(u"yyyy-MM-dd HH:mm"_s);
        it.program.write(u"ban.txt"_s, "100005 Ben\n");
        it.program.prompts.lines = {u"ban.txt"_s};
        it.button("cmdbanimport")->click();
        QTRY_COMPARE(it.states(), QStringList{u"imported"_s});
        it.showPage(0);
        it.choosePlayer(u"Ben^7"_s);
        QTRY_COMPARE(it.list("lstbookactions"), QStringList{time + u"  ban, imported as Ben"_s});
        (void)it.server.game().execute(u"banclient 5"_s);
        it.showPage(2);
        it.unban();
        QTRY_COMPARE(it.states(), QStringList{u"lifted"_s});
        (void)it.program.prompts.takeBoxes();
        it.showPage(0);
        QTRY_COMPARE(it.list("lstbookactions"), QStringList{time + u"  ban, imported as Ben: lifted"_s});
    }

    void aFileThatCannotBeReadIsTold()
    {
        BanBook it;
        it.program.prompts.lines = {u"there-is-none.txt"_s};
        it.button("cmdbanimport")->click();
        QCOMPARE(it.box().title, u"Import bans"_s);
    }

    void aFileThatIsTooLargeIsTold()
    {
        BanBook it;
        it.program.write(u"ban.txt"_s, QByteArray("12345 Zed\n").repeated(110'000));
        it.program.prompts.lines = {u"ban.txt"_s};
        it.button("cmdbanimport")->click();
        QVERIFY(it.box().text.startsWith(u"This file is larger than 1 MB"));
        QCOMPARE(it.states(), QStringList());
    }

#ifdef Q_OS_UNIX
    // Opening it would wait until somebody writes into it.
    void aPipeIsNotRead()
    {
        BanBook it;
        QCOMPARE(mkfifo("pipe.txt", 0600), 0);
        it.program.prompts.lines = {u"pipe.txt"_s};
        it.button("cmdbanimport")->click();
        QVERIFY(it.box().text.startsWith(u"Error reading file"));
    }
#endif

    void theExportHoldsWhatIsInForce()
    {
        BanBook it;
        it.act(1, u"cmdplyban"_s);
        QTRY_COMPARE(it.states(), QStringList{u"in force"_s});
        it.act(1, u"cmdtempban"_s); // Cid, who has moved up
        QTRY_COMPARE(it.states().size(), 2);
        it.program.write(u"ban.txt"_s, "67890 Bad Guy\n");
        it.program.prompts.lines = {u"ban.txt"_s, u"out.txt"_s};
        it.button("cmdbanimport")->click();
        QTRY_COMPARE(it.states().size(), 3);
        it.button("cmdbanexport")->click();
        QTRY_VERIFY(!it.program.file(u"out.txt"_s).isEmpty());
        QByteArrayList lines = it.program.file(u"out.txt"_s).trimmed().split('\n');
        std::ranges::sort(lines);
        QCOMPARE(lines, (QByteArrayList{"100005 Ben", "67890 Bad Guy"}));
    }

    void forgettingAPlayerForgetsHisBans()
    {
        BanBook it;
        it.act(1, u"cmdplyban"_s);
        QTRY_COMPARE(it.states(), QStringList{u"in force"_s});
        it.showPage(0);
        it.choosePlayer(u"Ben^7"_s);
        it.button("cmdbookforget")->click();
        (void)it.box();
        QTRY_COMPARE(it.states(), QStringList());
    }
};

WINDOW_TEST(BookBansTest)
#include "tst_book_bans.moc"
