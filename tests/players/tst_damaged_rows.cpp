// SPDX-License-Identifier: MIT
#include "losing_lists.h"
#include "player_grid.h"
#include "players/player_table.h"

#include <QIcon>

using namespace Qt::StringLiterals;

namespace {

/// The rows of the grid with a mark, each with what is said of it.
QMap<int, QString> marks(const PlayersTab &tab)
{
    QMap<int, QString> found;
    const QAbstractItemModel *model = tab.view()->model();
    for (int row = 0; row < model->rowCount(); ++row) {
        const QModelIndex edge = model->index(row, PlayerColumn::Edge);
        const QString said = edge.data(Qt::AccessibleDescriptionRole).toString();
        if (edge.data(Qt::DecorationRole).value<QIcon>().isNull() != said.isEmpty())
            failTest(u"row %1 has not both, icon and description"_s.arg(row));
        if (edge.data(Qt::ToolTipRole).toString() != said)
            failTest(u"the mouse is told something else in row %1"_s.arg(row));
        if (!said.isEmpty())
            found.insert(row, said);
    }
    return found;
}

/// Which rows of the grid a server's list damages that loses the last of each 1,294 characters. Where that is a line
/// feed two rows are one.
QMap<int, QString> damagedRows(GameServer &game)
{
    const QString list = game.execute(u"status"_s).reply;
    constexpr qsizetype piece = 1294;
    constexpr int headLines = 3;
    QMap<int, QString> rows;
    int merged = 0;
    for (qsizetype lost = piece - 1; lost < list.size(); lost += piece) {
        const auto line = static_cast<int>(list.first(lost).count(u'\n'));
        rows.insert(line - headLines - merged, u"a character may be missing"_s);
        merged += list.at(lost) == u'\n' ? 1 : 0;
    }
    return rows;
}

QColor strongest(const QIcon &icon)
{
    const QImage image = icon.pixmap(16, 16).toImage();
    QColor found(0, 0, 0, 0);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).alpha() > found.alpha())
                found = image.pixelColor(x, y);
        }
    }
    return found;
}

} // namespace

/// The mark of rows that may be damaged.
class DamagedRowsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void rowsAtABorderThatLosesACharacterAreMarked()
    {
        for (quint32 seed = 1; seed <= 8; ++seed) {
            PlayersTab tab({}, losingServer(40, seed));
            const QMap<int, QString> wanted = damagedRows(tab.server.game());
            QVERIFY(wanted.size() >= 2);
            tab.populate();
            QVERIFY2(marks(tab) == wanted, qPrintable(QString::number(seed)));
        }
    }

    void otherServersRowsOnlyCameInTwoDatagrams()
    {
        PracticeOptions options;
        options.players = 40;
        PlayersTab tab({}, options);
        tab.populate();
        QVERIFY(marks(tab).size() >= 2);
        for (const QString &said : marks(tab))
            QCOMPARE(said, u"came in two datagrams"_s);
    }

    void aListInOneDatagramHasNoMark()
    {
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s), somebody(5, u"Ben"_s)});
        tab.populate();
        QVERIFY(marks(tab).isEmpty());
        QCOMPARE(tab.column(PlayerColumn::Edge), QStringList({{}, {}}));
    }

    void theCellsAndTheFileStayAsTheyAre()
    {
        PracticeOptions options;
        options.players = 40;
        PlayersTab tab({}, options);
        tab.populate();
        const QList<QStringList> inPieces = tab.grid();
        tab.server.setDatagramSize(8000);
        tab.populate();
        QVERIFY(marks(tab).isEmpty());
        QCOMPARE(tab.grid(), inPieces);
        for (const QStringList &row : inPieces)
            QCOMPARE(row.first(), QString());
    }

    void theMarkGoesWithItsRow()
    {
        PracticeOptions options;
        options.players = 40;
        PlayersTab tab({}, options);
        tab.populate();
        QStringList before;
        for (const int row : marks(tab).keys())
            before.append(tab.grid().at(row).at(PlayerColumn::Guid));
        tab.sortOn(2); // by name
        QStringList after;
        for (const int row : marks(tab).keys())
            after.append(tab.grid().at(row).at(PlayerColumn::Guid));
        before.sort();
        after.sort();
        QCOMPARE(after, before);
    }

    void theMarkCanBeSeenOnDarkAndLightGround()
    {
        PracticeOptions options;
        options.players = 40;
        PlayersTab tab({}, options);
        tab.populate();
        const QModelIndex edge = tab.view()->model()->index(marks(tab).firstKey(), PlayerColumn::Edge);
        const auto markOn = [&](const QColor &ground) {
            QPalette palette = tab.view()->palette();
            palette.setColor(QPalette::Base, ground);
            tab.view()->setPalette(palette);
            return strongest(edge.data(Qt::DecorationRole).value<QIcon>());
        };
        QVERIFY(markOn(Qt::white).lightness() < 110);
        QVERIFY(markOn(Qt::black).lightness() > 140);
    }

    // Another answer has come in the middle of the list: in front of it stands the beginning of a row, behind it the
    // rest.
    void rowsAroundAnotherAnswerAreMarked_data()
    {
        QTest::addColumn<qsizetype>("size");
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<QString>("said");
        QTest::addColumn<int>("rows");
        const QByteArray line = "sv_cheats is off in this game for now\n";
        const QString lost = u"a character may be missing"_s;
        const QString pieces = u"came in two datagrams"_s;
        QTest::newRow("one line, losing") << qsizetype{1293} << line << lost << 1;
        QTest::newRow("two lines, losing") << qsizetype{1293} << line + line << lost << 2;
        QTest::newRow("one line") << qsizetype{1000} << line << pieces << 1;
        QTest::newRow("two lines") << qsizetype{1000} << line + line << pieces << 2;
    }

    void rowsAroundAnotherAnswerAreMarked()
    {
        QFETCH(qsizetype, size);
        QFETCH(QByteArray, answer);
        QFETCH(QString, said);
        QFETCH(int, rows);
        PlayersTab tab;
        const QByteArray head = statusHeading + statusLine("Ann") + "  1"; // of slot 13
        const QByteArray name(size - head.size() + 3, 'n');
        tab.server.answer(
            "status", {statusHeading + statusLine(name) + "  1", answer, statusLine("Ben") + statusLine("Cid") + '\n'});
        tab.populate();
        QCOMPARE(tab.grid().size(), rows + 3);
        QCOMPARE(marks(tab), (QMap<int, QString>{{1, said}, {rows + 1, said}}));
    }

    // The row ends with its datagram, and its line feed begins the next.
    void aRowThatArrivesInPiecesIsMarkedToo()
    {
        PlayersTab tab;
        const QByteArray ann = statusLine("Ann");
        tab.server.answer("status", {statusHeading + ann.chopped(1), "\n" + statusLine("Ben"), "\n"});
        tab.populate();
        QCOMPARE(marks(tab), (QMap<int, QString>{{0, u"came in two datagrams"_s}}));
    }
};

WINDOW_TEST(DamagedRowsTest)
#include "tst_damaged_rows.moc"
