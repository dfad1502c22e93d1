// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "status_rows.h"
#include "test_class.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

const QString head = u"map: mp_villa\n"
                     "num score ping guid name lastmsg address qport rate\n"
                     "--- ----- ---- ------ --------------- ------- --------------------- ----- -----\n"_s;
const QString ordinary = u" 1 0 55 63281996 BandAid^7 50 11.11.11.11:524 8045 25000\n"_s;
const QString ordinaryRow = u"1|0|55|63281996|BandAid^7|11.11.11.11:524|8045|25000"_s;

} // namespace

class StatusTableTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aRowIsCutIntoItsFields_data();
    void aRowIsCutIntoItsFields();
    void everyByteOfANameIsKept();
    void aTableWithoutRowsIsNone_data();
    void aTableWithoutRowsIsNone();
    void anEmptyLineEndsTheTable();
    void anEmptyLineBeforeTheFirstRowEndsNothing();
    void aLineOfOneWordIsNoRow();
    void aRowThatLacksFieldsIsNeverPassed();
    void aRowBeyondPosition32767Overflows();
};

void StatusTableTest::aRowIsCutIntoItsFields_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("row");
    // Each name stands between guid 63281996 and these fields.
    const QString rest = u" 50 11.11.11.11:524 8045 25000"_s;
    const auto named = [&rest](const char *title, const QString &name, const QString &read) {
        QTest::newRow(title) << u" 1 0 55 63281996 "_s + name + rest
                             << u"1|0|55|63281996|"_s + read + u"|11.11.11.11:524|8045|25000"_s;
    };
    const auto row = [](const char *title, const QString &line, const QString &read) {
        QTest::newRow(title) << line << read;
    };
    row("as the server sends it",
        u"  1     0   55 63281996 BandAid^7              50 11.11.11.11:524        8045 25000"_s, ordinaryRow);
    row("squeezed", ordinary.chopped(1), ordinaryRow);
    row("a negative score", u" 1 -3 55 9 Bob 50 1.2.3.4:5 6 7"_s, u"1|-3|55|9|Bob|1.2.3.4:5|6|7"_s);
    row("somebody who comes", u" 1 0 CNCT 9 Bob 50 1.2.3.4:5 6 7"_s, u"1|0|CNCT|9|Bob|1.2.3.4:5|6|7"_s);
    row("somebody who goes", u" 1 0 ZMBI 9 Bob 50 1.2.3.4:5 6 7"_s, u"1|0|ZMBI|9|Bob|1.2.3.4:5|6|7"_s);
    row("a word for an address", u" 1 0 55 0 Bob 50 loopback -8045 7"_s, u"1|0|55|0|Bob|loopback|-8045|7"_s);
    row("a blank at the end of the line", u" 1 0 55 9 Bob 50 1.2.3.4:5 6 7 "_s, u"1|0|55|9|Bob 50|6|7|"_s);
    row("a row in the first column", u"1 0 55 9 Big Bob 50 1.2.3.4:5 6 7"_s, u"1|0|55|9|Big Bob|1.2.3.4:5|6|7"_s);
    row("a one-word name in the first column", u"1 0 55 9 Bob 50 1.2.3.4:5 6 7"_s, u"1|0|55|9|Bob|1.2.3.4:5|6|7"_s);
    row("an address that touches the port", u" 1 0 55 9 Big Bob^7 50 211.111.111.111:-1234554321 7"_s,
        u"1|0|55|9|Big|50|211.111.111.111:-1234554321|7"_s);
    row("a touching address and a one-word name", u" 1 0 55 9 Bob^7 50 211.111.111.111:-1234554321 7"_s,
        u"1|0|55|9||50|211.111.111.111:-1234554321|7"_s);
    named("two words", u"Big Bob"_s, u"Big Bob"_s);
    named("runs of blanks", u"  Joe   Two  Blanks  "_s, u"Joe Two Blanks"_s);
    named("tabs are no blanks", u"\tBob\t\t\v"_s, u"\tBob\t\t\v"_s);
    named("colour codes", u"^1Big ^7Bob^7"_s, u"^1Big ^7Bob^7"_s);
    named("a number", u"100"_s, u"100"_s);
    named("many numbers", u"12 34 56 78 90"_s, u"12 34 56 78 90"_s);
    named("a whole row", u"3 10 48 74210117 Copycat^7 50 10.0.0.7:28960 1234 25000"_s,
          u"3 10 48 74210117 Copycat^7 50 10.0.0.7:28960 1234 25000"_s);
    named("the end of a row", u"50 1.2.3.4:5 6 7 8"_s, u"50 1.2.3.4:5 6 7 8"_s);
    named("dashes", u"--- ----- ---- ------"_s, u"--- ----- ---- ------"_s);
    named("a carriage return", u"a\rb"_s, u"a\rb"_s);
    row("an empty name", u" 1 0 55 63281996"_s + rest, u"1|0|55|63281996||11.11.11.11:524|8045|25000"_s);
    named("a blank for a name", u" "_s, QString());
}

void StatusTableTest::aRowIsCutIntoItsFields()
{
    QFETCH(QString, line);
    QFETCH(QString, row);
    QCOMPARE(rowsIn(head + line + u"\n\n"_s), QStringList{row});
    QCOMPARE(rowsIn(head + ordinary + line + u'\n' + ordinary + u'\n'), QStringList({ordinaryRow, row, ordinaryRow}));
}

void StatusTableTest::everyByteOfANameIsKept()
{
    for (int code = 0; code < 0x100; ++code) {
        const QString character = fromAnsi(QByteArray(1, static_cast<char>(code)));
        if (character == u'\n')
            continue;
        for (const QString &name : {character, u"a"_s + character + u'z'}) {
            const QString line = u" 1 0 55 9 "_s + name + u" 50 1.2.3.4:5 6 7\n"_s;
            const QString shown = name == u' ' ? QString() : name;
            QCOMPARE(rowsIn(head + line + ordinary + u'\n'),
                     QStringList({u"1|0|55|9|"_s + shown + u"|1.2.3.4:5|6|7"_s, ordinaryRow}));
        }
    }
}

void StatusTableTest::aTableWithoutRowsIsNone_data()
{
    QTest::addColumn<QString>("reply");
    QTest::addColumn<bool>("hasRows");
    QTest::newRow("nothing") << QString() << false;
    QTest::newRow("a line without its end") << u"Bad rconpassword."_s << false;
    QTest::newRow("one line") << u"Bad rconpassword.\n"_s << false;
    QTest::newRow("two lines and no end of the third") << head.chopped(1) << false;
    QTest::newRow("the head alone") << head << false;
    QTest::newRow("the head and an empty line") << head + u'\n' << false;
    QTest::newRow("three characters behind the head") << head + u" 1 "_s << false;
    QTest::newRow("four characters behind the head") << head + u" 1 0"_s << true;
}

void StatusTableTest::aTableWithoutRowsIsNone()
{
    QFETCH(QString, reply);
    StatusTable table;
    QTEST(table.skipHeading(reply), "hasRows");
}

void StatusTableTest::anEmptyLineEndsTheTable()
{
    const QString reply = head + ordinary + u'\n' + ordinary;
    StatusTable table;
    QVERIFY(table.skipHeading(reply));
    QVERIFY(!table.ended(reply));
    QCOMPARE(described(table.next(reply)), ordinaryRow);
    QVERIFY(table.ended(reply));
}

void StatusTableTest::anEmptyLineBeforeTheFirstRowEndsNothing()
{
    QCOMPARE(rowsIn(head + u'\n' + ordinary + u'\n'), QStringList{ordinaryRow});
}

void StatusTableTest::aLineOfOneWordIsNoRow()
{
    const QString inFirstColumn = u"100 0 55 9 Bob 50 1.2.3.4:5 6 7\n"_s;
    const QStringList rows{ordinaryRow, u"100|0|55|9|Bob|1.2.3.4:5|6|7"_s, ordinaryRow};
    QCOMPARE(rowsIn(head + u"word\n"_s + ordinary + u"word\n"_s + inFirstColumn + u"  word\n"_s + ordinary + u'\n'),
             rows);
}

void StatusTableTest::aRowThatLacksFieldsIsNeverPassed()
{
    // With a field too few those from the two ends overlap.
    const QString reply = head + ordinary + u" 2 0 55 9 6 7 8\n"_s + ordinary + u'\n';
    StatusTable table;
    QStringList rows;
    QVERIFY(table.skipHeading(reply));
    for (int again = 0; again < 3; ++again) {
        QCOMPARE(readOn(table, reply, rows), 5);
        QCOMPARE(rows, QStringList{ordinaryRow});
    }
}

void StatusTableTest::aRowBeyondPosition32767Overflows()
{
    for (const qsizetype end : {32'766, 32'767, 32'768, 32'800, 40'000}) { // the position of the row's line feed
        const QString map(end - 3 - ordinary.size(), u'm');
        const QString reply = map + u"\n\n\n"_s + ordinary + u'\n';
        QCOMPARE(reply.size() - 1, end);
        StatusTable table;
        QStringList rows;
        QVERIFY(table.skipHeading(reply));
        for (int again = 0; again < 2; ++again) {
            QCOMPARE(readOn(table, reply, rows), end > 32'767 ? 6 : 0);
            QCOMPARE(rows, end > 32'767 ? QStringList() : QStringList{ordinaryRow});
        }
    }
}

GUILESS_TEST(StatusTableTest)
#include "tst_status_table.moc"
