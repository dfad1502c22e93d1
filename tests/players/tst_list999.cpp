// SPDX-License-Identifier: MIT
#include "fault_of.h"
#include "players/list999.h"
#include "test_class.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

/// One call, and the whole list after it: each record as "hits name #slot seen".
struct Step {
    enum class Call { Unsee, Check, Sweep };

    Call call = Call::Unsee;
    QString name;
    QString ping;
    QString num;
    QStringList after;
};

Step unsee(const QStringList &after)
{
    return {Step::Call::Unsee, {}, {}, {}, after};
}

Step check(const QString &name, const QString &ping, const QString &num, const QStringList &after)
{
    return {Step::Call::Check, name, ping, num, after};
}

Step sweep(const QStringList &after)
{
    return {Step::Call::Sweep, {}, {}, {}, after};
}

void take(const Step &step, List999 &list)
{
    switch (step.call) {
    case Step::Call::Unsee:
        list.unsee();
        break;
    case Step::Call::Check:
        list.check999(step.name, step.ping, step.num);
        break;
    case Step::Call::Sweep:
        list.sweep();
        break;
    }
}

QStringList described(const List999 &list)
{
    QStringList records;
    for (const Rec999 &record : list.records())
        records.append(QString::number(record.hits) + u' ' + record.pname + u" #"_s + record.pnum +
                       (record.seen ? u" seen"_s : u" missed"_s));
    return records;
}

const QString none = u"0  # missed"_s; ///< the nameless record of an empty list

} // namespace

Q_DECLARE_METATYPE(QList<Step>)

class List999Test final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aNewListHasOneNamelessRecord() { QCOMPARE(described(List999()), QStringList{none}); }

    void everyStepLeavesTheListOfAHandComputation_data();
    void everyStepLeavesTheListOfAHandComputation();
    void onlyTheVeryPingCounts_data();
    void onlyTheVeryPingCounts();
    void theHitsOverflowBeyond16Bits();
};

void List999Test::everyStepLeavesTheListOfAHandComputation_data()
{
    QTest::addColumn<QList<Step>>("steps");

    QTest::newRow("back to normal after two populates") << QList<Step>{
        unsee({none}),
        check(u"Bob"_s, u"999"_s, u"5"_s, {none, u"1 Bob #5 seen"_s}),
        check(u"Ann"_s, u"48"_s, u"6"_s, {none, u"1 Bob #5 seen"_s}),
        unsee({none, u"1 Bob #5 missed"_s}),
        check(u"Bob"_s, u"999"_s, u"5"_s, {none, u"2 Bob #5 seen"_s}),
        unsee({none, u"2 Bob #5 missed"_s}),
        check(u"Bob"_s, u"48"_s, u"5"_s, {none}),
        check(u"Bob"_s, u"48"_s, u"5"_s, {none}),
    };
    QTest::newRow("slot numbers do not move up with their records") << QList<Step>{
        check(u"A"_s, u"999"_s, u"1"_s, {none, u"1 A #1 seen"_s}),
        check(u"B"_s, u"999"_s, u"2"_s, {none, u"1 A #1 seen"_s, u"1 B #2 seen"_s}),
        check(u"C"_s, u"999"_s, u"3"_s, {none, u"1 A #1 seen"_s, u"1 B #2 seen"_s, u"1 C #3 seen"_s}),
        unsee({none, u"1 A #1 missed"_s, u"1 B #2 missed"_s, u"1 C #3 missed"_s}),
        check(u"B"_s, u"999"_s, u"2"_s, {none, u"1 A #1 missed"_s, u"2 B #2 seen"_s, u"1 C #3 missed"_s}),
        check(u"A"_s, u"60"_s, u"1"_s, {none, u"2 B #1 seen"_s, u"1 C #2 seen"_s}),
        check(u"C"_s, u"999"_s, u"3"_s, {none, u"2 B #1 seen"_s, u"2 C #2 seen"_s}),
        check(u"C"_s, u"60"_s, u"3"_s, {none, u"2 B #1 seen"_s}),
    };
    QTest::newRow("the nameless record in front is swept") << QList<Step>{
        check(u"A"_s, u"999"_s, u"1"_s, {none, u"1 A #1 seen"_s}),
        check(u"B"_s, u"999"_s, u"2"_s, {none, u"1 A #1 seen"_s, u"1 B #2 seen"_s}),
        sweep({u"1 A #1 seen"_s, u"1 B #2 seen"_s}),
        sweep({u"1 A #1 seen"_s, u"1 B #2 seen"_s}),
        unsee({u"1 A #1 missed"_s, u"1 B #2 missed"_s}),
        check(u"A"_s, u"50"_s, u"1"_s, {u"1 B #1 seen"_s}),
        check(u"B"_s, u"50"_s, u"2"_s, {none}),
    };
    QTest::newRow("the last record is never swept") << QList<Step>{
        check(u"A"_s, u"999"_s, u"1"_s, {none, u"1 A #1 seen"_s}),
        unsee({none, u"1 A #1 missed"_s}),
        sweep({u"1 A #1 missed"_s}),
        unsee({u"1 A #1 missed"_s}),
        sweep({u"1 A #1 missed"_s}),
        check(u"A"_s, u"999"_s, u"7"_s, {u"2 A #1 seen"_s}),
        check(u"B"_s, u"999"_s, u"8"_s, {u"2 A #1 seen"_s, u"1 B #8 seen"_s}),
        unsee({u"2 A #1 missed"_s, u"1 B #8 missed"_s}),
        check(u"A"_s, u"999"_s, u"7"_s, {u"3 A #1 seen"_s, u"1 B #8 missed"_s}),
        sweep({u"3 A #1 seen"_s, u"1 B #8 missed"_s}),
    };
    QTest::newRow("a record moved into the place of another waits for the next sweep") << QList<Step>{
        check(u"A"_s, u"999"_s, u"1"_s, {none, u"1 A #1 seen"_s}),
        check(u"B"_s, u"999"_s, u"2"_s, {none, u"1 A #1 seen"_s, u"1 B #2 seen"_s}),
        check(u"C"_s, u"999"_s, u"3"_s, {none, u"1 A #1 seen"_s, u"1 B #2 seen"_s, u"1 C #3 seen"_s}),
        check(u"D"_s, u"999"_s, u"4"_s, {none, u"1 A #1 seen"_s, u"1 B #2 seen"_s, u"1 C #3 seen"_s, u"1 D #4 seen"_s}),
        unsee({none, u"1 A #1 missed"_s, u"1 B #2 missed"_s, u"1 C #3 missed"_s, u"1 D #4 missed"_s}),
        check(u"D"_s, u"999"_s, u"4"_s,
              {none, u"1 A #1 missed"_s, u"1 B #2 missed"_s, u"1 C #3 missed"_s, u"2 D #4 seen"_s}),
        sweep({u"1 A #1 missed"_s, u"1 C #3 missed"_s, u"2 D #4 seen"_s}),
        sweep({u"1 C #3 missed"_s, u"2 D #4 seen"_s}),
        sweep({u"2 D #4 seen"_s}),
        sweep({u"2 D #4 seen"_s}),
    };
    QTest::newRow("who left is swept from between two who are there") << QList<Step>{
        check(u"A"_s, u"999"_s, u"1"_s, {none, u"1 A #1 seen"_s}),
        sweep({u"1 A #1 seen"_s}),
        check(u"B"_s, u"999"_s, u"2"_s, {u"1 A #1 seen"_s, u"1 B #2 seen"_s}),
        check(u"C"_s, u"999"_s, u"3"_s, {u"1 A #1 seen"_s, u"1 B #2 seen"_s, u"1 C #3 seen"_s}),
        unsee({u"1 A #1 missed"_s, u"1 B #2 missed"_s, u"1 C #3 missed"_s}),
        check(u"A"_s, u"999"_s, u"1"_s, {u"2 A #1 seen"_s, u"1 B #2 missed"_s, u"1 C #3 missed"_s}),
        check(u"C"_s, u"999"_s, u"3"_s, {u"2 A #1 seen"_s, u"1 B #2 missed"_s, u"2 C #3 seen"_s}),
        sweep({u"2 A #1 seen"_s, u"2 C #3 seen"_s}),
    };
    QTest::newRow("a nameless player meets the nameless record") << QList<Step>{
        check(QString(), u"999"_s, u"9"_s, {u"1  # seen"_s}),
        check(u"   "_s, u"999"_s, u"9"_s, {u"2  # seen"_s}),
        check(u"A"_s, u"999"_s, u"1"_s, {u"2  # seen"_s, u"1 A #1 seen"_s}),
        sweep({u"2  # seen"_s, u"1 A #1 seen"_s}),
        check(QString(), u"50"_s, u"9"_s, {u"1 A # seen"_s}),
        check(u"A"_s, u"999"_s, u"1"_s, {u"2 A # seen"_s}),
        check(QString(), u"999"_s, u"9"_s, {u"2 A # seen"_s, u"1  #9 seen"_s}),
    };
    QTest::newRow("a nameless player back to normal") << QList<Step>{
        check(QString(), u"50"_s, u"9"_s, {none}),
        check(QString(), u"999"_s, u"9"_s, {u"1  # seen"_s}),
        check(QString(), u"50"_s, u"9"_s, {none}),
        check(u"A"_s, u"999"_s, u"1"_s, {none, u"1 A #1 seen"_s}),
        check(QString(), u"50"_s, u"9"_s, {u"1 A # seen"_s}),
    };
    QTest::newRow("two players of one name share a record") << QList<Step>{
        check(u"Bob"_s, u"999"_s, u"3"_s, {none, u"1 Bob #3 seen"_s}),
        check(u"Bob"_s, u"999"_s, u"7"_s, {none, u"2 Bob #3 seen"_s}),
        unsee({none, u"2 Bob #3 missed"_s}),
        check(u"Bob"_s, u"999"_s, u"3"_s, {none, u"3 Bob #3 seen"_s}),
        check(u"Bob"_s, u"50"_s, u"7"_s, {none}),
        check(u"Bob"_s, u"999"_s, u"7"_s, {none, u"1 Bob #7 seen"_s}),
    };
    QTest::newRow("names are trimmed of blanks and told apart by case") << QList<Step>{
        check(u"  Bob "_s, u"999"_s, u"3"_s, {none, u"1 Bob #3 seen"_s}),
        check(u"Bob"_s, u"999"_s, u"3"_s, {none, u"2 Bob #3 seen"_s}),
        check(u"bob"_s, u"999"_s, u"4"_s, {none, u"2 Bob #3 seen"_s, u"1 bob #4 seen"_s}),
        check(u"\tBob"_s, u"999"_s, u"5"_s, {none, u"2 Bob #3 seen"_s, u"1 bob #4 seen"_s, u"1 \tBob #5 seen"_s}),
        check(u"BOB"_s, u"50"_s, u"6"_s, {none, u"2 Bob #3 seen"_s, u"1 bob #4 seen"_s, u"1 \tBob #5 seen"_s}),
        check(u" bob "_s, u"50"_s, u"4"_s, {none, u"2 Bob #3 seen"_s, u"1 \tBob #4 seen"_s}),
    };
}

void List999Test::everyStepLeavesTheListOfAHandComputation()
{
    QFETCH(QList<Step>, steps);
    List999 list;
    for (const Step &step : steps) {
        take(step, list);
        QCOMPARE(described(list), step.after);
    }
}

void List999Test::onlyTheVeryPingCounts_data()
{
    QTest::addColumn<QString>("ping");
    for (const QString &ping : {u"998"_s, u"1000"_s, u"0999"_s, u"9990"_s, u"999.0"_s, u"CNCT"_s, u"ZMBI"_s, QString()})
        QTest::newRow(qPrintable(u"'%1'"_s.arg(ping))) << ping;
}

void List999Test::onlyTheVeryPingCounts()
{
    QFETCH(QString, ping);
    List999 list;
    list.check999(u"Bob"_s, ping, u"5"_s);
    QCOMPARE(described(list), QStringList{none});
    list.check999(u"Bob"_s, u"999"_s, u"5"_s);
    QCOMPARE(described(list), QStringList({none, u"1 Bob #5 seen"_s}));
    list.check999(u"Bob"_s, ping, u"5"_s);
    QCOMPARE(described(list), QStringList{none});
}

void List999Test::theHitsOverflowBeyond16Bits()
{
    List999 list;
    for (int populate = 0; populate < 32'767; ++populate)
        list.check999(u"Bob"_s, u"999"_s, u"5"_s);
    list.unsee();
    const QStringList full{none, u"32767 Bob #5 missed"_s};
    QCOMPARE(described(list), full);
    for (int again = 0; again < 2; ++again) {
        QCOMPARE(faultOf([&list] { list.check999(u"Bob"_s, u"999"_s, u"5"_s); }), 6);
        QCOMPARE(list.section(), u"999"_s);
        QCOMPARE(described(list), full);
    }
    list.check999(u"Ann"_s, u"999"_s, u"6"_s);
    QCOMPARE(described(list), full + QStringList{u"1 Ann #6 seen"_s});
}

GUILESS_TEST(List999Test)
#include "tst_list999.moc"
