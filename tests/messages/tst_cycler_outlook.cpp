// SPDX-License-Identifier: MIT
#include "cycler_tab.h"

#include <QLabel>

using namespace Qt::StringLiterals;

namespace {

QString told(CyclerTab &cycler)
{
    const auto *label = cycler.program().find<QLabel>(u"lblcycle"_s);
    return label->isVisible() ? label->text() : QString();
}

} // namespace

/// What the status bar says of the message cycler.
class CyclerOutlookTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void itSaysWhenTheNextMessageComes()
    {
        CyclerTab cycler({"first", "second"});
        QCOMPARE(told(cycler), QString());
        cycler.start();
        const QString every = u"Messages: Ann every 3 min, "_s;
        QCOMPARE(told(cycler), every + u"next in 1 min"_s);
        QStringList outlooks;
        for (int minute = 1; minute <= 8; ++minute) {
            const bool said = !cycler.saidIn(1).isEmpty();
            outlooks.append((said ? u"said, "_s : QString()) + told(cycler).mid(every.size()));
        }
        QCOMPARE(outlooks, QStringList({u"said, next in 3 min"_s, u"next in 2 min"_s, u"next in 1 min"_s,
                                        u"said, next in 3 min"_s, u"next in 2 min"_s, u"next in 1 min"_s,
                                        u"said, next in 3 min"_s, u"next in 2 min"_s}));
    }

    void stopAndStartKeepTheCount()
    {
        CyclerTab cycler({"first", "second"});
        cycler.start();
        cycler.tick();
        cycler.tick();
        cycler.program().click(u"cmdmessstop"_s);
        QCOMPARE(told(cycler), QString());
        cycler.start();
        QVERIFY(told(cycler).endsWith(u"next in 2 min"));
    }

    void anIntervalThatNeverComesRoundHasNoNextMessage_data()
    {
        QTest::addColumn<QString>("interval");
        QTest::addColumn<QString>("expected");
        QTest::newRow("a word") << u"abc"_s << u"Messages: Ann every abc min, no next message"_s;
        QTest::newRow("half a minute more") << u"2.5"_s << u"Messages: Ann every 2.5 min, no next message"_s;
        QTest::newRow("none") << u"0"_s << u"Messages: Ann every 0 min, no next message"_s;
        QTest::newRow("with its unit") << u"5 min"_s << u"Messages: Ann every 5 min, next in 5 min"_s;
        QTest::newRow("beyond the count") << u"40000"_s << u"Messages: Ann every 40000 min, no next message"_s;
        QTest::newRow("beyond 32 bits") << u"3000000000"_s << u"Messages: Ann every 3e+09 min, no next message"_s;
        QTest::newRow("one") << u"1"_s << u"Messages: Ann every 1 min, next in 1 min"_s;
    }

    void anIntervalThatNeverComesRoundHasNoNextMessage()
    {
        QFETCH(QString, interval);
        CyclerTab cycler({"first", "second"});
        cycler.start();
        cycler.tick();
        cycler.program().find<QLineEdit>(u"txtinterval"_s)->setText(interval);
        QTEST(told(cycler), "expected");
        QVERIFY(cycler.isRunning());
    }
};

WINDOW_TEST(CyclerOutlookTest)
#include "tst_cycler_outlook.moc"
