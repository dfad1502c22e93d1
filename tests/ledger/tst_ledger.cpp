// SPDX-License-Identifier: MIT
#include "ledger/ledger.h"
#include "ledger/ledger_text.h"
#include "test_class.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QByteArray header("\xFF\xFF\xFF\xFF");
const QString password = u"practice"_s;

/// The ledger of a program whose traffic a test makes up.
struct Kept {
    void send(int number, const QString &comm, Ledger::Time at)
    {
        ledger.sent({number, comm, password, header + "rcon practice " + comm.toLatin1()},
                    QDateTime(QDate(2006, 3, 5), QTime(21, 7, 45)), at);
    }
    /// A command that nobody waits for.
    void sendQuickly(int number, const QString &comm, Ledger::Time at)
    {
        send(number, comm, at);
        ledger.over(number, false);
    }
    void come(const QString &text, Ledger::Time at) { ledger.came({header + "print\n", text, text.size() + 10}, at); }
    [[nodiscard]] QStringList verdicts() const { return column(LedgerColumn::Verdict); }
    [[nodiscard]] QStringList column(int number) const
    {
        QStringList cells;
        for (int row = 0; row < ledger.rowCount(); ++row)
            cells.append(ledger.data(ledger.index(row, number), Qt::DisplayRole).toString());
        return cells;
    }
    [[nodiscard]] QStringList cells(int row) const
    {
        QStringList cells;
        for (int number = 0; number < ledger.columnCount(); ++number)
            cells.append(ledger.data(ledger.index(row, number), Qt::DisplayRole).toString());
        return cells;
    }

    Ledger ledger;
};

} // namespace

/// What the ledger makes of what goes out and comes in.
class LedgerTest final : public QObject {
    Q_OBJECT

private slots:
    void anEntryHasItsSevenCells()
    {
        Kept it;
        it.send(7, u"status"_s, 1s);
        it.send(7, u"status"_s, 4s);
        it.come(QString(1000, u'x'), 4s + 80ms);
        it.come(u"end"_s, 4s + 81ms);
        it.ledger.over(7, true);
        QStringList headers;
        for (int column = 0; column < it.ledger.columnCount(); ++column)
            headers.append(it.ledger.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
        QCOMPARE(headers.join(u", "), u"Time, Command, Copies, First answer, Datagrams, Bytes, Verdict"_s);
        QCOMPARE(it.cells(0),
                 QStringList({u"21:07:45"_s, u"status"_s, u"2"_s, u"3080"_s, u"2"_s, u"1023"_s, u"answered"_s}));
        QCOMPARE(it.ledger.entry(0).reply, QString(1000, u'x') + u"end"_s);
    }

    void theNewestIsAtTheEndAndAThousandAreKept()
    {
        Kept it;
        for (int number = 1; number <= 1003; ++number)
            it.send(2 * number, u"say %1"_s.arg(number), std::chrono::seconds(number));
        QCOMPARE(it.ledger.rowCount(), 1000);
        QCOMPARE(it.cells(0).at(1), u"say 4"_s);
        QCOMPARE(it.cells(999).at(1), u"say 1003"_s);
        QCOMPARE(it.ledger.rowOf(2 * 1003), 999);
        QCOMPARE(it.ledger.rowOf(2 * 3), -1);
        QCOMPARE(it.ledger.rowOf(2 * 4 + 1), -1);
        QVERIFY(it.ledger.nextSilence() == std::nullopt);
    }

    void theRepliesTakeBoundedRoom()
    {
        Kept it;
        for (int number = 1; number <= 12; ++number) {
            it.send(number, u"dvarlist"_s, std::chrono::seconds(number));
            for (int datagram = 0; datagram < 130; ++datagram)
                it.come(QString(8000, u'x'), std::chrono::seconds(number));
            it.ledger.over(number, true);
        }
        qsizetype kept = 0;
        for (int row = 0; row < it.ledger.rowCount(); ++row)
            kept += it.ledger.entry(row).reply.size();
        QVERIFY2(kept <= 8'000'000, qPrintable(QString::number(kept)));
        QVERIFY(it.ledger.entry(0).isReplyForgotten);
        QCOMPARE(it.ledger.entry(11).reply.size(), 1'000'000);
        QCOMPARE(it.verdicts().count(u"answered"_s), 12);
        QCOMPARE(it.column(LedgerColumn::Datagrams).count(u"130"_s), 12);
    }

    void whatIsAwaitedIsSilentWhenItsTimeIsOver()
    {
        Kept it;
        it.send(1, u"status"_s, 0s);
        QCOMPARE(it.verdicts(), QStringList{QString()});
        it.ledger.over(1, true);
        QCOMPARE(it.verdicts(), QStringList{u"silent"_s});
        it.come(u"map: mp_decoy\n"_s, 16s);
        QCOMPARE(it.verdicts(), QStringList{u"late"_s});
        it.come(u"more\n"_s, 16s);
        QCOMPARE(it.verdicts(), QStringList{u"late"_s});
    }

    void piecesOfAReplyThatBeganInTimeAreNotLate()
    {
        Kept it;
        it.send(1, u"dvarlist"_s, 0s);
        it.come(u"a\n"_s, 1s);
        it.ledger.over(1, true);
        it.come(u"b\n"_s, 20s);
        it.sendQuickly(2, u"map mp_decoy"_s, 30s);
        it.come(u"one\n"_s, 33s);
        it.come(u"two\n"_s, 34s);
        QCOMPARE(it.verdicts(), QStringList({u"answered"_s, u"answered"_s}));
        QCOMPARE(it.ledger.entry(1).reply, u"one\ntwo\n"_s);
    }

    void aSecondPieceCanChangeTheVerdict()
    {
        Kept it;
        it.send(1, u"foo"_s, 0s);
        it.come({}, 1ms);
        QCOMPARE(it.verdicts(), QStringList{u"acknowledged"_s});
        it.come(u"Unknown command \"foo\"\n"_s, 2ms);
        QCOMPARE(it.verdicts(), QStringList{u"unknown command"_s});
    }

    void whatNobodyWaitsForHasThreeSeconds_data()
    {
        QTest::addColumn<int>("milliseconds");
        QTest::addColumn<QString>("verdict");
        QTest::newRow("at once") << 0 << u"acknowledged"_s;
        QTest::newRow("in time") << 3000 << u"acknowledged"_s;
        QTest::newRow("late") << 3001 << u"late"_s;
        QTest::newRow("very late") << 14'999 << u"late"_s;
    }

    void whatNobodyWaitsForHasThreeSeconds()
    {
        QFETCH(int, milliseconds);
        Kept it;
        it.sendQuickly(1, u"say a"_s, 10s);
        it.come({}, 10s + std::chrono::milliseconds(milliseconds));
        QTEST(it.verdicts().constFirst(), "verdict");
        QVERIFY2(!it.ledger.nextSilence(), "nothing is waited for");
    }

    void andIsSilentAfterFifteen()
    {
        Kept it;
        it.sendQuickly(1, u"say a"_s, 10s);
        it.sendQuickly(2, u"say b"_s, 12s);
        QVERIFY(it.ledger.nextSilence() == Ledger::Time(25s));
        it.ledger.judgeSilence(25s - 1us);
        QCOMPARE(it.verdicts(), QStringList({QString(), QString()}));
        it.ledger.judgeSilence(25s);
        QCOMPARE(it.verdicts(), QStringList({u"silent"_s, QString()}));
        QVERIFY(it.ledger.nextSilence() == Ledger::Time(27s));
        it.ledger.judgeSilence(60s);
        QCOMPARE(it.verdicts(), QStringList({u"silent"_s, u"silent"_s}));
        QVERIFY(!it.ledger.nextSilence());
        it.come({}, 61s);
        QCOMPARE(it.verdicts(), QStringList({u"silent"_s, u"late"_s}));
    }

    void anAnswerBelongsToTheLastCommandSent()
    {
        Kept it;
        it.send(1, u"status"_s, 0s);
        it.send(2, u"say a"_s, 1s); // inside the wait for the first
        it.come({}, 1s + 1ms);
        it.ledger.over(2, true);
        it.send(1, u"status"_s, 3s);
        it.come(u"map: mp_decoy\n"_s, 3s + 1ms);
        it.ledger.over(1, true);
        QCOMPARE(it.verdicts(), QStringList({u"answered"_s, u"acknowledged"_s}));
    }

    void ofTwoQuickLinesTheDroppedOneIsSilent()
    {
        Kept it;
        it.sendQuickly(1, u"say a"_s, 0s);
        it.come({}, 80ms);
        it.sendQuickly(2, u"say b"_s, 400ms);
        it.sendQuickly(3, u"foo"_s, 600ms);
        it.come(u"Unknown command \"foo\"\n"_s, 680ms);
        it.ledger.judgeSilence(20s);
        QCOMPARE(it.verdicts(), QStringList({u"acknowledged"_s, u"silent"_s, u"unknown command"_s}));
    }

    void onASlowLineTheAnswersComeInTurn()
    {
        Kept it;
        it.send(1, u"status"_s, 0s);
        it.come(u"map: mp_decoy\n"_s, 100ms); // this far away the server is
        it.ledger.over(1, true);
        it.sendQuickly(2, u"say a"_s, 5s);
        it.sendQuickly(3, u"foo"_s, 5s + 50ms);
        it.come({}, 5s + 100ms);
        it.come(u"Unknown command \"foo\"\n"_s, 5s + 150ms);
        QCOMPARE(it.verdicts(), QStringList({u"answered"_s, u"acknowledged"_s, u"unknown command"_s}));
    }

    void aReplyUnderWayGoesOnFirst()
    {
        Kept it;
        it.sendQuickly(1, u"dvarlist"_s, 0s);
        it.come(QString(1000, u'a'), 10ms);
        it.sendQuickly(2, u"say b"_s, 20ms);
        it.come(QString(1000, u'b'), 30ms);
        it.come(u"end"_s, 31ms);
        it.come({}, 32ms);
        QCOMPARE(it.column(LedgerColumn::Datagrams), QStringList({u"3"_s, u"1"_s}));
        QCOMPARE(it.verdicts(), QStringList({u"answered"_s, u"acknowledged"_s}));
    }

    void anotherServersDatagramsAnswerNothing()
    {
        Kept it;
        it.come(u"before anything"_s, 0s);
        it.sendQuickly(1, u"say a"_s, 0s);
        it.ledger.linkBegun();
        it.come(u"of another server"_s, 1ms);
        QCOMPARE(it.verdicts(), QStringList{QString()});
        QCOMPARE(it.ledger.entry(0).reply, QString());
    }

    void theAnswerToAPublicQueryIsNoCommands()
    {
        Kept it;
        it.sendQuickly(1, u"say a"_s, 0s);
        it.ledger.came({header + "statusResponse\n", u"\xFF"_s, 300}, 1ms);
        it.ledger.came({header + "infoResponse\n", u"\xFF"_s, 300}, 1ms);
        QCOMPARE(it.cells(0).at(LedgerColumn::Datagrams), u"0"_s);
    }

    // It was typed where it did not belong before it was set.
    void aPasswordThatBecomesKnownIsHiddenInEarlierEntriesToo()
    {
        Kept it;
        it.sendQuickly(1, u"rcon_pasword secretword"_s, 0s);
        it.come(u"Unknown command \"rcon_pasword\" secretword\n"_s, 1ms);
        QVERIFY(it.cells(0).at(LedgerColumn::Command).contains(u"secretword"_s));
        it.sendQuickly(2, u"set rcon_password \"secretword\""_s, 1s);
        QCOMPARE(it.column(LedgerColumn::Command),
                 QStringList({u"rcon_pasword **********"_s, u"set rcon_password \"**********\""_s}));
        QCOMPARE(it.ledger.entry(0).reply, u"Unknown command \"rcon_pasword\" **********\n"_s);
    }

    void aNewPasswordIsHiddenFromItsCommandOn()
    {
        Kept it;
        it.sendQuickly(1, u"rcon_password newword"_s, 0s);
        it.come(u"rcon_password is newword now, and was practice\n"_s, 1ms);
        QCOMPARE(it.ledger.entry(0).reply, u"rcon_password is ******* now, and was ********\n"_s);
        it.sendQuickly(2, u"say newword"_s, 1s);
        QCOMPARE(it.cells(1).at(LedgerColumn::Command), u"say *******"_s);
    }

    void aVerdictIsToldOnce()
    {
        Kept it;
        QStringList told;
        connect(&it.ledger, &Ledger::judged, &it.ledger,
                [&told](const LedgerEntry &entry) { told.append(entry.command + u' ' + verdictWord(entry.verdict)); });
        it.send(1, u"dvarlist"_s, 0s);
        for (int datagram = 0; datagram < 5; ++datagram)
            it.come(u"text"_s, 1ms);
        it.ledger.over(1, true);
        it.send(2, u"status"_s, 2s);
        it.ledger.over(2, true);
        it.come({}, 20s);
        QCOMPARE(told, QStringList({u"dvarlist answered"_s, u"status silent"_s, u"status late"_s}));
    }

    void everyVerdictHasOneSentence()
    {
        QStringList notes;
        LedgerEntry entry({1, u"status"_s, password, header}, {}, {}, 0s);
        for (int verdict = 0; verdict <= static_cast<int>(Verdict::Unreadable); ++verdict) {
            entry.verdict = static_cast<Verdict>(verdict);
            notes.append(ledgerNote(entry));
            QVERIFY2(entry.verdict == Verdict::TooLong ||
                         notes.constLast().indexOf(u'.') == notes.constLast().size() - 1,
                     qPrintable(notes.constLast()));
        }
        notes.removeDuplicates();
        QCOMPARE(notes.size(), 12);
    }

    void quotesInAFileAreDoubled()
    {
        QCOMPARE(csvRecord({u"say \"a, b\""_s, u""_s}), u"\"say \"\"a, b\"\"\",\"\"\r\n"_s);
    }

    void quotesStandWhereTheyAreNeeded()
    {
        QCOMPARE(csvRecord({u"a b"_s, u"a,b"_s, u"say \"x\""_s, u"a\nb"_s, u"a\rb"_s, u""_s}, CsvQuotes::WhereNeeded),
                 u"a b,\"a,b\",\"say \"\"x\"\"\",\"a\nb\",\"a\rb\",\r\n"_s);
    }
};

GUILESS_TEST(LedgerTest)
#include "tst_ledger.moc"
