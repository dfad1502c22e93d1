// SPDX-License-Identifier: MIT
#include "messages/message_cycle.h"
#include "test_class.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

/// The minutes out of `minutes` in which something is due, counted from 1.
QList<int> due(MessageCycle &cycle, double interval, int minutes)
{
    QList<int> found;
    for (int minute = 1; minute <= minutes; ++minute) {
        if (cycle.minutePassed(interval))
            found.append(minute);
    }
    return found;
}

/// The next messages of a walk through `positions`.
QStringList walk(MessageCycle &cycle, const QStringList &positions, int steps)
{
    QStringList said;
    for (int step = 0; step < steps; ++step) {
        said.append(cycle.next(positions).value_or(u"(none)"_s));
        cycle.advance();
    }
    return said;
}

} // namespace

class MessageCycleTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void theFirstMinuteSendsAndThenEveryInterval_data()
    {
        QTest::addColumn<double>("interval");
        QTest::addColumn<QList<int>>("minutes");
        QTest::newRow("1") << 1.0 << QList<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
        QTest::newRow("2") << 2.0 << QList<int>{1, 3, 5, 7, 9, 11};
        QTest::newRow("3") << 3.0 << QList<int>{1, 4, 7, 10};
        QTest::newRow("10") << 10.0 << QList<int>{1, 11};
        QTest::newRow("one that is never reached") << 2.5 << QList<int>{1};
        QTest::newRow("none") << 0.0 << QList<int>{1};
    }

    void theFirstMinuteSendsAndThenEveryInterval()
    {
        QFETCH(double, interval);
        MessageCycle cycle;
        QTEST(due(cycle, interval, 11), "minutes");
    }

    void sendNextSendsInTheNextMinute()
    {
        MessageCycle cycle;
        QCOMPARE(due(cycle, 5, 3), QList<int>{1});
        cycle.sendNext();
        QCOMPARE(due(cycle, 5, 6), (QList<int>{1, 6}));
    }

    void anIntervalIsTheNumberThatItBeginsWith_data()
    {
        QTest::addColumn<QString>("interval");
        QTest::addColumn<double>("minutes");
        for (const auto &[interval, minutes] :
             std::initializer_list<std::pair<QString, double>>{{u"3"_s, 3},
                                                               {u"2.5"_s, 2.5},
                                                               {u".5"_s, 0.5},
                                                               {u" 1e1 "_s, 10},
                                                               {u"-3"_s, -3},
                                                               {u"99999"_s, 99'999},
                                                               {u"3 min"_s, 3},
                                                               {u" 3min"_s, 3},
                                                               {u"10, or 11"_s, 10},
                                                               {u"2.5 min"_s, 2},
                                                               {u"32767 min"_s, 32'767},
                                                               {u"32768 min"_s, 0},
                                                               {u"min 3"_s, 0},
                                                               {u"often"_s, 0},
                                                               {u"."_s, 0},
                                                               {QString(), 0}})
            QTest::newRow(qPrintable(u'[' + interval + u']')) << interval << minutes;
        QTest::newRow("a row of digits") << QString(400, u'9') + u'x' << 0.0;
    }

    void anIntervalIsTheNumberThatItBeginsWith()
    {
        QFETCH(QString, interval);
        QTEST(minutesOf(interval), "minutes");
    }

    void anIntervalThatWasPassedIsNotReachedAnyMore()
    {
        MessageCycle cycle;
        QCOMPARE(due(cycle, 9, 6), QList<int>{1});
        QCOMPARE(due(cycle, 3, 20), QList<int>());
    }

    void theMinutesNeverRunOver()
    {
        MessageCycle cycle;
        QCOMPARE(due(cycle, 0, 70'000), QList<int>{1});
    }

    void emptyPositionsArePassedOver()
    {
        MessageCycle cycle;
        QCOMPARE(walk(cycle, {u"a"_s, {}, u"c"_s}, 4), (QStringList{u"a"_s, u"c"_s, u"a"_s, u"c"_s}));
    }

    void theWalkBeginsAnewBehindTheLast()
    {
        MessageCycle cycle;
        QCOMPARE(walk(cycle, {{}, u"b"_s, u"c"_s, {}, {}}, 5), (QStringList{u"b"_s, u"c"_s, u"b"_s, u"c"_s, u"b"_s}));
    }

    void anotherSetIsWalkedFromWhereTheLastWalkStood()
    {
        MessageCycle cycle;
        QCOMPARE(walk(cycle, {u"a"_s, u"b"_s, u"c"_s}, 2), (QStringList{u"a"_s, u"b"_s}));
        QCOMPARE(walk(cycle, {u"x"_s, u"y"_s, u"z"_s}, 2), (QStringList{u"z"_s, u"x"_s}));
        QCOMPARE(walk(cycle, {u"alone"_s}, 2), (QStringList{u"alone"_s, u"alone"_s}));
    }

    void aMessageThatWasNotSaidStaysTheNext()
    {
        MessageCycle cycle;
        const QStringList positions{u"a"_s, u"b"_s};
        QCOMPARE(cycle.next(positions), u"a"_s);
        QCOMPARE(cycle.next(positions), u"a"_s);
        cycle.advance();
        QCOMPARE(cycle.next(positions), u"b"_s);
    }

    void nothingIsNextInAnEmptySet()
    {
        MessageCycle cycle;
        QVERIFY(!cycle.next({}));
        QVERIFY(!cycle.next({{}, {}, {}}));
    }

    void aPlaceholderIsFilledOnceInAnyCase_data()
    {
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("filled");
        QTest::newRow("once") << u"at %IP%."_s << u"at 1.2.3.4:28960."_s;
        QTest::newRow("twice") << u"%IP% or %IP%"_s << u"1.2.3.4:28960 or %IP%"_s;
        QTest::newRow("lower case first") << u"%ip% or %IP%"_s << u"1.2.3.4:28960 or %IP%"_s;
        QTest::newRow("none") << u"%I P% %SN% IP%"_s << u"%I P% %SN% IP%"_s;
        QTest::newRow("nothing else") << u"%Ip%"_s << u"1.2.3.4:28960"_s;
        QTest::newRow("sharing a sign") << u"%SN%IP%"_s << u"%SN1.2.3.4:28960"_s;
    }

    void aPlaceholderIsFilledOnceInAnyCase()
    {
        QFETCH(QString, message);
        QFETCH(QString, filled);
        QCOMPARE(fillPlaceholder(message, u"%IP%"_s, u"1.2.3.4:28960"_s), filled);
        QCOMPARE(hasPlaceholder(message, u"%IP%"_s), message != filled);
    }

    void aFriendlyFireModeHasAWord_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::addColumn<QString>("word");
        QTest::newRow("0") << u"0"_s << u"Off"_s;
        QTest::newRow("1") << u"1"_s << u"On"_s;
        QTest::newRow("2") << u"2"_s << u"Reflective"_s;
        QTest::newRow("3") << u"3"_s << u"Shared"_s;
        QTest::newRow("4") << u"4"_s << u"as before"_s;
        QTest::newRow("below all") << u"-1"_s << u"as before"_s;
        QTest::newRow("nothing") << QString() << u"as before"_s;
        QTest::newRow("a word") << u"on"_s << u"as before"_s;
        QTest::newRow("too large") << u"99999"_s << u"as before"_s;
    }

    void aFriendlyFireModeHasAWord()
    {
        QFETCH(QString, mode);
        QTEST(friendlyFireWord(mode, u"as before"_s), "word");
    }
};

GUILESS_TEST(MessageCycleTest)
#include "tst_message_cycle.moc"
