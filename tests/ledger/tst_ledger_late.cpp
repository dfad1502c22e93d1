// SPDX-License-Identifier: MIT
#include "ledger_hands.h"
#include "window_test.h"

using namespace Qt::StringLiterals;

namespace {

/// A server whose every reply leaves three to five seconds late, when nothing is under way to the questions of
/// connecting any more.
struct LateServer final : LedgerHands {
    explicit LateServer(quint32 seed) : LedgerHands({.practice = options(seed), .prepare = {}})
    {
        on.program.clock.speed = 0;
        pass(20'000);
        for (int turn = 0; turn < 50; ++turn)
            QApplication::processEvents();
        before = table()->model()->rowCount();
    }

    static PracticeOptions options(quint32 seed)
    {
        PracticeOptions late;
        late.late = true;
        late.seed = seed;
        return late;
    }
    /// Enters the lines with a second in between, and waits for their answers.
    void enterAll(const QStringList &entered)
    {
        for (const QString &line : entered) {
            const qsizetype arrived = on.server.requests().size();
            enter(line);
            QTRY_COMPARE(on.server.requests().size(), arrived + 1);
            passSlowly(1'000);
        }
        passSlowly(7'000);
    }
    /// The server looks at the clock, too.
    void passSlowly(int milliseconds)
    {
        for (int passed = 0; passed < milliseconds; passed += 20) {
            pass(20);
            QApplication::processEvents();
        }
    }
    [[nodiscard]] QStringList newVerdicts() const { return verdicts().mid(before); }
    [[nodiscard]] QString replyTo(int line) const
    {
        choose(before + line);
        return reply();
    }

    int before = 0;
};

} // namespace

/// A server whose answers come when the next command has long gone out.
class LedgerLateTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void eachAnswerIsItsOwnCommands_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 8; ++seed)
            QTest::addRow("seed %u", seed) << seed;
    }

    void eachAnswerIsItsOwnCommands()
    {
        QFETCH(quint32, seed);
        LateServer it(seed);
        it.enterAll({u"foo"_s, u"sv_hostname"_s, u"clientkick 15"_s, u"clientkick 99"_s, u"bar"_s});
        QCOMPARE(it.newVerdicts(), QStringList(5, u"late"_s));
        QCOMPARE(it.replyTo(0), u"Unknown command \"foo\"\n"_s);
        QVERIFY2(it.replyTo(1).startsWith(u"\"sv_hostname\" is: "_s), qPrintable(it.replyTo(1)));
        QCOMPARE(it.replyTo(2), u"Client 15 is not active\n"_s);
        QCOMPARE(it.replyTo(3), u"Bad client slot: 99\n"_s);
        QCOMPARE(it.replyTo(4), u"Unknown command \"bar\"\n"_s);
    }

    // The list was asked for twice, and the second answer comes when something else is asked.
    void theAnswerToAnotherCopyIsNotTheNextCommands_data() { eachAnswerIsItsOwnCommands_data(); }

    void theAnswerToAnotherCopyIsNotTheNextCommands()
    {
        QFETCH(quint32, seed);
        LateServer it(seed);
        it.on.program.clock.speed = 2000; // which the wait needs
        it.on.program.click(u"cmdstatus"_s);
        it.on.program.clock.speed = 0;
        QCOMPARE(it.on.server.commands(), QByteArrayList({"Status", "Status"}));
        it.enterAll({u"say hello"_s, u"foo"_s});
        QCOMPARE(it.newVerdicts(), QStringList({u"answered"_s, u"late"_s, u"late"_s}));
        QCOMPARE(it.replyTo(0).count(u"map: "_s), 2);
        QCOMPARE(it.replyTo(1), QString());
        QCOMPARE(it.replyTo(2), u"Unknown command \"foo\"\n"_s);
    }

    void answersWithoutWordsComeInTurn_data() { eachAnswerIsItsOwnCommands_data(); }

    void answersWithoutWordsComeInTurn()
    {
        QFETCH(quint32, seed);
        LateServer it(seed);
        it.enterAll({u"say one"_s, u"say two"_s, u"foo"_s, u"say three"_s});
        QCOMPARE(it.newVerdicts(), QStringList(4, u"late"_s));
        for (const int said : {0, 1, 3})
            QCOMPARE(it.replyTo(said), QString());
        QCOMPARE(it.replyTo(2), u"Unknown command \"foo\"\n"_s);
    }
};

WINDOW_TEST(LedgerLateTest)
#include "tst_ledger_late.moc"
