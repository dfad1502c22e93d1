// SPDX-License-Identifier: MIT
#include "base/colour_codes.h"
#include "checked_tab.h"
#include "losing_lists.h"

using namespace Qt::StringLiterals;

namespace {

const QString kickItem = u"Check and kick"_s;
const QByteArrayList kicked{"status", "clientkick 5", "status"};

Box question(const QString &title, const QString &text)
{
    return {title, text, BoxIcon::Question, BoxButtons::YesNo};
}

/// A server whose list shows somebody under the slot number of somebody else.
struct Trap {
    PracticeOptions options;
    int row = 0;   ///< of the grid
    int shown = 0; ///< slot number there
    int real = 0;  ///< that of the player
};

/// The cells of somebody whose row stands undamaged in that datagram; the last one is the number of the row.
QStringList cellsInside(const Checked &tab, const QByteArray &datagram)
{
    const QList<QStringList> rows = tab.grid();
    for (qsizetype row = 0; row < rows.size(); ++row) {
        QStringList cells = rows.at(row);
        const QString edge =
            tab.view()->model()->index(int(row), PlayerColumn::Edge).data(Qt::AccessibleDescriptionRole).toString();
        if (edge.isEmpty() && cells.at(PlayerColumn::Guid).size() > 4 &&
            datagram.contains(' ' + cells.at(PlayerColumn::Guid).toLatin1() + ' ')) {
            cells[PlayerColumn::LastMessage] = QString::number(row);
            return cells;
        }
    }
    failTest(u"nobody stands in that datagram alone"_s);
}

Trap setTrap()
{
    for (quint32 seed = 1; seed < 1000; ++seed) {
        const PracticeOptions options = losingServer(64, seed);
        GameServer game(options);
        const GatheredReply reply = losingList(game);
        const QList<StatusRow> rows = wholeTable(reply.text, reply.pieces).value_or(QList<StatusRow>());
        for (qsizetype row = 0; row < rows.size(); ++row) {
            for (const Player &player : game.players().all()) {
                const int shown = rows.at(row).num.toInt();
                if (player.guid == rows.at(row).guid && player.guid != u"0" &&
                    listedName(player) == rows.at(row).name && shown != player.slot && game.players().at(shown))
                    return {options, static_cast<int>(row), shown, player.slot};
            }
        }
    }
    failTest(u"no list lacks the digit of a slot"_s);
}

} // namespace

class CheckedActionsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void heIsKickedWhereHeStands()
    {
        Checked tab;
        tab.settle();
        const QString pane = tab.program.pane();
        tab.choose(1, kickItem);
        QCOMPARE(tab.server.commands(), kicked);
        QCOMPARE(tab.names(), QStringList({u"Ann"_s, u"Cid"_s}));
        QCOMPARE(tab.answers, QStringList({u"5:Ben kicked"_s, u"Ben has gone"_s}));
        QCOMPARE(tab.column(1), QStringList({u"3"_s, u"7"_s}));
        QCOMPARE(tab.program.pane(), pane);
        QVERIFY(tab.lines().isEmpty());
    }

    void eachItemSendsItsCommand_data()
    {
        QTest::addColumn<QString>("item");
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<QString>("words");
        QTest::newRow("kick") << kickItem << "clientkick 5"_ba << u"5:Ben kicked"_s;
        QTest::newRow("ban") << u"Check and ban"_s << "banclient 5"_ba << u"5:Ben banned"_s;
        QTest::newRow("temporary ban") << u"Check and temp ban"_s << "tempbanclient 5"_ba << u"5:Ben tempbanned"_s;
    }

    void eachItemSendsItsCommand()
    {
        QFETCH(QString, item);
        QFETCH(QByteArray, command);
        QFETCH(QString, words);
        Checked tab;
        tab.settle();
        tab.choose(1, item);
        QCOMPARE(tab.server.commands(), (QByteArrayList{"status", command, "status"}));
        QCOMPARE(tab.answers, QStringList({words, u"Ben has gone"_s}));
    }

    void aMessageGoesToHimAlone()
    {
        Checked tab;
        tab.settle();
        tab.program.prompts.lines = {u"Hello %P%"_s};
        tab.choose(1, u"Check and message"_s);
        QCOMPARE(tab.server.commands(), (QByteArrayList{"status", "tell 5 Hello Ben"}));
        QCOMPARE(tab.answers, QStringList{u"The server has taken it without a word"_s});
        tab.choose(1, u"Check and message"_s); // nothing is typed
        QCOMPARE(tab.server.commands().size(), 2);
    }

    void whoHasLeftIsToldSo()
    {
        Checked tab;
        tab.settle();
        Player innocent = somebody(5, u"Innocent"_s);
        innocent.guid = u"200005"_s;
        tab.server.game().players().put(innocent);
        tab.choose(1, kickItem);
        QCOMPARE(tab.server.commands(), QByteArrayList{"status"});
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{information(kickItem, u"Ben has left."_s)});
        QCOMPARE(tab.names(), QStringList({u"Ann"_s, u"Innocent"_s, u"Cid"_s}));
        QCOMPARE(tab.column(1), QStringList({u"3"_s, u"7"_s}));
    }

    void anotherSlotIsOffered_data()
    {
        QTest::addColumn<QString>("item");
        QTest::addColumn<QString>("offer");
        QTest::addColumn<QByteArray>("command");
        QTest::newRow("kick") << kickItem << u"Kick him there?"_s << "clientkick 9"_ba;
        QTest::newRow("ban") << u"Check and ban"_s << u"Ban him there?"_s << "banclient 9"_ba;
        QTest::newRow("temporary ban") << u"Check and temp ban"_s << u"Temp ban him there?"_s << "tempbanclient 9"_ba;
        QTest::newRow("message") << u"Check and message"_s << u"Send the message there?"_s << "tell 9 Hello"_ba;
    }

    void anotherSlotIsOffered()
    {
        QFETCH(QString, item);
        QFETCH(QString, offer);
        QFETCH(QByteArray, command);
        for (const Answer answer : {Answer::No, Answer::Yes}) {
            Checked tab;
            tab.settle();
            Player ben = somebody(5, u"Ben"_s);
            ben.slot = 9;
            tab.server.game().players().put(ben);
            tab.server.game().players().put(somebody(5, u"Innocent"_s));
            tab.program.prompts.lines = {u"Hello"_s};
            tab.program.prompts.answers = {answer};
            tab.choose(1, item);
            QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{question(item, u"Ben is in slot 9 now. "_s + offer)});
            QCOMPARE(tab.server.commands().contains(command), answer == Answer::Yes);
            QVERIFY(
                std::ranges::none_of(tab.server.commands(), [](const QByteArray &sent) { return sent.contains('5'); }));
            QVERIFY(tab.names().contains(u"Innocent"_s));
        }
    }

    // While the question is open he goes on to another slot, and somebody else sits down in the one that was offered.
    void heIsLookedForAgainAfterTheQuestion()
    {
        Checked tab;
        tab.settle();
        const auto moveTo = [&tab](int from, int to) {
            Player ben = somebody(5, u"Ben"_s);
            ben.slot = to;
            tab.server.game().players().put(ben);
            tab.server.game().players().put(somebody(from, u"Innocent"_s));
        };
        moveTo(5, 9);
        int open = 0;
        tab.program.prompts.whileOpen = [&] {
            if (open++ == 0)
                moveTo(9, 11);
        };
        tab.choose(1, kickItem);
        QCOMPARE(tab.program.prompts.takeBoxes(),
                 (QList<Box>{question(kickItem, u"Ben is in slot 9 now. Kick him there?"_s),
                             question(kickItem, u"Ben is in slot 11 now. Kick him there?"_s)}));
        QCOMPARE(tab.server.commands(), (QByteArrayList{"status", "status", "status", "clientkick 11", "status"}));
        QCOMPARE(tab.names(), QStringList({u"Ann"_s, u"Innocent"_s, u"Cid"_s, u"Innocent"_s}));
    }

    void ofTwoNeitherIsHit()
    {
        Checked tab;
        tab.settle();
        Player twin = somebody(5, u"Ben"_s);
        twin.slot = 9;
        tab.put({twin});
        tab.choose(1, kickItem);
        QCOMPARE(tab.server.commands(), QByteArrayList{"status"});
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{exclamation(kickItem, u"Two players are called Ben."_s)});
    }

    // A copy could meet somebody else: it is not known whether the first has been heard.
    void aSilentServerGetsNoCopy()
    {
        Checked tab;
        tab.settle();
        tab.server.answer("clientkick 5", {});
        tab.choose(1, kickItem);
        QCOMPARE(tab.server.commands(), kicked);
        QCOMPARE(tab.answers, QStringList({u"The server has not answered"_s, u"Ben is still there"_s}));
        QCOMPARE(tab.column(1), QStringList({u"3"_s, u"5"_s, u"7"_s}));
    }

    void withoutAListNothingIsSent()
    {
        Checked tab;
        tab.settle();
        tab.server.answer("status", {});
        tab.choose(1, kickItem);
        QCOMPARE(tab.server.commands(), QByteArrayList{"status"});
        QCOMPARE(tab.answers, QStringList{u"No answer to \"status\": nothing was sent"_s});
    }

    void whatIsNoWholeListIsNotActedOn_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QString>("answer");
        QTest::newRow("cut") << statusHeading + statusLine("Ann")
                             << u"The list of players has not come whole: nothing was sent"_s;
        QTest::newRow("other words") << "Invalid password.\n"_ba
                                     << u"What came for \"status\" is no list of players: nothing was sent"_s;
        QTest::newRow("out of order") << statusHeading + statusLine("Ann") + statusLine("Ben") + '\n'
                                      << u"The list of players has not come whole: nothing was sent"_s;
    }

    void whatIsNoWholeListIsNotActedOn()
    {
        QFETCH(QByteArray, reply);
        QFETCH(QString, answer);
        Checked tab;
        tab.settle();
        tab.server.answer("status", {reply});
        tab.choose(1, kickItem);
        QCOMPARE(tab.server.commands(), QByteArrayList{"status"});
        QCOMPARE(tab.answers, QStringList{answer});
        QCOMPARE(tab.names().size(), 3);
    }

    // The answer of an action before does not stand there as if it were that of this one.
    void anOldAnswerGoes()
    {
        Checked tab;
        tab.settle();
        tab.choose(1, kickItem);
        QCOMPARE(tab.answers.constLast(), u"Ben has gone"_s);
        tab.program.click(u"cmdconnect"_s);
        tab.answers.clear();
        tab.choose(1, kickItem);
        QCOMPARE(tab.program.prompts.takeBoxes().size(), 1);
        QVERIFY2(tab.answers.isEmpty(), qPrintable(tab.answers.join(u',')));
    }

    void oneAfterTheOther()
    {
        Checked tab;
        tab.settle();
        QStringList said;
        atRequest(tab.server, "status", [&] {
            QTimer::singleShot(0, &tab.server, [&] {
                OpenMenu(*tab.view(), tab.view()->visualRect(tab.view()->model()->index(0, 3)).center())
                    .choose(kickItem);
                QTimer::singleShot(0, &tab.server, [&] { tab.noteAnswer(); });
            });
        });
        tab.server.answer("status", {}); // so that the first one waits
        tab.choose(1, kickItem);
        QCOMPARE(tab.server.commands(), QByteArrayList{"status"});
        QCOMPARE(tab.answers, QStringList({u"Another checked action goes on: nothing was sent"_s,
                                           u"No answer to \"status\": nothing was sent"_s}));
    }

    // The list that the command goes by may be old when something has come between.
    void aCommandThatIsHeldUpIsNotSent()
    {
        Checked tab;
        tab.settle();
        bool isDone = false;
        QObject::connect(&tab.program.exchange, &Exchange::ended, &tab.server, [&] {
            if (!std::exchange(isDone, true))
                QTimer::singleShot(0, &tab.server, [&] { tab.program.click(u"cmdplypop"_s); });
        });
        tab.choose(1, kickItem);
        QCOMPARE(tab.server.commands(), (QByteArrayList{"status", "status"}));
        QCOMPARE(tab.answers, QStringList{u"Another command or a box came between: nothing was sent"_s});
    }

    void wordsThatAnotherCommandHasCoveredAreNotMadeUp()
    {
        Checked tab;
        tab.settle();
        tab.server.answer("clientkick 5", {});
        atRequest(tab.server, "clientkick 5",
                  [&tab] { QTimer::singleShot(0, &tab.server, [&tab] { tab.program.click(u"cmdplypop"_s); }); });
        tab.choose(1, kickItem);
        QCOMPARE(tab.server.commands(), (QByteArrayList{"status", "clientkick 5", "status", "status"}));
        QCOMPARE(tab.answers,
                 QStringList({u"Another command or a box came before the server's words"_s, u"Ben is still there"_s}));
    }

    void afterTheServerWasLeftItSaysWhatIsNotKnown()
    {
        Checked tab;
        tab.settle();
        tab.server.answer("clientkick 5", {});
        atRequest(tab.server, "clientkick 5",
                  [&tab] { QTimer::singleShot(0, &tab.server, [&tab] { tab.program.click(u"cmdconnect"_s); }); });
        tab.choose(1, kickItem);
        QCOMPARE(tab.server.commands(), (QByteArrayList{"status", "clientkick 5"}));
        QCOMPARE(tab.answers.constLast(), u"The server has been left: whether Ben has gone is not known"_s);
    }

    // While the question is open the person disconnects.
    void anOfferThatComesTooLateSaysSo()
    {
        Checked tab;
        tab.settle();
        Player ben = somebody(5, u"Ben"_s);
        ben.slot = 9;
        tab.server.game().players().remove(5);
        tab.put({ben});
        tab.program.prompts.whileOpen = [&tab, isDone = false]() mutable {
            if (!std::exchange(isDone, true))
                tab.program.click(u"cmdconnect"_s);
        };
        tab.choose(1, kickItem);
        QCOMPARE(tab.program.prompts.takeBoxes().size(), 1);
        QCOMPARE(tab.server.commands(), QByteArrayList{"status"});
        QCOMPARE(tab.answers, QStringList{u"The server has been left: nothing was sent"_s});
    }

    // Replies stay out of the pane, and no tick of the refresh comes between the list and the command.
    void ticksAreSkippedMeanwhile()
    {
        Checked tab;
        tab.settle();
        for (const char *step : {"status", "clientkick 5"})
            atRequest(tab.server, step, [&tab] { QTimer::singleShot(0, &tab.server, [&tab] { tab.tick(); }); });
        const QString pane = tab.program.pane();
        tab.choose(1, kickItem);
        QCOMPARE(tab.server.commands(), kicked);
        QCOMPARE(tab.program.pane(), pane);
        tab.tick();
        QCOMPARE(tab.server.commands().size(), kicked.size() + 1);
    }

    void whoRenamesHimselfIsStillThere()
    {
        Checked tab;
        tab.settle();
        tab.server.answer("clientkick 5", {"Client 5 is not active\n"});
        atRequest(tab.server, "clientkick 5", [&tab] { tab.server.game().players().rename(5, u"Bob"_s); });
        tab.choose(1, kickItem);
        QCOMPARE(tab.server.commands(), kicked);
        QCOMPARE(tab.answers, QStringList({u"Client 5 is not active"_s, u"Ben is still there"_s}));
        QCOMPARE(tab.column(1), QStringList({u"3"_s, u"5"_s, u"7"_s}));
    }

    // His GUID is there under another name: "has left" is all that the box says, and his row stays.
    void whoHasRenamedHimselfIsToldByHisGuid()
    {
        Checked tab;
        tab.settle();
        tab.server.game().players().rename(5, u"^1Bob"_s);
        tab.choose(1, kickItem);
        QCOMPARE(tab.server.commands(), QByteArrayList{"status"});
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{information(kickItem, u"Ben has left."_s)});
        QCOMPARE(tab.answers, QStringList{u"The GUID of Ben is there as Bob in slot 5: nothing was sent"_s});
        QCOMPARE(tab.names().size(), 3);
        QCOMPARE(tab.column(1), QStringList({u"3"_s, u"5"_s, u"7"_s}));
    }

    // Of the first list a datagram is lost, and the next one begins between the digits of his number.
    void aLostDigitAtABorderIsReadAgain()
    {
        Checked tab;
        tab.put({somebody(3, u"Ann"_s), somebody(4, u"Cid"_s), somebody(15, u"Ben"_s), somebody(5, u"Dan"_s)});
        tab.list();
        const QByteArray list = toAnsi(tab.server.game().execute(u"status"_s).reply);
        const QByteArray dan = " 5 ";
        const qsizetype lost = list.indexOf(dan);
        const qsizetype lostTo = list.indexOf(" 15 ") + 2;
        QVERIFY(lost > 0 && lostTo > lost);
        const qsizetype begin = list.lastIndexOf('\n', lost) + 1;
        tab.server.game().players().remove(5);
        tab.put({somebody(5, u"Innocent"_s)});
        int lists = 0;
        QObject::connect(&tab.server, &PracticeServer::requested, &tab.server, [&] {
            if (tab.server.commands().constLast() != "status")
                return;
            if (++lists == 1)
                tab.server.answer("status", {list.first(begin), list.sliced(lostTo)});
            else
                tab.server.answerAsUsual("status");
        });
        const int row = static_cast<int>(tab.column(1).indexOf(u"15"_s));
        tab.choose(row, kickItem);
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>());
        QCOMPARE(tab.server.commands(), (QByteArrayList{"status", "status", "clientkick 15", "status"}));
        QVERIFY(tab.names().contains(u"Innocent"_s));
    }

    // What two lists say is believed, also when both begin a datagram with him.
    void twoListsThatAgreeAreBelieved()
    {
        Checked tab;
        tab.settle();
        const QByteArray list = toAnsi(tab.server.game().execute(u"status"_s).reply);
        const qsizetype begin = list.lastIndexOf('\n', list.indexOf("Ben")) + 1;
        tab.server.answer("status", {list.first(begin), list.sliced(begin)});
        tab.choose(1, kickItem);
        QCOMPARE(tab.server.commands().first(3), (QByteArrayList{"status", "status", "clientkick 5"}));
    }

    void listsThatDisagreeAreNot()
    {
        Checked tab;
        tab.settle();
        int lists = 0;
        QObject::connect(&tab.server, &PracticeServer::requested, &tab.server, [&] {
            if (tab.server.commands().constLast() != "status")
                return;
            ++lists;
            const QByteArray list = toAnsi(tab.server.game().execute(u"status"_s).reply);
            const qsizetype begin = list.lastIndexOf('\n', list.indexOf("Ben")) + 1;
            QByteArray rest = list.sliced(begin);
            const qsizetype five = rest.indexOf('5');
            rest.replace(five, 1, QByteArray::number(4 + lists % 3));
            tab.server.answer("status", {list.first(begin), rest});
        });
        tab.choose(1, kickItem);
        QCOMPARE(tab.server.commands(), (QByteArrayList{"status", "status", "status"}));
        QCOMPARE(tab.answers, QStringList{u"The lists of players do not agree: nothing was sent"_s});
    }

    // Asterisks over a word of it would tell the password.
    void aRefusalIsShownAsItIs()
    {
        Checked tab;
        tab.settle();
        tab.server.setPassword(u"password"_s);
        tab.program.setText(u"txtPWD"_s, u"password"_s);
        tab.server.answer("clientkick 5", {"Invalid password.\n"});
        tab.choose(1, kickItem);
        QCOMPARE(tab.answers, QStringList({u"Invalid password."_s, u"Ben is still there"_s}));
    }

    void aMessageThatIsNotWrittenLeavesNoOldAnswer()
    {
        Checked tab;
        tab.settle();
        tab.choose(1, kickItem);
        QVERIFY(tab.program.find<QLabel>(u"lblanswer"_s)->isVisible());
        tab.choose(0, u"Check and message"_s); // and nothing is typed
        QVERIFY(!tab.program.find<QLabel>(u"lblanswer"_s)->isVisible());
    }

    // A datagram in the middle of a long list gets lost, in which he stands.
    void whoIsMissingInALongListIsLookedForTwice()
    {
        Checked tab(losingServer(40, 3));
        tab.list();
        const QList<QByteArray> list = losingPrintDatagrams(toAnsi(tab.server.game().execute(u"status"_s).reply));
        QVERIFY(list.size() >= 3);
        const QStringList cells = cellsInside(tab, list.at(1));
        const int row = cells.at(PlayerColumn::LastMessage).toInt();
        const QByteArray kick = "clientkick " + cells.at(PlayerColumn::Num).toLatin1();
        QList<QByteArray> holed = list;
        holed.removeAt(1);
        int lists = 0;
        QObject::connect(&tab.server, &PracticeServer::requested, &tab.server, [&] {
            if (tab.server.commands().constLast() != "status")
                return;
            if (++lists % 2 == 1)
                tab.server.answerRaw("status", holed); // the first, and the one after the kick
            else
                tab.server.answerAsUsual("status");
        });
        tab.server.answer(kick, {"not him\n"});
        tab.choose(row, kickItem);
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>());
        QCOMPARE(tab.server.commands(), (QByteArrayList{"status", "status", kick, "status", "status"}));
        QCOMPARE(tab.answers, QStringList({u"not him"_s, cells.at(PlayerColumn::Player) + u" is still there"_s}));
    }

    void whoHasLeftALongListIsMissingTwice()
    {
        Checked tab(losingServer(40, 3));
        tab.list();
        const QStringList cells = tab.grid().at(20);
        tab.server.game().players().remove(cells.at(PlayerColumn::Num).toInt());
        tab.choose(20, kickItem);
        QCOMPARE(tab.server.commands(), (QByteArrayList{"status", "status"}));
        QCOMPARE(tab.program.prompts.takeBoxes(),
                 QList<Box>{information(kickItem, cells.at(PlayerColumn::Player) + u" has left."_s)});
    }

    void theMenuKnowsWhomItIsAbout()
    {
        Checked tab;
        tab.settle();
        OpenMenu menu(*tab.view(), tab.view()->visualRect(tab.view()->model()->index(1, 3)).center());
        tab.server.game().players().remove(3);
        tab.populate();
        tab.forget();
        menu.choose(kickItem);
        QTRY_COMPARE(tab.server.commands(), kicked);
        QTRY_COMPARE(tab.names(), QStringList{u"Cid"_s});
    }

    void withoutANumberThereIsNothingToCheck()
    {
        Checked tab;
        tab.put({somebody(3, u"Ann"_s)});
        tab.tickBox(u"chkplyq"_s);
        tab.populate();
        QCOMPARE(tab.names(), QStringList{u"Ann"_s});
        const OpenMenu menu(*tab.view(), tab.view()->visualRect(tab.view()->model()->index(0, 3)).center());
        for (const QString &item : {kickItem, u"Check and ban"_s, u"Check and temp ban"_s, u"Check and message"_s})
            QVERIFY2(!menu.item(item)->isEnabled(), qPrintable(item));
    }

    void unconnectedItSaysSo()
    {
        Checked tab;
        tab.settle();
        tab.program.click(u"cmdconnect"_s);
        tab.choose(1, kickItem);
        QCOMPARE(tab.program.prompts.takeBoxes(),
                 QList<Box>{exclamation(u"Not Connected"_s, u"You need to connect to a server first"_s)});
        QVERIFY(tab.server.commands().isEmpty());
    }

    void afterDisconnectingNothingMoreIsSent()
    {
        Checked tab;
        tab.settle();
        atRequest(tab.server, "status", [&tab] { tab.program.click(u"cmdconnect"_s); });
        tab.choose(1, kickItem);
        QCOMPARE(tab.server.commands(), QByteArrayList{"status"});
        QCOMPARE(tab.answers, QStringList{u"The server has been left: nothing was sent"_s});
        QCOMPARE(tab.names().size(), 3);
    }

    // Somebody reads the list by hand in the middle of it, and the answers get mixed up.
    void anotherCommandMeanwhileHitsNobodyElse()
    {
        Checked tab;
        tab.settle();
        atRequest(tab.server, "status",
                  [&tab] { QTimer::singleShot(0, &tab.server, [&tab] { tab.program.click(u"cmdplypop"_s); }); });
        tab.choose(1, kickItem);
        QCOMPARE(tab.server.commands().count("clientkick 5"), 1);
        QCOMPARE(tab.names(), QStringList({u"Ann"_s, u"Cid"_s}));
    }

    // One command in half a second, whoever sends it: no step is lost, and none is asked for twice.
    void theStrictestServerHearsEachStep()
    {
        PracticeOptions options = PracticeOptions::cod2();
        options.players = 0;
        Checked tab(options);
        tab.settle();
        int heard = 0;
        QObject::connect(&tab.server, &PracticeServer::happened, [&heard](const QString &event) {
            heard += event.contains("too soon"_L1) ? 100 : 0;
            heard += event.contains(": rcon "_L1) ? 1 : 0;
        });
        tab.choose(1, kickItem);
        QCOMPARE(tab.server.commands(), kicked);
        QCOMPARE(heard, 3);
        QCOMPARE(tab.answers.constLast(), u"Ben has gone"_s);
    }

    // The list was asked for three times until an answer came. Those to the first two can come for six seconds more,
    // and they tell of the time when he still was there.
    void answersToEarlierCopiesAreAwaited()
    {
        Checked tab;
        tab.settle();
        const QByteArray old = printDatagram(toAnsi(tab.server.game().execute(u"status"_s).reply));
        tab.server.setSilent(true);
        QDateTime lastCopy;
        QObject::connect(&tab.server, &PracticeServer::requested, &tab.server, [&] {
            tab.server.setSilent(tab.server.requests().size() < 3);
            if (tab.server.requests().size() <= 3)
                lastCopy = tab.program.clock.now();
            else if (lastCopy.msecsTo(tab.program.clock.now()) < 5500)
                tab.server.sendRaw(old); // it would come before the answer
        });
        tab.populate();
        QCOMPARE(tab.server.requests().size(), 3);
        tab.server.game().players().put(somebody(5, u"Innocent"_s));
        asSoonAs(
            &tab.server, [&] { return lastCopy.msecsTo(tab.program.clock.now()) > 4000; },
            [&] { tab.server.sendRaw(old); });
        tab.choose(1, kickItem);
        QCOMPARE(tab.server.requests().size(), 4);
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{information(kickItem, u"Ben has left."_s)});
        QCOMPARE(tab.names(), QStringList({u"Ann"_s, u"Innocent"_s, u"Cid"_s}));
    }

    void aLostDigitMakesThePlainKickHitAnother()
    {
        const Trap trap = setTrap();
        Checked tab(trap.options);
        tab.list();
        const QString meant = stripcolour(listedName(*tab.server.game().players().at(trap.real)));
        const QString other = tab.server.game().players().at(trap.shown)->name;
        QCOMPARE(tab.grid().at(trap.row).at(1), QString::number(trap.shown));
        QCOMPARE(tab.grid().at(trap.row).at(3), meant);
        tab.select(trap.row);
        tab.program.click(u"cmdplykick"_s);
        QVERIFY2(!tab.server.game().players().at(trap.shown), qPrintable(other + u" is still there"_s));
        QVERIFY(tab.server.game().players().at(trap.real));
    }

    void theCheckedKickDoesNot()
    {
        const Trap trap = setTrap();
        Checked tab(trap.options);
        tab.list();
        const QString meant = stripcolour(listedName(*tab.server.game().players().at(trap.real)));
        tab.choose(trap.row, kickItem);
        QCOMPARE(tab.server.commands(), QByteArrayList{"status"});
        QCOMPARE(tab.program.prompts.takeBoxes(),
                 QList<Box>{exclamation(kickItem, u"The row of %1 may be damaged."_s.arg(meant))});
        QCOMPARE(tab.names().size(), 64);

        // As soon as the borders fall elsewhere, he is found where he is.
        tab.server.game().players().remove(0);
        tab.choose(trap.row, kickItem);
        QCOMPARE(tab.program.prompts.takeBoxes(),
                 QList<Box>{question(kickItem, u"%1 is in slot %2 now. Kick him there?"_s.arg(meant).arg(trap.real))});
        QVERIFY(!tab.server.game().players().at(trap.real));
        QVERIFY(tab.server.game().players().at(trap.shown));
        QCOMPARE(tab.names().size(), 62);
    }

    void onFullServersNobodyElseIsHit()
    {
        qsizetype hits = 0;
        for (quint32 seed = 1; seed <= 3; ++seed) {
            Checked tab(losingServer(40, seed));
            tab.list();
            for (int round = 0; round < 6; ++round) {
                const QList<Player> before = tab.server.game().players().all();
                const int row =
                    static_cast<int>(seed + 7U * static_cast<unsigned>(round)) % tab.view()->model()->rowCount();
                const QStringList cells = tab.grid().at(row);
                for (int second = 0; second < 10; ++second)
                    tab.server.game().tick();
                tab.choose(row, kickItem);
                tab.program.prompts.takeBoxes();
                QStringList hit;
                for (const Player &player : before) {
                    const QByteArray command = "clientkick " + QByteArray::number(player.slot);
                    if (tab.server.commands().contains(command) && !tab.server.game().players().at(player.slot))
                        hit.append(player.guid + stripcolour(listedName(player)));
                }
                QVERIFY2(hit.isEmpty() || hit == QStringList{cells.at(2) + cells.at(3)}, qPrintable(hit.join(u',')));
                hits += hit.size();
                tab.list();
            }
        }
        QVERIFY2(hits > 0, "nobody at all was hit");
    }
};

WINDOW_TEST(CheckedActionsTest)
#include "tst_checked_actions.moc"
