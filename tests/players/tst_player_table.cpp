// SPDX-License-Identifier: MIT
#include "players/player_table.h"
#include "test_class.h"

#include <QAbstractItemModelTester>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

/// A row of ordinary cells, each of which names its player.
PlayerCells cellsOf(const QString &who)
{
    PlayerCells cells;
    for (std::size_t column = PlayerColumn::Num; column < PlayerColumn::LastMessage; ++column)
        cells.at(column) = u"%1 of %2"_s.arg(column).arg(who);
    return cells;
}

/// A list of players of whom one column holds `texts`; all other cells keep the number of the row they were added as.
class Column final {
public:
    Column(PlayerColumn::Column column_, const QStringList &texts) : column(column_)
    {
        for (qsizetype row = 0; row < texts.size(); ++row) {
            PlayerCells cells = cellsOf(QString::number(row));
            cells.at(static_cast<std::size_t>(column)) = texts.at(row);
            table.add(cells);
        }
    }

    /// The texts of the column, which must still stand beside all other cells of their players.
    [[nodiscard]] QStringList sorted(Qt::SortOrder order)
    {
        const QHash<QString, QString> before = byPlayer();
        table.sort(column, order);
        QStringList texts;
        for (int row = 0; row < table.rowCount(); ++row)
            texts.append(table.text(row, column));
        return byPlayer() == before ? texts : QStringList{u"rows are mixed up"_s};
    }

private:
    [[nodiscard]] QHash<QString, QString> byPlayer() const
    {
        QHash<QString, QString> cells;
        for (int row = 0; row < table.rowCount(); ++row) {
            QStringList others;
            for (int other = 0; other < PlayerColumn::Count; ++other) {
                if (other != column)
                    others.append(table.text(row, static_cast<PlayerColumn::Column>(other)));
            }
            cells.insert(others.join(u'|'), table.text(row, column));
        }
        return cells;
    }

    PlayerColumn::Column column;
    PlayerTable table;
    QAbstractItemModelTester tester{&table, QAbstractItemModelTester::FailureReportingMode::QtTest};
};

QVariant header(const PlayerTable &table, int column, int role = Qt::DisplayRole)
{
    return table.headerData(column, Qt::Horizontal, role);
}

} // namespace

class PlayerTableTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void theColumnsHaveTheirHeadersAndAlignments_data();
    void theColumnsHaveTheirHeadersAndAlignments();
    void thereIsNoOtherHeader();
    void aCellHoldsTheTextItWasGiven();
    void aCellCannotBeEdited();
    void rowsComeAndGo();
    void aPlayerIsFoundByTheTextOfTheSlot();
    void aColumnIsSorted_data();
    void aColumnIsSorted();
    void anEmptyColumnLeavesTheOrder();
    void anIndexFollowsItsCell_data();
    void anIndexFollowsItsCell();
};

void PlayerTableTest::theColumnsHaveTheirHeadersAndAlignments_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("alignment"); // 0 for none of its own
    const auto row = [](int column, const QString &text, int length, int alignment) {
        QTest::newRow(qPrintable(u"column %1"_s.arg(column))) << column << text << length << alignment;
    };
    row(0, u"  "_s, 2, 0);
    row(1, u"Num"_s, 3, 0);
    row(2, u"Guid          "_s, 14, Qt::AlignRight);
    row(3, u"Player                                "_s, 38, Qt::AlignLeft);
    row(4, u"Ping     "_s, 9, Qt::AlignRight);
    row(5, u"Score     "_s, 10, Qt::AlignRight);
    row(6, u"Address                 "_s, 24, Qt::AlignRight);
    row(7, u"Qport    "_s, 9, Qt::AlignRight);
    row(8, u" Rate   "_s, 8, Qt::AlignRight);
    row(9, u" Last Message"_s, 13, 0);
}

void PlayerTableTest::theColumnsHaveTheirHeadersAndAlignments()
{
    QFETCH(int, column);
    QFETCH(int, length);
    PlayerTable table;
    table.add(cellsOf(u"Bob"_s));
    QTEST(header(table, column).toString(), "text");
    QCOMPARE(header(table, column).toString().size(), length);
    const QVariant ofHeader = header(table, column, Qt::TextAlignmentRole);
    const QVariant ofCell = table.index(0, column).data(Qt::TextAlignmentRole);
    QTEST(ofHeader.toInt() & Qt::AlignHorizontal_Mask, "alignment");
    QTEST(ofCell.toInt() & Qt::AlignHorizontal_Mask, "alignment");
}

void PlayerTableTest::thereIsNoOtherHeader()
{
    const PlayerTable table;
    QCOMPARE(table.columnCount(), 10);
    QCOMPARE(header(table, -1), QVariant());
    QCOMPARE(header(table, 10), QVariant());
    QCOMPARE(header(table, 1, Qt::ToolTipRole), QVariant());
    QCOMPARE(table.headerData(0, Qt::Vertical, Qt::DisplayRole), QVariant());
}

void PlayerTableTest::aCellHoldsTheTextItWasGiven()
{
    PlayerTable table;
    table.add({QString(), u"007"_s, u"0063281996"_s, u" ^1Big  Bob "_s, u"CNCT"_s, u"-3"_s, u"loopback"_s, u"08045"_s,
               u"25000"_s});
    const QStringList expected{QString(), u"007"_s,      u"0063281996"_s, u" ^1Big  Bob "_s, u"CNCT"_s,
                               u"-3"_s,   u"loopback"_s, u"08045"_s,      u"25000"_s,        QString()};
    for (int column = 0; column < PlayerColumn::Count; ++column) {
        QCOMPARE(table.text(0, static_cast<PlayerColumn::Column>(column)), expected.at(column));
        QCOMPARE(table.index(0, column).data(), QVariant(expected.at(column)));
    }
    QCOMPARE(table.index(0, PlayerColumn::Num).data(Qt::DecorationRole), QVariant());
}

void PlayerTableTest::aCellCannotBeEdited()
{
    PlayerTable table;
    table.add(cellsOf(u"Bob"_s));
    const QModelIndex cell = table.index(0, PlayerColumn::Player);
    QVERIFY(cell.flags().testFlag(Qt::ItemIsSelectable));
    QVERIFY(!cell.flags().testFlag(Qt::ItemIsEditable));
    QVERIFY(!table.setData(cell, u"Ann"_s));
    QCOMPARE(table.text(0, PlayerColumn::Player), u"3 of Bob"_s);
}

void PlayerTableTest::rowsComeAndGo()
{
    PlayerTable table;
    const QAbstractItemModelTester tester(&table, QAbstractItemModelTester::FailureReportingMode::QtTest);
    QCOMPARE(table.rowCount(), 0);
    for (const QString &who : {u"A"_s, u"B"_s, u"C"_s, u"D"_s})
        table.add(cellsOf(who));
    QCOMPARE(table.rowCount(), 4);
    QCOMPARE(table.rowCount(table.index(0, 0)), 0);
    QCOMPARE(table.columnCount(table.index(0, 0)), 0);
    table.remove(1);
    table.remove(2);
    QCOMPARE(table.rowCount(), 2);
    QCOMPARE(table.text(0, PlayerColumn::Player), u"3 of A"_s);
    QCOMPARE(table.text(1, PlayerColumn::Player), u"3 of C"_s);
    table.clear();
    QCOMPARE(table.rowCount(), 0);
    QCOMPARE(table.columnCount(), 10);
    table.add(cellsOf(u"E"_s));
    QCOMPARE(table.text(0, PlayerColumn::Num), u"1 of E"_s);
}

void PlayerTableTest::aPlayerIsFoundByTheTextOfTheSlot()
{
    PlayerTable table;
    for (const QString &num : {u"7"_s, u"12"_s, u"1"_s, u"12"_s})
        table.add({QString(), num});
    QCOMPARE(table.rowOf(u"7"_s), 0);
    QCOMPARE(table.rowOf(u"12"_s), 1);
    QCOMPARE(table.rowOf(u"1"_s), 2);
    QCOMPARE(table.rowOf(u"2"_s), -1);
    QCOMPARE(table.rowOf(u"07"_s), -1);
    QCOMPARE(table.rowOf(QString()), -1);
}

void PlayerTableTest::aColumnIsSorted_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QStringList>("ascending");
    QTest::addColumn<QStringList>("descending");
    QTest::newRow("numbers by value") << int{PlayerColumn::Num} << QStringList{u"10"_s, u"9"_s, u"100"_s, u"0"_s}
                                      << QStringList{u"0"_s, u"9"_s, u"10"_s, u"100"_s}
                                      << QStringList{u"100"_s, u"10"_s, u"9"_s, u"0"_s};
    QTest::newRow("negative scores") << int{PlayerColumn::Score} << QStringList{u"-3"_s, u"12"_s, u"-10"_s, u"0"_s}
                                     << QStringList{u"-10"_s, u"-3"_s, u"0"_s, u"12"_s}
                                     << QStringList{u"12"_s, u"0"_s, u"-3"_s, u"-10"_s};
    QTest::newRow("words behind numbers")
        << int{PlayerColumn::Ping} << QStringList{u"ZMBI"_s, u"999"_s, QString(), u"CNCT"_s, u"50"_s}
        << QStringList{u"50"_s, u"999"_s, QString(), u"CNCT"_s, u"ZMBI"_s}
        << QStringList{u"999"_s, u"50"_s, u"ZMBI"_s, u"CNCT"_s, QString()};
    QTest::newRow("names without regard to case")
        << int{PlayerColumn::Player} << QStringList{u"dora"_s, u"Cora"_s, u"bob"_s, u"100"_s, u"Ann"_s}
        << QStringList{u"100"_s, u"Ann"_s, u"bob"_s, u"Cora"_s, u"dora"_s}
        << QStringList{u"100"_s, u"dora"_s, u"Cora"_s, u"bob"_s, u"Ann"_s};
    QTest::newRow("equal texts keep their order")
        << int{PlayerColumn::Player} << QStringList{u"BOB"_s, u"a"_s, u"bob"_s, u"Bob"_s}
        << QStringList{u"a"_s, u"BOB"_s, u"bob"_s, u"Bob"_s} << QStringList{u"BOB"_s, u"bob"_s, u"Bob"_s, u"a"_s};
    QTest::newRow("equal numbers keep their order")
        << int{PlayerColumn::Guid} << QStringList{u"07"_s, u"8"_s, u"7"_s, u"007"_s}
        << QStringList{u"07"_s, u"7"_s, u"007"_s, u"8"_s} << QStringList{u"8"_s, u"07"_s, u"7"_s, u"007"_s};
    QTest::newRow("addresses are texts") << int{PlayerColumn::Address}
                                         << QStringList{u"9.0.0.1:5"_s, u"loopback"_s, u"10.0.0.1:5"_s}
                                         << QStringList{u"10.0.0.1:5"_s, u"9.0.0.1:5"_s, u"loopback"_s}
                                         << QStringList{u"loopback"_s, u"9.0.0.1:5"_s, u"10.0.0.1:5"_s};
    QTest::newRow("all that looks like a number")
        << int{PlayerColumn::Rate} << QStringList{u"1e2"_s, u" 5 "_s, u"2.5"_s, u"0x1"_s, u"+99"_s}
        << QStringList{u"2.5"_s, u" 5 "_s, u"+99"_s, u"1e2"_s, u"0x1"_s}
        << QStringList{u"1e2"_s, u"+99"_s, u" 5 "_s, u"2.5"_s, u"0x1"_s};
}

void PlayerTableTest::aColumnIsSorted()
{
    QFETCH(int, column);
    QFETCH(QStringList, texts);
    Column first(static_cast<PlayerColumn::Column>(column), texts);
    QTEST(first.sorted(Qt::AscendingOrder), "ascending");
    Column second(static_cast<PlayerColumn::Column>(column), texts);
    QTEST(second.sorted(Qt::DescendingOrder), "descending");
}

void PlayerTableTest::anEmptyColumnLeavesTheOrder()
{
    for (const int column : {int{PlayerColumn::Edge}, int{PlayerColumn::LastMessage}}) {
        PlayerTable table;
        for (const QString &who : {u"C"_s, u"A"_s, u"B"_s})
            table.add(cellsOf(who));
        table.sort(column, Qt::AscendingOrder);
        QCOMPARE(table.text(0, PlayerColumn::Player), u"3 of C"_s);
        QCOMPARE(table.text(1, PlayerColumn::Player), u"3 of A"_s);
        QCOMPARE(table.text(2, PlayerColumn::Player), u"3 of B"_s);
    }
}

void PlayerTableTest::anIndexFollowsItsCell_data()
{
    QTest::addColumn<Qt::SortOrder>("order");
    QTest::addColumn<QList<int>>("rows"); // where each player stands afterwards
    QTest::newRow("ascending") << Qt::AscendingOrder << QList<int>{3, 0, 4, 1, 2};
    QTest::newRow("descending") << Qt::DescendingOrder << QList<int>{4, 2, 3, 1, 0};
}

void PlayerTableTest::anIndexFollowsItsCell()
{
    QFETCH(Qt::SortOrder, order);
    QFETCH(QList<int>, rows);
    PlayerTable table;
    const QAbstractItemModelTester tester(&table, QAbstractItemModelTester::FailureReportingMode::QtTest);
    const QStringList pings{u"CNCT"_s, u"50"_s, u"ZMBI"_s, u"60"_s, u"999"_s};
    QList<QPersistentModelIndex> kept;
    for (int row = 0; row < pings.size(); ++row) {
        PlayerCells cells = cellsOf(QString::number(row));
        cells.at(PlayerColumn::Ping) = pings.at(row);
        table.add(cells);
    }
    for (int row = 0; row < pings.size(); ++row) {
        for (int column = 0; column < PlayerColumn::Count; ++column)
            kept.append(table.index(row, column));
    }
    table.sort(PlayerColumn::Ping, order);
    for (qsizetype at = 0; at < kept.size(); ++at) {
        const qsizetype player = at / PlayerColumn::Count;
        QCOMPARE(kept.at(at).row(), rows.at(player));
        QCOMPARE(kept.at(at).column(), static_cast<int>(at % PlayerColumn::Count));
        if (kept.at(at).column() == PlayerColumn::Player)
            QCOMPARE(kept.at(at).data().toString(), u"3 of %1"_s.arg(player));
    }
}

GUILESS_TEST(PlayerTableTest)
#include "tst_player_table.moc"
