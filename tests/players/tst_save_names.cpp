// SPDX-License-Identifier: MIT
#include "folder_in_the_way.h"
#include "player_grid.h"

#include <QDir>
#include <QLocale>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace {

const Box question{u"Save list"_s, u"Append current list of players and GUIDs to playerlist.csv"_s, BoxIcon::Question,
                   BoxButtons::OkCancel};
const Box saved = information(u"Players saved"_s, u"Players appended"_s);
const QString file = u"playerlist.csv"_s;
const QByteArray header = "\"Date/Time\",\"Server IP:Port\",\"Player IP\",\"Player GUID\",\"Player Name\"\r\n";

/// The tab with this list, at five minutes past seven on 5 March 2006.
struct Listed {
    explicit Listed(const QList<Player> &players)
    {
        tab.put(players);
        if (!players.isEmpty())
            tab.populate();
        tab.program.setText(u"comserver"_s, u"cod.example.org"_s);
        tab.program.setText(u"comport"_s, u"28961"_s);
        tab.program.clock.set(QDateTime(QDate(2006, 3, 5), QTime(7, 5)));
    }

    void save() const { tab.program.click(u"cmdsavenames"_s); }

    PlayersTab tab;
};

/// What every row begins with.
const QByteArray start = "\"05-Mar-2006 07:05\",\"cod.example.org:28961\",";

} // namespace

class SaveNamesTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theFirstSaveWritesTheHeaderAndASecondOnlyRows()
    {
        Listed on({somebody(3, u"Ann"_s), somebody(5, u"Ben"_s)});
        const QByteArray rows =
            start + "\"10.0.0.3:28960\",\"100003\",\"Ann\"\r\n" + start + "\"10.0.0.5:28960\",\"100005\",\"Ben\"\r\n";
        on.save();
        QCOMPARE(on.tab.program.prompts.takeBoxes(), (QList<Box>{question, saved}));
        QCOMPARE(on.tab.program.file(file), header + rows);
        on.save();
        QCOMPARE(on.tab.program.prompts.takeBoxes(), (QList<Box>{question, saved}));
        QCOMPARE(on.tab.program.file(file), header + rows + rows);
        QCOMPARE(on.tab.server.commands(), QList<QByteArray>{"status"});
    }

    void namesAreWrittenAsTheyAreShown_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("removes");
        QTest::addColumn<QByteArray>("item");
        QTest::newRow("a comma") << u"Smith, John"_s << true << QByteArray("\"Smith, John\"");
        QTest::newRow("a quote") << u"Zoe \"Doc\" M"_s << true << QByteArray("\"Zoe \"Doc\" M\"");
        QTest::newRow("a quote alone") << u"\""_s << true << QByteArray("\"\"\"");
        QTest::newRow("upper characters")
            << u"J\u00FCrgen \u20AC\u201E\u0178"_s << true << QByteArray("\"J\xFCrgen \x80\x84\x9F\"");
        QTest::newRow("cleaned") << u"^1Big ^7Bob"_s << true << QByteArray("\"Big Bob\"");
        QTest::newRow("with colours") << u"^1Big ^7Bob"_s << false << QByteArray("\"^1Big ^7Bob^7\"");
        QTest::newRow("no name") << u""_s << true << QByteArray("\"\"");
        QTest::newRow("a formula") << u"=1+1"_s << true << QByteArray("\"=1+1\"");
    }

    void namesAreWrittenAsTheyAreShown()
    {
        QFETCH(QString, name);
        QFETCH(bool, removes);
        QFETCH(QByteArray, item);
        Listed on({});
        on.tab.put({somebody(3, name)});
        on.tab.tickBox(u"chkremcol"_s, removes);
        on.tab.populate();
        on.tab.program.clock.set(QDateTime(QDate(2006, 3, 5), QTime(7, 5)));
        on.tab.tickBox(u"chkremcol"_s, !removes); // without effect on what is listed
        on.save();
        on.tab.program.prompts.takeBoxes();
        QCOMPARE(on.tab.program.file(file), header + start + "\"10.0.0.3:28960\",\"100003\"," + item + "\r\n");
    }

    void theTimeIsWrittenInEnglish_data()
    {
        QTest::addColumn<QDateTime>("time");
        QTest::addColumn<QByteArray>("item");
        const auto row = [](QDate date, QTime time, const char *item) {
            QTest::newRow(item) << QDateTime(date, time) << QByteArray(item);
        };
        row({2006, 3, 5}, {0, 0}, "05-Mar-2006 00:00");
        row({2011, 5, 9}, {12, 30}, "09-May-2011 12:30");
        row({1999, 10, 31}, {23, 58}, "31-Oct-1999 23:58");
        row({2040, 12, 1}, {9, 7}, "01-Dec-2040 09:07");
    }

    void theTimeIsWrittenInEnglish()
    {
        QFETCH(QDateTime, time);
        QFETCH(QByteArray, item);
        Listed on({somebody(3, u"Ann"_s)});
        const auto back = qScopeGuard([before = QLocale()] { QLocale::setDefault(before); });
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        on.tab.program.clock.set(time);
        on.save();
        on.tab.program.prompts.takeBoxes();
        QCOMPARE(on.tab.program.file(file).sliced(header.size()).split(',').constFirst(), '"' + item + '"');
    }

    void inQueryModeRowsHaveThreeItems()
    {
        Listed on({somebody(3, u"Ann, Lee"_s), somebody(5, u"Ben"_s)});
        on.tab.tickBox(u"chkplyq"_s);
        on.tab.populate();
        on.tab.program.clock.set(QDateTime(QDate(2006, 3, 5), QTime(7, 5)));
        on.save();
        on.tab.program.prompts.takeBoxes();
        QCOMPARE(on.tab.program.file(file), header + start + "\"Ann, Lee\"\r\n" + start + "\"Ben\"\r\n");
    }

    void theBoxAtTheTimeOfTheSaveDecides()
    {
        Listed on({somebody(3, u"Ann"_s)});
        on.tab.tickBox(u"chkplyq"_s);
        on.save();
        on.tab.tickBox(u"chkplyq"_s, false);
        on.save();
        on.tab.program.prompts.takeBoxes();
        QCOMPARE(on.tab.program.file(file),
                 header + start + "\"Ann\"\r\n" + start + "\"10.0.0.3:28960\",\"100003\",\"Ann\"\r\n");
    }

    void rowsAreWrittenInTheOrderShown()
    {
        Listed on({somebody(3, u"Ann"_s, 50, 1), somebody(5, u"Ben"_s, 50, 2)});
        on.tab.sortOn(4);
        on.save();
        on.tab.program.prompts.takeBoxes();
        QCOMPARE(on.tab.program.file(file), header + start + "\"10.0.0.5:28960\",\"100005\",\"Ben\"\r\n" + start +
                                                "\"10.0.0.3:28960\",\"100003\",\"Ann\"\r\n");
    }

    void cancelWritesNothing()
    {
        Listed on({somebody(3, u"Ann"_s)});
        on.tab.program.prompts.answers = {Answer::Cancel};
        on.save();
        QCOMPARE(on.tab.program.prompts.takeBoxes(), QList<Box>{question});
        QVERIFY(!QFile::exists(file));
    }

    void anEmptyListWritesTheHeaderAlone()
    {
        Listed on({});
        on.save();
        QCOMPARE(on.tab.program.prompts.takeBoxes(), (QList<Box>{question, saved}));
        QCOMPARE(on.tab.program.file(file), header);
        on.save();
        QCOMPARE(on.tab.program.prompts.takeBoxes(), (QList<Box>{question, saved}));
        QCOMPARE(on.tab.program.file(file), header);
    }

    void aFileThatIsThereGetsNoHeader_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("of another kind") << QByteArray("notes\nwithout an end");
    }

    void aFileThatIsThereGetsNoHeader()
    {
        QFETCH(QByteArray, before);
        Listed on({somebody(3, u"Ann"_s)});
        on.tab.program.write(file, before);
        on.save();
        on.tab.program.prompts.takeBoxes();
        QCOMPARE(on.tab.program.file(file), before + start + "\"10.0.0.3:28960\",\"100003\",\"Ann\"\r\n");
    }

    void aListIsSavedWithoutAConnection()
    {
        Listed on({somebody(3, u"Ann"_s)});
        on.tab.program.click(u"cmdconnect"_s);
        on.save();
        QCOMPARE(on.tab.program.prompts.takeBoxes(), (QList<Box>{question, saved}));
        QCOMPARE(on.tab.program.file(file), header + start + "\"10.0.0.3:28960\",\"100003\",\"Ann\"\r\n");
    }

    void aFileThatCannotBeWrittenIsToldAndTheProgramGoesOn()
    {
        Listed on({somebody(3, u"Ann"_s)});
        QVERIFY(QDir().mkdir(file));
        on.save();
        const Box failed =
            exclamation(u"Molvark"_s, u"Error code %1 Descr: %2"_s.arg(folderInTheWay).arg(folderInTheWayWords));
        QCOMPARE(on.tab.program.prompts.takeBoxes(), (QList<Box>{question, failed}));

        QVERIFY(QDir().rmdir(file));
        on.save();
        QCOMPARE(on.tab.program.prompts.takeBoxes(), (QList<Box>{question, saved}));
        QCOMPARE(on.tab.program.file(file), header + start + "\"10.0.0.3:28960\",\"100003\",\"Ann\"\r\n");
    }
};

WINDOW_TEST(SaveNamesTest)
#include "tst_save_names.moc"
