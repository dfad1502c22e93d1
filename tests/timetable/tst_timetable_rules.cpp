// SPDX-License-Identifier: MIT
#include "test_class.h"
#include "timetable/emptiness.h"
#include "timetable/timetable_file.h"
#include "timetable/timetable_times.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const QDateTime sunday(QDate(2026, 3, 1), QTime(12, 0));

TimedList atTime(QTime time, const QList<int> &days)
{
    TimedList list{.name = u"evening"_s, .isActive = true, .when = TimedList::AtTime, .time = time};
    for (const int day : days)
        list.days.at(static_cast<std::size_t>(day - 1)) = true;
    return list;
}

QByteArray answer(const QByteArray &players)
{
    return QByteArray(4, '\xFF') + "statusResponse\n\\mapname\\mp_toujane\\sv_hostname\\x\n" + players;
}

} // namespace

/// When a list is due, how lists are kept, and when a server is empty.
class TimetableRulesTest final : public QObject {
    Q_OBJECT

private slots:
    void aTimeOfDayOnItsDays_data()
    {
        QTest::addColumn<QTime>("time");
        QTest::addColumn<QList<int>>("days");
        QTest::addColumn<QDateTime>("due");
        QTest::newRow("later today") << QTime(20, 30) << QList{7} << QDateTime(QDate(2026, 3, 1), QTime(20, 30));
        QTest::newRow("earlier today, so in a week")
            << QTime(8, 0) << QList{7} << QDateTime(QDate(2026, 3, 8), QTime(8, 0));
        QTest::newRow("now, so in a week") << QTime(12, 0) << QList{7} << QDateTime(QDate(2026, 3, 8), QTime(12, 0));
        QTest::newRow("the next of several days")
            << QTime(8, 0) << QList{3, 5} << QDateTime(QDate(2026, 3, 4), QTime(8, 0));
        QTest::newRow("no day") << QTime(20, 30) << QList<int>() << QDateTime();
    }
    void aTimeOfDayOnItsDays()
    {
        QFETCH(QTime, time);
        QFETCH(QList<int>, days);
        QFETCH(QDateTime, due);
        QCOMPARE(nextDue(atTime(time, days), sunday, sunday).value_or(QDateTime()), due);
    }

    void minutesCountFromTheBeginning()
    {
        const TimedList list{.isActive = true, .when = TimedList::Every, .minutes = 30};
        QCOMPARE(nextDue(list, sunday, sunday), sunday.addSecs(1800));
        QCOMPARE(nextDue(list, sunday.addSecs(1799), sunday), sunday.addSecs(1800));
        QCOMPARE(nextDue(list, sunday.addSecs(1800), sunday), sunday.addSecs(3600));
        // The clock has been set back.
        QCOMPARE(nextDue(list, sunday.addSecs(-7200), sunday), sunday.addSecs(1800));
    }

    void whatIsOffIsNeverDue()
    {
        TimedList list = atTime(QTime(20, 0), {1, 2, 3, 4, 5, 6, 7});
        QVERIFY(nextDue(list, sunday, sunday));
        list.isActive = false;
        QVERIFY(!nextDue(list, sunday, sunday));
        list.isActive = true;
        list.when = TimedList::ByHand;
        QVERIFY(!nextDue(list, sunday, sunday));
        list.when = TimedList::WhenEmpty;
        QVERIFY(!nextDue(list, sunday, sunday));
    }

    void timesAsPeopleTypeThem()
    {
        QCOMPARE(readTime(u"20:30"_s), QTime(20, 30));
        QCOMPARE(readTime(u" 8:05 "_s), QTime(8, 5));
        for (const QString &wrong : {u""_s, u"24:00"_s, u"8"_s, u"8:5"_s, u"20:30:10"_s, u"half past"_s})
            QVERIFY2(!readTime(wrong), qPrintable(wrong));
        QCOMPARE(readMinutes(u"1440"_s), 1440);
        for (const QString &wrong : {u""_s, u"0"_s, u"1441"_s, u"-5"_s, u"5.5"_s, u"ten"_s})
            QVERIFY2(!readMinutes(wrong), qPrintable(wrong));
    }

    void listsAreKeptAsTheyAre()
    {
        TimedList one = atTime(QTime(23, 59), {1, 7});
        one.name = u"Fr\u00E4ulein \"quoted\""_s;
        one.commands = {u"say hello"_s, QString(), u"map_rotate"_s};
        const TimedList two{.name = u"two"_s, .when = TimedList::WhenEmpty, .minutes = 1440};
        QCOMPARE(readTimetable(timetableText({one, two})), (QList{one, two}));
        QCOMPARE(readTimetable(timetableText({})), QList<TimedList>());
    }

    void whatIsNoTimetableIsNotRead()
    {
        for (const QByteArray &text : {QByteArray(), QByteArray("{"), QByteArray("[]"), QByteArray("{\"version\":1}"),
                                       QByteArray("{\"version\":2,\"lists\":[]}"),
                                       QByteArray("{\"version\":1,\"lists\":[7]}"), QByteArray(1000, '[')})
            QVERIFY2(!readTimetable(text), text.constData());
    }

    void aDamagedListIsSwitchedOff_data()
    {
        QTest::addColumn<QByteArray>("fields");
        QTest::addColumn<bool>("isActive");
        const QByteArray rest = R"("name":"x","commands":["a"],"active":true,)";
        QTest::newRow("whole") << rest + R"("when":"at a time","time":"10:00","days":[1],"minutes":5)" << true;
        QTest::newRow("time") << rest + R"("when":"at a time","time":"25:00","days":[1],"minutes":5)" << false;
        QTest::newRow("kind") << rest + R"("when":"never","time":"10:00","days":[1],"minutes":5)" << false;
        QTest::newRow("day") << rest + R"("when":"at a time","time":"10:00","days":[8],"minutes":5)" << false;
        const QByteArray when = R"("when":"at a time","time":"10:00","minutes":5,"active":true,)";
        QTest::newRow("commands") << when + R"("name":"x","commands":"say x","days":[1])" << false;
        QTest::newRow("no commands") << when + R"("name":"x","days":[1])" << false;
        QTest::newRow("one command") << when + R"("name":"x","commands":["a",7],"days":[1])" << false;
        QTest::newRow("half a character") << when + R"("name":"x","commands":["\ud800"],"days":[1])" << false;
        QTest::newRow("name") << when + R"("name":7,"commands":["a"],"days":[1])" << false;
        QTest::newRow("days") << when + R"("name":"x","commands":["a"],"days":1)" << false;
        QTest::newRow("minutes") << rest + R"("when":"at a time","time":"10:00","days":[1],"minutes":1e30)" << false;
    }
    void aDamagedListIsSwitchedOff()
    {
        QFETCH(QByteArray, fields);
        const auto lists = readTimetable(R"({"version":1,"lists":[{)" + fields + "}]}");
        QVERIFY(lists);
        QCOMPARE(lists->size(), 1);
        QTEST(lists->constFirst().isActive, "isActive");
    }

    void playersAreCountedByTheirLines()
    {
        QCOMPARE(playersIn(answer({})), 0);
        QCOMPARE(playersIn(answer("0 50 \"A\"\n10 999 \"B\"\n")), 2);
        QCOMPARE(playersIn("print\nx"), std::nullopt);
        QCOMPARE(playersIn(QByteArray(4, '\xFF') + "statusResponse\n"), 0);
    }

    void emptySinceTheFirstEmptyAnswer()
    {
        Emptiness emptiness;
        const auto minute = [](int number) { return sunday.addSecs(60LL * number); };
        emptiness.take(3, minute(0));
        QVERIFY(!emptiness.since());
        emptiness.take(0, minute(1));
        emptiness.take(0, minute(2));
        QCOMPARE(emptiness.since(), minute(1));
        emptiness.take({}, minute(3)); // one answer is lost
        QCOMPARE(emptiness.since(), minute(1));
        emptiness.take(0, minute(4));
        emptiness.take({}, minute(5));
        emptiness.take({}, minute(6));
        QVERIFY(!emptiness.since());
        emptiness.take(0, minute(7));
        QCOMPARE(emptiness.since(), minute(7));
        emptiness.take(1, minute(8));
        QVERIFY(!emptiness.since());
    }

    void timeInWhichNobodyLookedDoesNotCount()
    {
        Emptiness emptiness;
        emptiness.take(0, sunday);
        emptiness.take(0, sunday.addSecs(150));
        QCOMPARE(emptiness.since(), sunday);
        emptiness.take(0, sunday.addSecs(150 + 151)); // the computer slept
        QCOMPARE(emptiness.since(), sunday.addSecs(150 + 151));
        emptiness.take(0, sunday.addSecs(-60)); // the clock has been set back
        QCOMPARE(emptiness.since(), sunday.addSecs(-60));
        emptiness.take({}, sunday.addSecs(3600)); // and after a night the answer is missing
        QVERIFY(!emptiness.since());
    }
};

GUILESS_TEST(TimetableRulesTest)

#include "tst_timetable_rules.moc"
