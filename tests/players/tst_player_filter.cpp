// SPDX-License-Identifier: MIT
#include "player_grid.h"

#include <QLineEdit>
#include <QTabWidget>

using namespace Qt::StringLiterals;

namespace {

struct Filtered final {
    Filtered()
    {
        tab.put({somebody(3, u"Ann"_s, 40, 5), somebody(5, u"Ben"_s, 50, 9), somebody(7, u"Cid"_s, 60, 2),
                 somebody(8, u"Hannah"_s, 70, 1)});
        tab.populate();
        tab.forget();
    }

    void filter(const QString &text) const { tab.program.setText(u"txtplyfilter"_s, text); }
    /// The names of the rows that are seen, from top to bottom.
    [[nodiscard]] QStringList seen() const
    {
        QStringList names;
        for (int row = 0; row < tab.view()->model()->rowCount(); ++row) {
            const QModelIndex name = tab.view()->model()->index(row, 3);
            sameOrFail(tab.view()->isRowHidden(row), tab.view()->visualRect(name).isEmpty());
            if (!tab.view()->isRowHidden(row))
                names.append(name.data().toString());
        }
        return names;
    }
    /// Clicks the player that is seen under this name.
    void select(const QString &name) const { tab.select(static_cast<int>(tab.column(3).indexOf(name))); }

    PlayersTab tab;

private:
    static void sameOrFail(bool isHidden, bool hasNoPlace)
    {
        if (isHidden != hasNoPlace)
            failTest(u"a row that is hidden is seen, or one that is not hidden is not"_s);
    }
};

} // namespace

/// The box that hides players from the list, and only hides them.
class PlayerFilterTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theBoxSaysWhatItIs()
    {
        const Filtered list;
        const auto *box = list.tab.program.find<QLineEdit>(u"txtplyfilter"_s);
        QCOMPARE(box->placeholderText(), u"Filter"_s);
        QVERIFY(box->isClearButtonEnabled());
        QVERIFY(box->text().isEmpty());
        QCOMPARE(list.seen(), QStringList({u"Ann"_s, u"Ben"_s, u"Cid"_s, u"Hannah"_s}));
    }

    void theKeysLeadToTheBox()
    {
        const Filtered list;
        list.filter(u"ann"_s);
        list.tab.view()->setFocus();
        QTest::keyClick(&list.tab.program.window, Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
        auto *box = list.tab.program.find<QLineEdit>(u"txtplyfilter"_s);
        QCOMPARE(QApplication::focusWidget(), box);
        QCOMPARE(box->selectedText(), u"ann"_s); // and what is typed takes its place
        QTest::keyClicks(box, u"cid"_s);
        QCOMPARE(list.seen(), QStringList{u"Cid"_s});
    }

    void whoIsSeen_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("names");
        QTest::newRow("a part of the name") << u"nn"_s << QStringList{u"Ann"_s, u"Hannah"_s};
        QTest::newRow("other letters") << u"BEN"_s << QStringList{u"Ben"_s};
        QTest::newRow("a part of the guid") << u"00007"_s << QStringList{u"Cid"_s};
        QTest::newRow("a part of the address") << u"0.0.5:2"_s << QStringList{u"Ben"_s};
        QTest::newRow("the score, which does not count") << u"25000"_s << QStringList{};
        QTest::newRow("nobody") << u"xyz"_s << QStringList{};
        QTest::newRow("nothing") << u""_s << QStringList{u"Ann"_s, u"Ben"_s, u"Cid"_s, u"Hannah"_s};
        QTest::newRow("no pattern") << u".*"_s << QStringList{};
    }

    void whoIsSeen()
    {
        QFETCH(QString, text);
        const Filtered list;
        list.filter(u"something else"_s);
        list.filter(text);
        QTEST(list.seen(), "names");
        QCOMPARE(list.tab.grid().size(), 4);
        list.filter({});
        QCOMPARE(list.seen().size(), 4);
    }

    void whoIsHiddenIsNoLongerSelected()
    {
        Filtered list;
        list.select(u"Cid"_s);
        list.filter(u"nn"_s);
        QVERIFY(list.tab.selected().isEmpty());
        list.tab.program.click(u"cmdplykick"_s);
        QCOMPARE(list.tab.program.prompts.takeBoxes(),
                 QList<Box>{information(u"No player"_s, u"Select a player from the list to Kick first"_s)});
        list.filter({});
        QVERIFY(list.tab.selected().isEmpty());
        QVERIFY(list.tab.server.commands().isEmpty());
    }

    void whoIsStillSeenStaysSelected()
    {
        const Filtered list;
        list.select(u"Hannah"_s);
        list.filter(u"nn"_s);
        QCOMPARE(list.tab.selected(), QStringList{u"8"_s});
    }

    void theOneThatIsSeenSelectedIsHit()
    {
        Filtered list;
        list.filter(u"nn"_s);
        list.select(u"Hannah"_s);
        list.tab.program.click(u"cmdplykick"_s);
        QCOMPARE(list.tab.server.commands(), QList<QByteArray>{"clientkick 8"_ba});
        QCOMPARE(list.tab.column(3), QStringList({u"Ann"_s, u"Ben"_s, u"Cid"_s}));
        QCOMPARE(list.seen(), QStringList{u"Ann"_s});
        QVERIFY(list.tab.selected().isEmpty());
    }

    void aRowThatGoesLeavesTheOthersHiddenAsTheyWere()
    {
        Filtered list;
        list.filter(u"nn"_s);
        list.select(u"Ann"_s);
        list.tab.program.click(u"cmdplyban"_s);
        QCOMPARE(list.seen(), QStringList{u"Hannah"_s});
        QVERIFY(list.tab.selected().isEmpty());
        // No key goes on to somebody who is hidden.
        QTest::keyClick(list.tab.view(), Qt::Key_Space);
        QVERIFY(list.tab.selected().isEmpty() || list.tab.selected() == QStringList{u"8"_s});
    }

    void keysDoNotSelectWhoIsHidden()
    {
        const Filtered list;
        list.filter(u"nn"_s);
        list.select(u"Ann"_s);
        QTest::keyClick(list.tab.view(), Qt::Key_Down);
        QCOMPARE(list.tab.selected(), QStringList{u"8"_s});
        QTest::keyClick(list.tab.view(), Qt::Key_Up);
        QCOMPARE(list.tab.selected(), QStringList{u"3"_s});
        for (const char key : {'5', '7'}) { // looks for a cell that begins so
            QTest::keyClick(list.tab.view(), key);
            QVERIFY2(!list.tab.selected().contains(QString(QLatin1Char(key))), "somebody hidden is selected");
        }
    }

    void newRowsObeyTheFilter()
    {
        Filtered list;
        list.filter(u"nn"_s);
        list.tab.put({somebody(9, u"Dan"_s), somebody(10, u"Anna"_s)});
        list.tab.populate();
        QCOMPARE(list.tab.grid().size(), 6);
        QCOMPARE(list.seen(), QStringList({u"Ann"_s, u"Hannah"_s, u"Anna"_s}));
    }

    void sortingKeepsTheSameRowsHidden()
    {
        const Filtered list;
        list.filter(u"nn"_s);
        list.select(u"Ann"_s);
        list.tab.sortOn(4);
        QCOMPARE(list.tab.column(3).first(), u"Ben"_s);
        QCOMPARE(list.seen(), QStringList({u"Ann"_s, u"Hannah"_s}));
        list.tab.sortOn(0);
        list.filter(u"e"_s);
        list.tab.sortOn(3);
        QCOMPARE(list.seen(), QStringList({u"Ben"_s}));
    }

    void allNamesAreSavedAlsoThoseThatAreHidden()
    {
        Filtered list;
        list.filter(u"nn"_s);
        list.tab.program.click(u"cmdsavenames"_s);
        QCOMPARE(list.tab.program.prompts.takeBoxes().size(), 2);
        const QByteArray file = list.tab.program.file(u"playerlist.csv"_s);
        for (const char *name : {"\"Ann\"", "\"Ben\"", "\"Cid\"", "\"Hannah\""})
            QVERIFY2(file.contains(name), name);
    }
};

WINDOW_TEST(PlayerFilterTest)
#include "tst_player_filter.moc"
