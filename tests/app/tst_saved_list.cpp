// SPDX-License-Identifier: MIT
#include "program.h"
#include "saved_entries.h"
#include "window_test.h"

#include <QListWidget>

using namespace Qt::StringLiterals;

namespace {

const QByteArray threeServers = "[servers]\r\nserver1=alpha\r\nserver2=beta\r\nserver3=gamma\r\n"
                                "[ports]\r\nport1=1\r\nport2=2\r\nport3=3\r\n"
                                "[rcon]\r\nrcon1=a\r\nrcon2=b\r\nrcon3=c\r\n";
const QStringList threeRows{u"alpha:1"_s, u"beta:2"_s, u"gamma:3"_s};
const Box incomplete{u"In complete details"_s, u"Need a Server, Port and password to be present to save"_s,
                     BoxIcon::Exclamation, BoxButtons::Ok};

QStringList fields(const Program &program)
{
    return {program.text(u"comserver"_s), program.text(u"comport"_s), program.text(u"txtPWD"_s)};
}

void fill(const Program &program, const QString &server, const QString &port, const QString &password)
{
    program.setText(u"comserver"_s, server);
    program.setText(u"comport"_s, port);
    program.setText(u"txtPWD"_s, password);
}

void save(const Program &program, const QString &server, const QString &port, const QString &password)
{
    fill(program, server, port, password);
    program.trigger(u"Saveserver"_s);
}

void clickRow(const Program &program, int row)
{
    auto *list = program.find<QListWidget>(u"lstservers"_s);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
}

} // namespace

class SavedListTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void aClickedRowFillsTheFields()
    {
        Program program(threeServers);
        program.start();
        clickRow(program, 1);
        QCOMPARE(fields(program), QStringList({u"beta"_s, u"2"_s, u"b"_s}));
        clickRow(program, 2);
        QCOMPARE(fields(program), QStringList({u"gamma"_s, u"3"_s, u"c"_s}));
    }

    void aRowThatIsClickedAgainFillsThemAgain()
    {
        Program program(threeServers);
        program.start();
        clickRow(program, 1);
        fill(program, u"x"_s, u"y"_s, u"z"_s);
        clickRow(program, 1);
        QCOMPARE(fields(program), QStringList({u"beta"_s, u"2"_s, u"b"_s}));
    }

    void aRowChosenByTheKeyboardFillsThem()
    {
        Program program(threeServers);
        program.start();
        clickRow(program, 0);
        QTest::keyClick(program.find<QListWidget>(u"lstservers"_s), Qt::Key_Down);
        QCOMPARE(fields(program), QStringList({u"beta"_s, u"2"_s, u"b"_s}));
    }

    void theFirstColonPartsARow()
    {
        Program program("[servers]\r\nserver1=fe80::1\r\n[ports]\r\nport1=28960\r\n[rcon]\r\nrcon1=a\r\n");
        program.start();
        clickRow(program, 0);
        QCOMPARE(fields(program), QStringList({u"fe80"_s, u":1:28960"_s, u"a"_s}));
    }

    void savingAddsARowAtTheEnd()
    {
        Program program(threeServers);
        program.start();
        save(program, u"10.0.0.1"_s, u"28960"_s, u"word"_s);
        QCOMPARE(program.rows(u"lstservers"_s), threeRows + QStringList{u"10.0.0.1:28960"_s});
        QCOMPARE(program.rows(u"lstrcon"_s), QStringList({u"a"_s, u"b"_s, u"c"_s, u"word"_s}));
        QCOMPARE(program.file(u"molvark.ini"_s), threeServers); // written at the end of the run only
        QCOMPARE(emptiedAtTheEnd(program), 4);
    }

    void everyFieldIsNeededToSave_data()
    {
        QTest::addColumn<QStringList>("texts");
        QTest::newRow("no server") << QStringList{u""_s, u"28960"_s, u"word"_s};
        QTest::newRow("no port") << QStringList{u"10.0.0.1"_s, u""_s, u"word"_s};
        QTest::newRow("no password") << QStringList{u"10.0.0.1"_s, u"28960"_s, u""_s};
    }

    void everyFieldIsNeededToSave()
    {
        QFETCH(QStringList, texts);
        Program program;
        program.start();
        save(program, texts[0], texts[1], texts[2]);
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{incomplete});
        QVERIFY(program.rows(u"lstservers"_s).isEmpty());
        QVERIFY(program.rows(u"lstrcon"_s).isEmpty());
        QCOMPARE(emptiedAtTheEnd(program), 0);
    }

    void aServerThatStandsInARowIsNotSaved_data()
    {
        QTest::addColumn<QString>("server");
        QTest::addColumn<QString>("port");
        QTest::newRow("part of an address") << u"10.0.0.1"_s << u"28960"_s;
        QTest::newRow("another port") << u"10.0.0.12"_s << u"28961"_s;
        QTest::newRow("other letters") << u"HOME"_s << u"1"_s;
        QTest::newRow("only the port") << u"28960"_s << u"1"_s;
    }

    void aServerThatStandsInARowIsNotSaved()
    {
        QFETCH(QString, server);
        QFETCH(QString, port);
        Program program;
        program.start();
        save(program, u"10.0.0.12"_s, u"28960"_s, u"a"_s);
        save(program, u"home.example"_s, u"28960"_s, u"b"_s);
        const QStringList rows = program.rows(u"lstservers"_s);
        QCOMPARE(rows.size(), 2);
        save(program, server, port, u"c"_s);
        QCOMPARE(program.rows(u"lstservers"_s), rows);
        QCOMPARE(program.rows(u"lstrcon"_s), QStringList({u"a"_s, u"b"_s}));
        QCOMPARE(emptiedAtTheEnd(program), 2);
    }

    void aLongerServerIsSavedBesideAShorterOne()
    {
        Program program;
        program.start();
        save(program, u"10.0.0.1"_s, u"28960"_s, u"a"_s);
        save(program, u"10.0.0.12"_s, u"28960"_s, u"b"_s);
        QCOMPARE(program.rows(u"lstservers"_s), QStringList({u"10.0.0.1:28960"_s, u"10.0.0.12:28960"_s}));
    }

    void removingKeepsThePassword()
    {
        Program program(threeServers);
        program.start();
        fill(program, u"beta"_s, u"2"_s, u"whatever"_s);
        program.trigger(u"removeserver"_s);
        QCOMPARE(program.rows(u"lstservers"_s), QStringList({u"alpha:1"_s, u"gamma:3"_s}));
        QCOMPARE(program.rows(u"lstrcon"_s), QStringList({u"a"_s, u"b"_s, u"c"_s}));
        QCOMPARE(fields(program), QStringList({u"beta"_s, u"2"_s, u"whatever"_s}));
        clickRow(program, 1);
        QCOMPARE(fields(program), QStringList({u"gamma"_s, u"3"_s, u"b"_s}));
        QCOMPARE(emptiedAtTheEnd(program), 3);
    }

    void theSelectedRowCanBeRemovedWithoutFillingTheFieldsFromItsNeighbour()
    {
        Program program(threeServers);
        program.start();
        clickRow(program, 1);
        program.trigger(u"removeserver"_s);
        QCOMPARE(program.rows(u"lstservers"_s), QStringList({u"alpha:1"_s, u"gamma:3"_s}));
        QCOMPARE(fields(program), QStringList({u"beta"_s, u"2"_s, u"b"_s}));
    }

    void aServerSavedAfterARemovalPairsWithAnOlderPassword()
    {
        Program program(threeServers);
        program.start();
        fill(program, u"alpha"_s, u"1"_s, u"a"_s);
        program.trigger(u"removeserver"_s);
        save(program, u"delta"_s, u"4"_s, u"d"_s);
        QCOMPARE(program.rows(u"lstservers"_s), QStringList({u"beta:2"_s, u"gamma:3"_s, u"delta:4"_s}));
        clickRow(program, 2);
        QCOMPARE(fields(program), QStringList({u"delta"_s, u"4"_s, u"c"_s}));
    }

    void theFirstRowThatHoldsServerAndPortIsRemoved_data()
    {
        QTest::addColumn<QString>("server");
        QTest::addColumn<QString>("port");
        QTest::addColumn<QStringList>("left");
        const QStringList all{u"my.home:28960"_s, u"home:28960"_s, u"home2:1"_s};
        QTest::newRow("a part of an earlier row") << u"home"_s << u"28960"_s << QStringList{all[1], all[2]};
        QTest::newRow("other letters") << u"MY.Home"_s << u"28960"_s << QStringList{all[1], all[2]};
        QTest::newRow("the beginning of a port") << u"home"_s << u"28"_s << QStringList{all[1], all[2]};
        QTest::newRow("another port") << u"home"_s << u"28961"_s << all;
        QTest::newRow("another server") << u"homes"_s << u"28960"_s << all;
        QTest::newRow("no server") << u""_s << u"28960"_s << all;
        QTest::newRow("no port") << u"home"_s << u""_s << all;
    }

    void theFirstRowThatHoldsServerAndPortIsRemoved()
    {
        QFETCH(QString, server);
        QFETCH(QString, port);
        Program program("[servers]\r\nserver1=my.home\r\nserver2=home\r\nserver3=home2\r\n"
                        "[ports]\r\nport1=28960\r\nport2=28960\r\nport3=1\r\n[rcon]\r\nrcon1=a\r\n");
        program.start();
        fill(program, server, port, u""_s);
        program.trigger(u"removeserver"_s);
        QTEST(program.rows(u"lstservers"_s), "left");
    }
};

WINDOW_TEST(SavedListTest)
#include "tst_saved_list.moc"
