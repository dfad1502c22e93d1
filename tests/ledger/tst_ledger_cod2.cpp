// SPDX-License-Identifier: MIT
#include "ledger_hands.h"
#include "window_test.h"

using namespace Qt::StringLiterals;

namespace {

Beginning hard()
{
    return {.practice = PracticeOptions::cod2(), .prepare = {}};
}

/// Such a server hears one command in half a second.
void leaveTime(LedgerHands &it)
{
    it.pass(600);
}

} // namespace

/// The ledger beside a server that makes it hard for its clients.
class LedgerCod2Test final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void whatTheServerSaysIsTheVerdict_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("verdict");
        const auto row = [](const char *line, const char *verdict) {
            QTest::newRow(line) << QString::fromLatin1(line) << QString::fromLatin1(verdict);
        };
        row("say hello", "acknowledged");
        row("rcon_password", "answered");
        row("cmdlist", "answered");
        row("foo", "unknown command");
        row("foo // say hello", "unknown command");
        row("clientkick 15", "no such player");
        row("banClient 99", "no such player");
        row("unbanUser", "usage");
        row("exec", "usage");
    }

    void whatTheServerSaysIsTheVerdict()
    {
        QFETCH(QString, line);
        QFETCH(QString, verdict);
        LedgerHands it(hard());
        leaveTime(it);
        it.enter(line);
        QTRY_COMPARE(it.verdict(), verdict);
    }

    void aPasswordIsRefusedInItsOwnWords()
    {
        LedgerHands it(hard());
        leaveTime(it);
        it.on.program.setText(u"txtPWD"_s, u"wrong"_s);
        it.enter(u"say hello"_s);
        QTRY_COMPARE(it.verdict(), u"password refused"_s);
        it.chooseNewest();
        QCOMPARE(it.reply(), u"Invalid password.\n"_s);
    }

    void theSecondOfTwoQuickLinesIsSilent()
    {
        LedgerHands it(hard());
        leaveTime(it);
        it.on.program.clock.speed = 0;
        it.enter(u"say one"_s);
        QTRY_COMPARE(it.verdict(), u"acknowledged"_s);
        it.enter(u"say two"_s);
        QTRY_COMPARE(it.on.server.requests().size(), 2);
        it.pass(15'000);
        it.judgeSilence();
        QCOMPARE(it.verdicts().last(2), QStringList({u"acknowledged"_s, u"silent"_s}));
    }

    void theNoteSaysWhatTheServerReads()
    {
        LedgerHands it(hard());
        leaveTime(it);
        const QString line = u"set long "_s + QString(700, u'a') + QString(400, u'b');
        it.enter(line);
        QTRY_COMPARE(it.cells(it.table()->model()->rowCount() - 1).at(4), u"1"_s);
        QCOMPARE(it.verdict(), u"too long"_s);
        it.chooseNewest();
        const QString read = u"set long "_s + it.on.server.game().dvars().value(u"long"_s);
        QVERIFY(read.size() < line.size());
        QVERIFY2(it.note().endsWith(u": "_s + read), qPrintable(it.note()));
    }

    void datagramsOfTheLosingKindAreCounted()
    {
        PracticeOptions options = PracticeOptions::cod2();
        options.players = 32;
        LedgerHands it({.practice = options, .prepare = {}});
        leaveTime(it);
        it.enter(u"status"_s);
        QTRY_COMPARE(it.verdict(), u"answered"_s);
        const int row = it.table()->model()->rowCount() - 1;
        QTRY_VERIFY(it.cells(row).at(4).toInt() >= 2);
        it.chooseNewest();
        const int datagrams = it.cells(row).at(4).toInt();
        QCOMPARE(it.cells(row).at(5).toInt(), it.reply().size() + 10 * datagrams);
        QVERIFY(it.cells(row).at(5).toInt() > 1303 * (datagrams - 1));
    }

    void aLateServersConsoleLinesAreLate()
    {
        PracticeOptions options;
        options.late = true;
        LedgerHands it({.practice = options, .prepare = {}});
        it.pass(10'000);
        for (int turn = 0; turn < 50; ++turn) // what is still under way to the copies of connecting
            QApplication::processEvents();
        it.enter(u"say hello"_s);
        QTRY_COMPARE(it.verdict(), u"late"_s);
        const int first = it.cells(it.table()->model()->rowCount() - 1).at(3).toInt();
        QVERIFY2(first >= 3000 && first <= 5100, qPrintable(QString::number(first)));
    }
};

WINDOW_TEST(LedgerCod2Test)
#include "tst_ledger_cod2.moc"
