// SPDX-License-Identifier: MIT
#include "player_grid.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int hanging = 999;
const QByteArray hangingLine = "  3     7  999 123456 Ann                  50 10.0.0.1:28960        1234 25000\n";
const QByteArray cutTable = statusHeading + hangingLine + "  5     0   5";

/// Runs `action` once, while the cut table is tried again after its first request.
template <typename Action>
void whileTryingAgain(PlayersTab &tab, const Action &action)
{
    tab.server.forgetRequests();
    asSoonAs(
        &tab.server, [&tab] { return tab.grid().size() == 1 && tab.server.requests().size() == 1; }, action);
}

bool isKick(const QByteArray &command)
{
    return command.startsWith("clientkick ");
}

qsizetype kicks(const QList<QByteArray> &commands)
{
    return std::ranges::count_if(commands, isKick);
}

} // namespace

/// What happens while the list is being read or a player dismissed.
class PlayersMeanwhileTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void onAnotherServerNobodyIsKicked()
    {
        PlayersTab tab("autokick999=1\r\nautokick999int=2\r\n");
        PracticeServer other(desertedServer());
        QVERIFY(other.listen());
        answerBriefly(other);
        tab.server.answer("status", {cutTable});
        tab.tickBox(u"chkautoupdate"_s);
        bool left = false;
        whileTryingAgain(tab, [&] {
            left = true;
            tab.program.click(u"cmdconnect"_s);
            tab.program.connectTo(other);
            other.game().players().put(somebody(3, u"Innocent"_s));
        });
        tab.tick();
        QVERIFY(left && tab.program.isConnected());
        QCOMPARE(kicks(other.commands()), 0);
        QCOMPARE(kicks(tab.server.commands()), 0);
        QVERIFY(other.game().players().at(3));
        tab.program.prompts.takeBoxes();
    }

    // The kick is under way when the person goes over to another server, where somebody else sits in that slot.
    void theNextServersListLosesNobody_data()
    {
        QTest::addColumn<bool>("byHand");
        QTest::newRow("kicked by hand") << true;
        QTest::newRow("kicked at ping 999") << false;
    }

    void theNextServersListLosesNobody()
    {
        QFETCH(bool, byHand);
        PlayersTab tab("autokick999=1\r\nautokick999int=2\r\n");
        PracticeServer other(desertedServer());
        QVERIFY(other.listen());
        answerBriefly(other);
        tab.server.answer("status", {statusHeading + hangingLine + '\n'});
        other.answer("status", {statusHeading + hangingLine + '\n'});
        QStringList messages;
        atRequest(tab.server, "clientkick 3", [&] {
            QTimer::singleShot(0, &tab.server, [&] {
                tab.tickBox(u"chkautoupdate"_s, false);
                tab.program.click(u"cmdconnect"_s);
                tab.program.connectTo(other);
                tab.program.click(u"cmdplypop"_s);
                messages = tab.program.messages();
            });
        });
        if (byHand) {
            tab.populate();
            tab.select(0);
            tab.program.click(u"cmdplykick"_s);
        } else {
            tab.tickBox(u"chkautoupdate"_s);
            tab.tick();
        }
        QCOMPARE(kicks(tab.server.commands()), 1);
        QCOMPARE(kicks(other.commands()), 0);
        QCOMPARE(tab.grid().size(), 1);
        QVERIFY(!messages.isEmpty());
        QCOMPARE(tab.program.messages(), messages);
    }

    // The same tick as above, undisturbed, kicks.
    void onTheSameServerHeIsKicked()
    {
        PlayersTab tab("autokick999=1\r\nautokick999int=2\r\n");
        tab.server.answer("status", {cutTable});
        tab.tickBox(u"chkautoupdate"_s);
        tab.server.forgetRequests();
        tab.tick();
        QCOMPARE(tab.server.commands(), (QList<QByteArray>{"status", "clientkick 3"}));
    }

    // The rest of the table would be read at the wrong place, and "7 1 999" out of a name be taken for a row.
    void anotherCommandEndsTheReading()
    {
        PlayersTab tab("autokick999=1\r\nautokick999int=1\r\n");
        QByteArray table = statusHeading;
        for (int slot = 0; slot < 20; ++slot)
            table += "  " + QByteArray::number(slot) +
                     "     7   48 123456 x 7 1 999 9 Evil^7         50 10.0.0.1:28960        1234 25000\n";
        table += '\n';
        tab.server.answer("say hello", {"\n"});
        const qsizetype third = table.indexOf("\n  2 ") + 1;
        for (const qsizetype cut : {third + 2, third + 12, third + 25, third + 33, third + 60}) {
            tab.server.answer("status", {table.first(cut)});
            tab.server.forgetRequests();
            bool said = false;
            asSoonAs(
                &tab.server, [&] { return tab.grid().size() == 2 && tab.server.requests().size() == 1; },
                [&] {
                    said = true;
                    tab.program.exchange.sendinfo(u"say hello"_s);
                    (void)tab.server.sendRaw(QByteArray(4, '\xFF') + "print\n" + table.mid(cut));
                    tab.program.exchange.waitseconds(1); // for it to come
                });
            tab.tickBox(u"chkautoupdate"_s);
            tab.tickBox(u"chkautoupdate"_s, false);
            QVERIFY(said);
            QCOMPARE(tab.column(1), (QStringList{u"0"_s, u"1"_s}));
            QCOMPARE(tab.column(4), (QStringList{u"48"_s, u"48"_s}));
            QCOMPARE(tab.server.commands(), (QList<QByteArray>{"status", "say hello"}));
        }
    }

    void aRowDeselectedMeanwhileLeavesNobodySelected()
    {
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s), somebody(5, u"Ben"_s), somebody(9, u"Cem"_s)});
        tab.populate();
        tab.select(0);
        atRequest(tab.server, "clientkick 3", [&] {
            const QModelIndex cell = tab.view()->model()->index(0, 1);
            QTest::mouseClick(tab.view()->viewport(), Qt::LeftButton, Qt::ControlModifier,
                              tab.view()->visualRect(cell).center());
        });
        tab.program.click(u"cmdplykick"_s);
        QCOMPARE(tab.column(1), (QStringList{u"5"_s, u"9"_s}));
        QCOMPARE(tab.selected(), QStringList());
    }

    void anotherRowSelectedMeanwhileStaysSelected_data()
    {
        QTest::addColumn<int>("kicked");
        QTest::addColumn<int>("selected");
        QTest::newRow("below") << 0 << 2;
        QTest::newRow("just below") << 0 << 1;
        QTest::newRow("above") << 2 << 0;
        QTest::newRow("just above") << 2 << 1;
    }

    void anotherRowSelectedMeanwhileStaysSelected()
    {
        QFETCH(int, kicked);
        QFETCH(int, selected);
        PlayersTab tab;
        const QStringList numbers{u"3"_s, u"5"_s, u"9"_s};
        tab.put({somebody(3, u"Ann"_s), somebody(5, u"Ben"_s), somebody(9, u"Cem"_s)});
        tab.populate();
        tab.select(kicked);
        atRequest(tab.server, "clientkick " + numbers.at(kicked).toLatin1(), [&] { tab.select(selected); });
        tab.program.click(u"cmdplykick"_s);
        QCOMPARE(tab.grid().size(), 2);
        QCOMPARE(tab.selected(), QStringList{numbers.at(selected)});
    }

    void anAutomaticKickKeepsTheSelectionOfAnother()
    {
        PlayersTab tab("autokick999=1\r\nautokick999int=2\r\n");
        tab.put({somebody(3, u"Ann"_s, hanging), somebody(5, u"Ben"_s), somebody(9, u"Cem"_s)});
        tab.tickBox(u"chkautoupdate"_s);
        atRequest(tab.server, "clientkick 3", [&] { tab.select(2); });
        tab.tick();
        QCOMPARE(tab.column(1), (QStringList{u"5"_s, u"9"_s}));
        QCOMPARE(tab.selected(), QStringList{u"9"_s});
    }

    void untickingWhileTheTableIsTriedAgainOpensNoBox()
    {
        PlayersTab tab;
        tab.server.answer("status", {cutTable});
        tab.program.prompts.whileOpen = [&tab] { tab.program.click(u"cmdconnect"_s); }; // or they would not end
        bool unticked = false;
        whileTryingAgain(tab, [&] {
            unticked = true;
            tab.tickBox(u"chkautoupdate"_s, false);
        });
        tab.tickBox(u"chkautoupdate"_s);
        QVERIFY(unticked);
        QVERIFY(tab.program.prompts.takeBoxes().isEmpty());
        QVERIFY(!tab.program.progress()->isVisible());
        QCOMPARE(tab.column(1), QStringList{u"3"_s});
    }

    // The list that is being read becomes the one that the tick asks for.
    void tickingWhileAListIsReadByHandSilencesIt_data()
    {
        QTest::addColumn<QByteArray>("table");
        QTest::newRow("cut short") << cutTable;
        QTest::newRow("nobody there") << statusHeading + '\n';
    }

    void tickingWhileAListIsReadByHandSilencesIt()
    {
        QFETCH(QByteArray, table);
        PlayersTab tab;
        tab.server.answer("status", {table});
        atRequest(tab.server, "status", [&] { tab.tickBox(u"chkautoupdate"_s); });
        tab.populate();
        QCOMPARE(tab.server.commands(), QList<QByteArray>{"status"});
        QVERIFY(tab.program.prompts.takeBoxes().isEmpty());
        QVERIFY(!tab.program.progress()->isVisible());
        QVERIFY(tab.timer()->isActive());
    }

    void theExchangesOwnBoxComesAsEverWhenTicked()
    {
        PlayersTab tab;
        tab.server.setSilent(true);
        atRequest(tab.server, "status", [&] { tab.tickBox(u"chkautoupdate"_s); });
        tab.populate();
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{noResponseBox()});
    }

    // The time of day that the wait is for never comes; the next day's lists are read all the same.
    void aWaitAcrossMidnightDoesNotKeepTheNextDaysListsOut()
    {
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s), somebody(5, u"Ben"_s)});
        const QDate day(2006, 3, 5);
        tab.program.clock.set(QDateTime(day, QTime(23, 59, 59, 300)));
        const FastClock &clock = tab.program.clock;
        int sent = 0;
        QStringList shown;
        QStringList shownAgain;
        asSoonAs(
            &tab.server, [&] { return clock.now().date() > day && clock.now().time() > QTime(0, 0, 10); },
            [&] {
                tab.server.forgetRequests();
                tab.populate();
                shown = tab.column(1);
                tab.server.game().players().remove(3);
                tab.populate();
                shownAgain = tab.column(1);
                sent = static_cast<int>(tab.server.commands().count("status"));
                tab.program.window.close();
            });
        tab.populate();
        QVERIFY(!tab.program.window.isVisible());
        QCOMPARE(sent, 2);
        QCOMPARE(shown, (QStringList{u"3"_s, u"5"_s}));
        QCOMPARE(shownAgain, QStringList{u"5"_s});
    }

    void anotherPlayerCanBeBannedWhileAKickWaits()
    {
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s), somebody(5, u"Ben"_s), somebody(9, u"Cem"_s)});
        tab.populate();
        tab.select(0);
        tab.server.forgetRequests();
        atRequest(tab.server, "clientkick 3", [&] {
            tab.select(1);
            tab.program.click(u"cmdplyban"_s);
        });
        tab.program.click(u"cmdplykick"_s);
        QCOMPARE(tab.server.commands(), (QList<QByteArray>{"clientkick 3", "banclient 5"}));
        QCOMPARE(tab.column(1), QStringList{u"9"_s});
        QVERIFY(tab.program.prompts.takeBoxes().isEmpty());
        QVERIFY(tab.program.messages().contains(u"Player banned and kicked [Ben]"_s));
        QVERIFY(tab.program.messages().contains(u"Player Kicked >Ann<"_s));
    }

    void onlyTheSameCommandForTheSamePlayerIsOneClickTooMany_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QList<QByteArray>>("commands");
        QTest::newRow("kick") << u"cmdplykick"_s << QList<QByteArray>{"clientkick 3"};
        QTest::newRow("ban") << u"cmdplyban"_s << QList<QByteArray>{"clientkick 3", "banclient 3"};
        QTest::newRow("temporary ban") << u"cmdtempban"_s << QList<QByteArray>{"clientkick 3", "tempbanclient 3"};
    }

    void onlyTheSameCommandForTheSamePlayerIsOneClickTooMany()
    {
        QFETCH(QString, button);
        QFETCH(QList<QByteArray>, commands);
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s), somebody(5, u"Ben"_s)});
        tab.populate();
        tab.select(0);
        tab.server.forgetRequests();
        atRequest(tab.server, "clientkick 3", [&] { tab.program.click(button); });
        tab.program.click(u"cmdplykick"_s);
        QCOMPARE(tab.server.commands(), commands);
        QCOMPARE(tab.column(1), QStringList{u"5"_s});
        QVERIFY(tab.program.prompts.takeBoxes().isEmpty());
    }

    void rowsWithoutANumberAreRefusedAlsoBehindQueryMode_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<Box>("box");
        const auto need = [](const QString &what) {
            return information(u"Need Rcon Access"_s, u"Only "_s + what + u" with Rcon access, not in Query Mode"_s);
        };
        QTest::newRow("kick") << u"cmdplykick"_s << need(u"Kick"_s);
        QTest::newRow("ban") << u"cmdplyban"_s << need(u"Ban"_s);
        QTest::newRow("temporary ban") << u"cmdtempban"_s << need(u"Temp Ban"_s);
        QTest::newRow("message") << u"cmdplymessage"_s
                                 << exclamation(u"Need Player ID"_s,
                                                u"Can only send message to an individual with the RCON access\n"
                                                "Populate players without Query Mode ticked"_s);
    }

    void rowsWithoutANumberAreRefusedAlsoBehindQueryMode()
    {
        QFETCH(QString, button);
        QFETCH(Box, box);
        PlayersTab tab("usequery=1\r\n");
        tab.put({somebody(3, u"Ann"_s), somebody(5, u"Ben"_s)});
        tab.populate();
        tab.tickBox(u"chkplyq"_s, false);
        tab.select(0);
        tab.server.forgetRequests();
        tab.program.prompts.lines = {u"Be fair"_s};
        tab.program.click(button);
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{box});
        QVERIFY(tab.program.prompts.asked.isEmpty());
        QVERIFY(tab.server.requests().isEmpty());
        QCOMPARE(tab.grid().size(), 2);
    }

    void disconnectingDeselects()
    {
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s), somebody(5, u"Ben"_s)});
        tab.populate();
        tab.select(1);
        QCOMPARE(tab.selected(), QStringList{u"5"_s});
        PracticeServer other(desertedServer());
        QVERIFY(other.listen());
        answerBriefly(other);
        tab.program.click(u"cmdconnect"_s);
        QCOMPARE(tab.selected(), QStringList());
        tab.program.connectTo(other);
        other.forgetRequests();
        tab.program.click(u"cmdplykick"_s);
        QVERIFY(other.requests().isEmpty());
        QCOMPARE(tab.program.prompts.takeBoxes().size(), 1);
    }
};

WINDOW_TEST(PlayersMeanwhileTest)
#include "tst_players_meanwhile.moc"
