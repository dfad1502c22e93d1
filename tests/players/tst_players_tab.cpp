// SPDX-License-Identifier: MIT
#include "base/controls.h"
#include "player_grid.h"

#include <QHeaderView>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace {

const QStringList headers{
    u"  "_s,        u"Num"_s,          u"Guid          "_s,           u"Player                                "_s,
    u"Ping     "_s, u"Score     "_s,   u"Address                 "_s, u"Qport    "_s,
    u" Rate   "_s,  u" Last Message"_s};

} // namespace

class PlayersTabTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theButtonsAreCaptioned_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("toolTip");
        const auto row = [](const char *button, const char *caption, const QString &toolTip = {}) {
            QTest::newRow(button) << QString::fromLatin1(button) << QString::fromLatin1(caption) << toolTip;
        };
        row("cmdplypop", "Populate from server", u"Get current player list from server"_s);
        row("chkremcol", "Remove colour id",
            u"This will remove the ^n from the player names to make them more readable"_s);
        row("chkplyq", "Query Mode",
            u"If populate keeps timing out (usually when fairly full servers) then use Query mode to return basic "
            u"player "
            "details. This is a UDP fragmented packets problem where routers do not allow the fragmented packets "
            "through in case a DOS attack"_s);
        row("chkautoupdate", "Auto Update", u"Auto Update list, interval taken from Preferences..."_s);
        row("cmdplykick", "Kick selected");
        row("cmdplyban", "Ban selected");
        row("cmdtempban", "Temp Ban selected");
        row("cmdplymessage", "Send message");
        row("cmdsavenames", "Save Names");
    }

    void theButtonsAreCaptioned()
    {
        QFETCH(QString, button);
        Program program;
        program.start();
        QTEST(program.text(button), "caption");
        QTEST(program.find<QWidget>(button)->toolTip(), "toolTip");
        QVERIFY(program.find<QWidget>(button)->isEnabled());
    }

    void twoLabelsHaveToolTipsOfTheirOwn()
    {
        Program program;
        program.start();
        QCOMPARE(program.find<CheckBox>(u"chkremcol"_s)->captionToolTip,
                 u"Removes ^n from names on populate. If changed then call Populate again"_s);
        QCOMPARE(program.find<CheckBox>(u"chkautoupdate"_s)->captionToolTip,
                 u"Auto update player list, see Preferences for interval"_s);
    }

    void theSortChoiceStartsWithNothingChosen()
    {
        Program program;
        program.start();
        const auto *choice = program.find<QComboBox>(u"complayersort"_s);
        const QStringList items{u"Num"_s,   u"Guid"_s,    u"Player"_s, u"Ping"_s,
                                u"Score"_s, u"Address"_s, u"Port"_s,   u"Rate"_s};
        QCOMPARE(program.rows(u"complayersort"_s), items);
        QCOMPARE(choice->currentIndex(), -1);
        QVERIFY(!choice->isEditable());
        QCOMPARE(choice->toolTip(), u"Select Column to sort on"_s);
        QCOMPARE(program.find<QLabel>(u"lblplayersort"_s)->text(), u"Sort on"_s);
    }

    void theBoxesStartAsThePreferencesSay_data()
    {
        QTest::addColumn<QByteArray>("preferences");
        QTest::addColumn<bool>("removes");
        QTest::addColumn<bool>("queries");
        QTest::newRow("nothing said") << QByteArray() << true << false;
        QTest::newRow("the one") << QByteArray("[options]\r\nremoveid=0\r\nusequery=0\r\n") << false << false;
        QTest::newRow("the other") << QByteArray("[options]\r\nremoveid=1\r\nusequery=1\r\n") << true << true;
    }

    void theBoxesStartAsThePreferencesSay()
    {
        QFETCH(QByteArray, preferences);
        Program program(preferences);
        program.start();
        QTEST(program.find<QAbstractButton>(u"chkremcol"_s)->isChecked(), "removes");
        QTEST(program.find<QAbstractButton>(u"chkplyq"_s)->isChecked(), "queries");
    }

    void theGridHasItsColumns()
    {
        Program program;
        program.start();
        const auto *grid = program.find<QTableView>(u"msfplayers"_s);
        QCOMPARE(grid->toolTip(), u"Players on the server at last Populate"_s);
        QCOMPARE(grid->model()->rowCount(), 0);
        QStringList shown;
        for (int column = 0; column < grid->model()->columnCount(); ++column)
            shown.append(grid->model()->headerData(column, Qt::Horizontal).toString());
        QCOMPARE(shown, headers);
    }

    // The blanks in the headers are there for the widths.
    void theColumnsAreAsWideAsTheirHeadersAreLong()
    {
        Program program;
        program.start();
        const auto *grid = program.find<QTableView>(u"msfplayers"_s);
        for (int one = 0; one < headers.size(); ++one) {
            QVERIFY(grid->columnWidth(one) >= grid->horizontalHeader()->sectionSizeHint(one));
            for (int other = 0; other < headers.size(); ++other) {
                if (headers.at(one).size() > headers.at(other).size() + 1)
                    QVERIFY2(grid->columnWidth(one) > grid->columnWidth(other), qPrintable(headers.at(one)));
            }
        }
        QCOMPARE(grid->columnWidth(4), grid->columnWidth(7));
    }

    void theColumnsAreAligned()
    {
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s)});
        tab.populate();
        const QAbstractItemModel *model = tab.view()->model();
        const Qt::Alignment byDefault;
        const QList<Qt::Alignment> wanted{byDefault,      byDefault,      Qt::AlignRight, Qt::AlignLeft,
                                          Qt::AlignRight, Qt::AlignRight, Qt::AlignRight, Qt::AlignRight,
                                          Qt::AlignRight, byDefault};
        for (int column = 0; column < 10; ++column) {
            const auto horizontally = [](const QVariant &alignment) {
                return alignment.value<Qt::Alignment>() & Qt::AlignHorizontal_Mask;
            };
            QCOMPARE(horizontally(model->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole)), wanted.at(column));
            QCOMPARE(horizontally(model->index(0, column).data(Qt::TextAlignmentRole)), wanted.at(column));
        }
    }

    void theCellsCannotBeEdited()
    {
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s)});
        tab.populate();
        const QModelIndex name = tab.view()->model()->index(0, 3);
        QTest::mouseDClick(tab.view()->viewport(), Qt::LeftButton, {}, tab.view()->visualRect(name).center());
        QTest::keyClick(tab.view(), Qt::Key_F2);
        QTest::keyClick(tab.view(), Qt::Key_X);
        QVERIFY(tab.view()->viewport()->findChildren<QLineEdit *>().isEmpty());
        QCOMPARE(tab.grid(), QList<QStringList>{cells(somebody(3, u"Ann"_s))});
    }

    void oneRowAtATimeIsSelected()
    {
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s), somebody(5, u"Ben"_s)});
        tab.populate();
        tab.select(0);
        const QModelIndex second = tab.view()->model()->index(1, 1);
        QTest::mouseClick(tab.view()->viewport(), Qt::LeftButton, Qt::ControlModifier,
                          tab.view()->visualRect(second).center());
        QCOMPARE(tab.selected(), QStringList{u"5"_s});
        QCOMPARE(tab.view()->selectionModel()->selectedIndexes().size(), 10);
    }
};

WINDOW_TEST(PlayersTabTest)
#include "tst_players_tab.moc"
