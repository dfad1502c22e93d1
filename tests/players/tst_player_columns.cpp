// SPDX-License-Identifier: MIT
#include "player_grid.h"
#include "players/player_view.h"

#include <QHeaderView>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace {

const QStringList headings{u""_s,      u"Num"_s,     u"Guid"_s,  u"Player"_s, u"Ping"_s,
                           u"Score"_s, u"Address"_s, u"Qport"_s, u"Rate"_s,   u"Last Message"_s};

QHeaderView *headerOf(const PlayersTab &tab)
{
    return tab.view()->horizontalHeader();
}

QPoint middleOf(const QHeaderView *header, int column)
{
    return {header->sectionViewportPosition(column) + header->sectionSize(column) / 2, header->height() / 2};
}

void clickHeader(const PlayersTab &tab, int column)
{
    QHeaderView *header = headerOf(tab);
    tab.view()->scrollTo(tab.view()->model()->index(0, column));
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, middleOf(header, column));
}

/// Takes hold of a heading and lets it go at the left of another.
void dragHeader(const PlayersTab &tab, int column, int onto)
{
    QHeaderView *header = headerOf(tab);
    const QPoint from = middleOf(header, column);
    const QPoint to(header->sectionViewportPosition(onto) + 3, from.y());
    QTest::mousePress(header->viewport(), Qt::LeftButton, {}, from);
    for (const QPoint step : {from + (to - from) / 3, from + (to - from) * 2 / 3, to}) {
        QMouseEvent move(QEvent::MouseMove, step, header->viewport()->mapToGlobal(step), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(header->viewport(), &move);
    }
    QTest::mouseRelease(header->viewport(), Qt::LeftButton, {}, to);
}

/// The headings from left to right.
QStringList order(const PlayersTab &tab)
{
    QStringList shown;
    for (int place = 0; place < 10; ++place)
        shown.append(headings.at(headerOf(tab)->logicalIndex(place)));
    return shown;
}

QList<int> widths(const PlayersTab &tab)
{
    QList<int> all;
    for (int column = 0; column < 10; ++column)
        all.append(tab.view()->columnWidth(column));
    return all;
}

PlayerView *viewOf(const PlayersTab &tab)
{
    return tab.program.find<PlayerView>(u"msfplayers"_s);
}

QList<Player> crowd(int count)
{
    QList<Player> players;
    for (int slot = 0; slot < count; ++slot)
        players.append(somebody(slot, u"Player %1"_s.arg(slot)));
    return players;
}

} // namespace

/// The columns of the player list under the mouse, and what is kept of them.
class PlayerColumnsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void aClickOnAHeadingSortsAsTheBoxDoes_data()
    {
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("chosen");
        QTest::addColumn<QStringList>("names");
        const auto row = [](int column, const char *chosen, const QStringList &names) {
            QTest::newRow(chosen) << column << QString::fromLatin1(chosen) << names;
        };
        const QStringList bySlot{u"Cid"_s, u"Ann"_s, u"Ben"_s};
        row(1, "Num", bySlot);
        row(2, "Guid", bySlot);
        row(3, "Player", {u"Ann"_s, u"Ben"_s, u"Cid"_s});
        row(4, "Ping", {u"Ben"_s, u"Cid"_s, u"Ann"_s});
        row(5, "Score", {u"Ben"_s, u"Cid"_s, u"Ann"_s}); // the best first
        row(6, "Address", bySlot);
        row(7, "Port", bySlot);
    }

    void aClickOnAHeadingSortsAsTheBoxDoes()
    {
        QFETCH(int, column);
        QFETCH(QStringList, names);
        PlayersTab tab;
        tab.put({somebody(2, u"Cid"_s, 50, 5), somebody(3, u"Ann"_s, 90, -3), somebody(4, u"Ben"_s, 7, 10)});
        tab.populate();
        clickHeader(tab, column);
        QTEST(tab.program.text(u"complayersort"_s), "chosen");
        QCOMPARE(tab.column(3), names);
        QVERIFY(headerOf(tab)->isSortIndicatorShown());
        QCOMPARE(headerOf(tab)->sortIndicatorSection(), column);
        QCOMPARE(headerOf(tab)->sortIndicatorOrder(), column == 5 ? Qt::DescendingOrder : Qt::AscendingOrder);

        clickHeader(tab, column); // once more turns nothing round
        QCOMPARE(tab.column(3), names);
        QCOMPARE(headerOf(tab)->sortIndicatorOrder(), column == 5 ? Qt::DescendingOrder : Qt::AscendingOrder);
    }

    void theArrowShowsWhatTheBoxHasChosen()
    {
        PlayersTab tab;
        QVERIFY(!headerOf(tab)->isSortIndicatorShown());
        tab.sortOn(4);
        QVERIFY(headerOf(tab)->isSortIndicatorShown());
        QCOMPARE(headerOf(tab)->sortIndicatorSection(), 5);
        QCOMPARE(headerOf(tab)->sortIndicatorOrder(), Qt::DescendingOrder);
        tab.sortOn(2);
        QCOMPARE(headerOf(tab)->sortIndicatorSection(), 3);
        QCOMPARE(headerOf(tab)->sortIndicatorOrder(), Qt::AscendingOrder);
        tab.sortOn(-1);
        QVERIFY(!headerOf(tab)->isSortIndicatorShown());
    }

    void aClickOnAHeadingThatTheBoxDoesNotHaveDoesNothing_data()
    {
        QTest::addColumn<int>("column");
        QTest::newRow("the edge") << 0;
        QTest::newRow("the last message") << 9;
    }

    void aClickOnAHeadingThatTheBoxDoesNotHaveDoesNothing()
    {
        QFETCH(int, column);
        PlayersTab tab;
        tab.put({somebody(2, u"Cid"_s), somebody(3, u"Ann"_s)});
        tab.populate();
        clickHeader(tab, column);
        QVERIFY(tab.program.text(u"complayersort"_s).isEmpty());
        QVERIFY(!headerOf(tab)->isSortIndicatorShown());
        clickHeader(tab, 3);
        clickHeader(tab, column);
        QCOMPARE(tab.program.text(u"complayersort"_s), u"Player"_s);
        QCOMPARE(headerOf(tab)->sortIndicatorSection(), 3);
        QCOMPARE(headerOf(tab)->sortIndicatorOrder(), Qt::AscendingOrder);
        QCOMPARE(tab.column(3), QStringList({u"Ann"_s, u"Cid"_s}));
    }

    void theListStaysSortedWhenItIsReadAnew()
    {
        PlayersTab tab;
        tab.put({somebody(2, u"Cid"_s), somebody(3, u"Ann"_s)});
        clickHeader(tab, 3);
        tab.populate();
        QCOMPARE(tab.column(3), QStringList({u"Ann"_s, u"Cid"_s}));
        QCOMPARE(headerOf(tab)->sortIndicatorSection(), 3);
    }

    void aHeadingCanBeDraggedToAnotherPlace()
    {
        PlayersTab tab;
        dragHeader(tab, 2, 1);
        QCOMPARE(order(tab).first(4), QStringList({u""_s, u"Guid"_s, u"Num"_s, u"Player"_s}));
        QVERIFY(tab.program.text(u"complayersort"_s).isEmpty()); // dragging does not sort
    }

    void widthsAndOrderSurviveAPopulate()
    {
        PlayersTab tab;
        tab.put(crowd(3));
        headerOf(tab)->resizeSection(2, 150);
        headerOf(tab)->resizeSection(4, 99);
        headerOf(tab)->moveSection(6, 1);
        const QList<int> before = widths(tab);
        const QStringList places = order(tab);
        tab.populate();
        tab.populate();
        QCOMPARE(widths(tab), before);
        QCOMPARE(order(tab), places);
        QCOMPARE(before.at(2), 150);
        QCOMPARE(places.at(1), u"Address"_s);
    }

    void whereTheListIsScrolledSurvivesAPopulate()
    {
        PlayersTab tab;
        tab.put(crowd(60));
        tab.populate();
        QScrollBar *down = tab.view()->verticalScrollBar();
        QScrollBar *across = tab.view()->horizontalScrollBar();
        headerOf(tab)->resizeSection(2, 900);
        QTRY_VERIFY(across->maximum() > 100);
        down->setValue(20);
        across->setValue(77);
        const int firstSeen = tab.view()->rowAt(0);
        tab.populate();
        QCoreApplication::processEvents();
        QCOMPARE(down->value(), 20);
        QCOMPARE(across->value(), 77);
        QCOMPARE(tab.view()->rowAt(0), firstSeen);
        QVERIFY(firstSeen > 0);
    }

    void aListThatHasBecomeShorterIsSeenToItsEnd()
    {
        PlayersTab tab;
        tab.put(crowd(60));
        tab.populate();
        tab.view()->verticalScrollBar()->setValue(50);
        for (int slot = 2; slot < 60; ++slot)
            tab.server.game().players().remove(slot);
        tab.populate();
        QCOMPARE(tab.grid().size(), 2);
        QCOMPARE(tab.view()->rowAt(0), 0);
    }

    void theNamesGetTheRoomThatTheOthersLeave()
    {
        PlayersTab tab;
        tab.program.window.resize(1500, 800);
        QCoreApplication::processEvents();
        headerOf(tab)->resizeSection(2, 180);
        const QList<int> before = widths(tab);
        tab.program.window.resize(1700, 800);
        QCoreApplication::processEvents();
        const QList<int> after = widths(tab);
        for (int column = 0; column < 10; ++column) {
            if (column != 3)
                QCOMPARE(after.at(column), before.at(column));
        }
        QVERIFY(after.at(3) > before.at(3));
        QVERIFY(headerOf(tab)->length() <= tab.view()->maximumViewportSize().width());
    }

    void theColumnsCanBePutBackFromAText()
    {
        PlayersTab tab;
        PlayerView *view = viewOf(tab);
        const QString atFirst = view->columnState();
        headerOf(tab)->resizeSection(2, 150);
        headerOf(tab)->resizeSection(0, 31);
        headerOf(tab)->moveSection(8, 0);
        const QString state = view->columnState();
        const QList<int> kept = widths(tab);
        const QStringList places = order(tab);
        QVERIFY(state != atFirst);

        view->resetColumns();
        QCOMPARE(view->columnState(), atFirst);
        QCOMPARE(order(tab), headings);
        QVERIFY(view->setColumnState(state));
        QCOMPARE(view->columnState(), state);
        QCOMPARE(order(tab), places);
        for (int column = 0; column < 10; ++column) {
            if (column != 3)
                QCOMPARE(widths(tab).at(column), kept.at(column));
        }
    }

    // Another window would else count as another choice of columns.
    void theWidthOfTheNamesIsNoPartOfTheText()
    {
        PlayersTab tab;
        const QString state = viewOf(tab)->columnState();
        const int before = tab.view()->columnWidth(3);
        tab.program.window.resize(1700, 800);
        QTRY_VERIFY(tab.view()->columnWidth(3) != before);
        QCOMPARE(viewOf(tab)->columnState(), state);
        QVERIFY(viewOf(tab)->setColumnState(u"9:20,8:20,7:20,6:20,5:20,4:20,3:4000,2:20,1:20,0:20"_s));
        QVERIFY(tab.view()->columnWidth(3) < 2000);
    }

    void aBrokenTextChangesNothing_data()
    {
        QTest::addColumn<QString>("text");
        const auto row = [](const char *name, const char *text) { QTest::newRow(name) << QString::fromLatin1(text); };
        row("nothing", "");
        row("a column too few", "0:20,1:40,2:120,3,4:70,5:70,6:150,7:70,8:70");
        row("a column twice", "0:20,1:40,2:120,3,4:70,5:70,6:150,7:70,8:70,8:70");
        row("a column too many", "0:20,1:40,2:120,3,4:70,5:70,6:150,7:70,8:70,9:70,9:70");
        row("a column that there is not", "0:20,1:40,2:120,3,4:70,5:70,6:150,7:70,8:70,10:70");
        row("no width", "0:20,1:40,2:120,3,4:70,5:70,6:150,7:70,8:70,9");
        row("a width of nothing", "0:20,1:40,2:120,3,4:70,5:70,6:150,7:70,8:70,9:0");
        row("a width below nothing", "0:20,1:40,2:120,3,4:70,5:70,6:150,7:70,8:70,9:-70");
        row("a width beyond all screens", "0:20,1:40,2:120,3,4:70,5:70,6:150,7:70,8:70,9:99999999999");
        row("words", "0:20,1:40,2:120,3,4:70,5:wide,6:150,7:70,8:70,9:70");
        row("something behind it", "0:20,1:40,2:120,3,4:70,5:70,6:150,7:70,8:70,9:70,");
        row("another list's", "1024x768");
    }

    void aBrokenTextChangesNothing()
    {
        QFETCH(QString, text);
        PlayersTab tab;
        const QList<int> before = widths(tab);
        QVERIFY(!viewOf(tab)->setColumnState(text));
        QCOMPARE(widths(tab), before);
        QCOMPARE(order(tab), headings);
    }
};

WINDOW_TEST(PlayerColumnsTest)
#include "tst_player_columns.moc"
