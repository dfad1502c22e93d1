// SPDX-License-Identifier: MIT
#include "player_grid.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int manyTicks = 500; // one that nests takes hundreds of bytes of the stack

/// How deep the stack is here, in bytes from wherever it began.
quintptr stackDepth()
{
    const char here = 0;
    return ~reinterpret_cast<quintptr>(&here);
}

} // namespace

/// The refresh while the server is away and nobody is there to answer a box.
class OutageTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theListIsRightWhenTheServerComesBackAlthoughNobodyClicked_data()
    {
        QTest::addColumn<bool>("queryMode");
        QTest::newRow("status table") << false;
        QTest::newRow("Query Mode") << true;
    }

    void theListIsRightWhenTheServerComesBackAlthoughNobodyClicked()
    {
        QFETCH(bool, queryMode);
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s), somebody(5, u"Ben"_s)});
        tab.tickBox(u"chkplyq"_s, queryMode);
        tab.tickBox(u"chkautoupdate"_s);
        QCOMPARE(tab.grid().size(), 2);
        tab.server.setSilent(true);
        // Hours pass, and not past midnight.
        tab.program.clock.set(QDateTime(QDate(2006, 3, 5), QTime(0, 0, 1)));
        tab.program.clock.longestStep = 500;
        tab.program.clock.speed = 20'000;
        QList<QStringList> listed;
        qsizetype mostOpen = 0;
        quintptr firstDepth = 0;
        quintptr mostDepth = 0;
        connect(&tab.server, &PracticeServer::requested, this, [&] { mostDepth = std::max(mostDepth, stackDepth()); });
        tab.program.prompts.whileOpen = [&] {
            for (int tick = 0; tick < manyTicks; ++tick) {
                tab.tick();
                mostOpen = std::max(mostOpen, tab.program.prompts.openCount());
                if (tick == 0)
                    firstDepth = mostDepth;
            }
            tab.server.setSilent(false);
            tab.server.game().players().remove(3);
            tab.server.forgetRequests();
            tab.tick();
            listed = tab.grid();
        };
        tab.tick();
        QCOMPARE(tab.program.prompts.takeBoxes().size(), 1);
        QCOMPARE(mostOpen, 1);
        QVERIFY2(mostDepth < firstDepth + 4096, "the stack grows with each tick");
        QCOMPARE(tab.server.requests().size(), 1);
        QCOMPARE(listed.size(), 1);
        QCOMPARE(listed.first().at(3), u"Ben"_s);
        QCOMPARE(tab.grid(), listed); // also when somebody comes and answers the box
        QVERIFY(tab.showsReplies());
    }

    void aTickIsLeftOutWhileAnotherListIsReallyWaitedFor()
    {
        PlayersTab tab;
        tab.put({somebody(3, u"Ann"_s)});
        tab.tickBox(u"chkautoupdate"_s);
        tab.server.forgetRequests();
        atRequest(tab.server, "status", [&] { tab.tick(); });
        tab.tick();
        QCOMPARE(tab.server.commands(), QList<QByteArray>{"status"});
        QCOMPARE(tab.grid().size(), 1);
    }

    void aBoxThatTheTickFoundOpenIsNotBroughtTwice()
    {
        PlayersTab tab;
        tab.tickBox(u"chkautoupdate"_s);
        tab.server.setSilent(true);
        int ticks = 0;
        tab.program.prompts.whileOpen = [&] {
            if (++ticks == 1)
                tab.tick();
        };
        tab.program.click(u"cmdstatus"_s); // the same box, for a command of the person
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{noResponseBox()});
        QCOMPARE(ticks, 1);
        tab.tick();
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{noResponseBox()}); // a new one when that is closed
    }

    void aKickHeldUpByItsBoxIsNotGoneOnWithLater()
    {
        PlayersTab tab("autokick999=1\r\nautokick999int=2\r\n");
        tab.put({somebody(3, u"Ann"_s, 999), somebody(5, u"Ben"_s, 999)});
        tab.tickBox(u"chkautoupdate"_s);
        tab.server.answer("clientkick 3", {}); // no reply
        QStringList messages;
        tab.program.prompts.whileOpen = [&] {
            for (const int slot : {3, 5})
                tab.server.game().players().remove(slot);
            tab.put({somebody(3, u"Innocent"_s), somebody(5, u"Harmless"_s)});
            tab.tick();
            tab.server.forgetRequests();
            messages = tab.program.messages();
        };
        tab.tick();
        QCOMPARE(tab.program.prompts.takeBoxes(), QList<Box>{noResponseBox()});
        QCOMPARE(tab.server.commands(), QList<QByteArray>());
        QCOMPARE(tab.column(1), (QStringList{u"3"_s, u"5"_s}));
        QCOMPARE(tab.program.messages(), messages);
    }

    // A server that lists one name very often brings the count to its end.
    void theBoxOfTheKickIsBroughtOnceAndItsListNotGoneOnWith()
    {
        PlayersTab tab("autokick999=1\r\n");
        QByteArray rows;
        for (int row = 0; row < 1500; ++row)
            rows += "0 0 999 0 A 0 a 0 0\n";
        tab.tickBox(u"chkautoupdate"_s);
        QList<QByteArray> datagrams{statusHeading};
        for (qsizetype at = 0; at < rows.size(); at += 6000)
            datagrams.append(rows.sliced(at, 6000));
        tab.server.answer("status", datagrams + QList<QByteArray>{"\n"});
        tab.server.answer("clientkick 0", {"\n"});
        qsizetype listed = 0;
        bool isOpen = false;
        tab.program.prompts.whileOpen = [&] {
            isOpen = true;
            tab.server.answer("status", {statusHeading + "0 0 999 0 A 0 a 0 0\n\n"});
            tab.tick();
            tab.tick();
            listed = tab.grid().size();
        };
        for (int tick = 0; tick < 40 && !isOpen; ++tick)
            tab.tick();
        const QList<Box> boxes = tab.program.prompts.takeBoxes();
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(boxes.first().title, u"ADD999 Error"_s);
        QCOMPARE(tab.grid().size(), listed);
    }
};

WINDOW_TEST(OutageTest)
#include "tst_outage.moc"
