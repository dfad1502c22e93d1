// SPDX-License-Identifier: MIT
#include "menus.h"
#include "player_grid.h"
#include "players/player_view.h"

#include <QHeaderView>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

const QString header = u"Num\tGuid\tPlayer\tPing\tScore\tAddress\tQport\tRate"_s;

/// The row as it is copied.
QString line(const Player &player)
{
    return cells(player).sliced(1, 8).join(u'\t');
}

QPoint placeOf(const PlayersTab &tab, int row)
{
    return tab.view()->visualRect(tab.view()->model()->index(row, 3)).center();
}

struct Crowd final {
    Crowd()
    {
        tab.put(players);
        tab.populate();
        tab.forget();
    }

    QList<Player> players{somebody(3, u"Ann"_s, 40, 5), somebody(5, u"Ben"_s, 50, 9), somebody(7, u"Cid"_s, 60, 2)};
    PlayersTab tab;
};

} // namespace

/// The menu of the player list, and what can be copied from it.
class PlayerMenuTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theMenuHasItsItems()
    {
        const Crowd crowd;
        const OpenMenu menu(*crowd.tab.view(), placeOf(crowd.tab, 1));
        QCOMPARE(menu.captions(), QStringList({u"Kick"_s, u"Ban"_s, u"Temp Ban"_s, u"-"_s, u"Send message"_s, u"-"_s,
                                               u"Check and kick"_s, u"Check and ban"_s, u"Check and temp ban"_s,
                                               u"Check and message"_s, u"-"_s, u"Who is this?"_s, u"-"_s,
                                               u"Copy GUID"_s, u"Copy address"_s, u"Copy row"_s, u"Copy list"_s}));
        QCOMPARE(crowd.tab.selected(), QStringList{u"5"_s});
    }

    void theMenuKeyOpensItOnTheSelectedRow()
    {
        const Crowd crowd;
        crowd.tab.select(2);
        const OpenMenu menu(*crowd.tab.view());
        const QRect row = crowd.tab.view()->visualRect(crowd.tab.view()->selectionModel()->selectedRows(3).first());
        const int top = crowd.tab.view()->viewport()->mapToGlobal(row.topLeft()).y();
        QVERIFY2(menu.place().y() >= top && menu.place().y() <= top + row.height(), "the menu is at the row");
        QVERIFY(menu.item(u"Kick"_s)->isEnabled());
    }

    void anItemDoesWhatItsButtonDoes_data()
    {
        QTest::addColumn<QString>("item");
        QTest::addColumn<QByteArray>("command");
        QTest::newRow("kick") << u"Kick"_s << "clientkick 5"_ba;
        QTest::newRow("ban") << u"Ban"_s << "banclient 5"_ba;
        QTest::newRow("temporary ban") << u"Temp Ban"_s << "tempbanclient 5"_ba;
    }

    void anItemDoesWhatItsButtonDoes()
    {
        QFETCH(QString, item);
        QFETCH(QByteArray, command);
        Crowd crowd;
        OpenMenu(*crowd.tab.view(), placeOf(crowd.tab, 1)).choose(item);
        QTRY_COMPARE(crowd.tab.server.commands(), QList<QByteArray>{command});
        QTRY_COMPARE(crowd.tab.column(3), QStringList({u"Ann"_s, u"Cid"_s}));
        QCOMPARE(crowd.tab.lines().size(), 1);
    }

    void aMessageCanBeSent()
    {
        Crowd crowd;
        crowd.tab.program.prompts.lines = {u"Hello %P%"_s};
        OpenMenu(*crowd.tab.view(), placeOf(crowd.tab, 2)).choose(u"Send message"_s);
        QTRY_COMPARE(crowd.tab.server.commands(), QList<QByteArray>{"tell 7 Hello Cid"_ba});
    }

    void theMenuOffersNoMoreThanTheButtons()
    {
        const Crowd crowd;
        crowd.tab.program.find<QPushButton>(u"cmdplyban"_s)->setEnabled(false);
        const OpenMenu menu(*crowd.tab.view(), placeOf(crowd.tab, 0));
        QVERIFY(menu.item(u"Kick"_s)->isEnabled());
        QVERIFY(!menu.item(u"Ban"_s)->isEnabled());
    }

    void nobodyIsSelectedAndNobodyCanBeHit()
    {
        Crowd crowd;
        crowd.tab.view()->clearSelection();
        const OpenMenu menu(*crowd.tab.view());
        for (const QString &item :
             {u"Kick"_s, u"Ban"_s, u"Temp Ban"_s, u"Send message"_s, u"Copy GUID"_s, u"Copy address"_s, u"Copy row"_s})
            QVERIFY2(!menu.item(item)->isEnabled(), qPrintable(item));
        QVERIFY(menu.item(u"Copy list"_s)->isEnabled());
    }

    // The list is read anew while somebody looks at the menu.
    void aMenuThatStandsOpenHitsNobodyElse()
    {
        Crowd crowd;
        OpenMenu menu(*crowd.tab.view(), placeOf(crowd.tab, 1));
        crowd.tab.server.game().players().remove(3);
        crowd.tab.populate();
        crowd.tab.forget();
        menu.choose(u"Kick"_s);
        QCOMPARE(crowd.tab.program.prompts.takeBoxes(),
                 QList<Box>{information(u"No player"_s, u"Select a player from the list to Kick first"_s)});
        QVERIFY(crowd.tab.server.commands().isEmpty());
    }

    void whatIsCopied_data()
    {
        QTest::addColumn<QString>("item");
        QTest::addColumn<QString>("text");
        QTest::newRow("guid") << u"Copy GUID"_s << u"100005"_s;
        QTest::newRow("address") << u"Copy address"_s << u"10.0.0.5:28960"_s;
        QTest::newRow("row") << u"Copy row"_s << u"5\t100005\tBen\t50\t9\t10.0.0.5:28960\t1005\t25000"_s;
    }

    void whatIsCopied()
    {
        QFETCH(QString, item);
        const Crowd crowd;
        const QString copied = copiedBy([&] { OpenMenu(*crowd.tab.view(), placeOf(crowd.tab, 1)).choose(item); });
        QTEST(copied, "text");
    }

    void theKeyForCopyingCopiesTheRow()
    {
        const Crowd crowd;
        crowd.tab.select(1);
        QCOMPARE(copiedBy([&] { QTest::keySequence(crowd.tab.view(), QKeySequence::Copy); }), line(crowd.players[1]));
        crowd.tab.view()->clearSelection();
        const auto untouched = u"nothing has been copied"_s;
        QCOMPARE(copiedBy([&] { QTest::keySequence(crowd.tab.view(), QKeySequence::Copy); }), untouched);
    }

    void theListIsCopiedAsItIsSeen()
    {
        const Crowd crowd;
        crowd.tab.sortOn(4); // the best score first
        const auto copyList = [&] { OpenMenu(*crowd.tab.view(), placeOf(crowd.tab, 0)).choose(u"Copy list"_s); };
        QCOMPARE(
            copiedBy(copyList),
            QStringList({header, line(crowd.players[1]), line(crowd.players[0]), line(crowd.players[2])}).join(u'\n'));

        crowd.tab.program.setText(u"txtplyfilter"_s, u"n"_s);
        QCOMPARE(copiedBy(copyList), QStringList({header, line(crowd.players[1]), line(crowd.players[0])}).join(u'\n'));

        crowd.tab.view()->horizontalHeader()->moveSection(3, 0);
        QVERIFY(copiedBy(copyList).startsWith(u"Player\tNum\tGuid\tPing\t"_s));
    }

    void whatIsNotKnownIsNotCopied()
    {
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s)});
        tab.tickBox(u"chkplyq"_s);
        tab.populate();
        const OpenMenu menu(*tab.view(), placeOf(tab, 0));
        QVERIFY(!menu.item(u"Copy GUID"_s)->isEnabled());
        QVERIFY(!menu.item(u"Copy address"_s)->isEnabled());
        QVERIFY(menu.item(u"Copy row"_s)->isEnabled());
    }

    void whatHitsAPlayerStandsApart()
    {
        PlayersTab tab;
        const auto *temporaryBan = tab.program.find<QWidget>(u"cmdtempban"_s);
        const auto *ban = tab.program.find<QWidget>(u"cmdplyban"_s);
        const auto *message = tab.program.find<QWidget>(u"cmdplymessage"_s);
        const int within = temporaryBan->x() - ban->geometry().right();
        const int apart = message->x() - temporaryBan->geometry().right();
        QVERIFY2(apart >= within + 24, qPrintable(u"%1 and %2"_s.arg(within).arg(apart)));
    }
};

WINDOW_TEST(PlayerMenuTest)
#include "tst_player_menu.moc"
