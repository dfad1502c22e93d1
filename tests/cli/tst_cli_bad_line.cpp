// SPDX-License-Identifier: MIT
#include "cli_process.h"

#include <QJsonArray>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace {

/// What the server lets go past without an answer.
void collectDropped(PracticeServer &server, QStringList &dropped)
{
    QObject::connect(&server, &PracticeServer::happened, &server, [&dropped](const QString &line) {
        if (line.contains(u"not answered"_s))
            dropped.append(line);
    });
}

} // namespace

/// The program without a window and a server that makes it hard.
class CliBadLineTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aScriptLosesNothingOnAServerThatHearsOneCommandInHalfASecond()
    {
        CliWithServer it(PracticeOptions::cod2());
        QStringList dropped;
        collectDropped(it.server, dropped);
        QByteArray script;
        QByteArrayList expected;
        for (int number = 1; number <= 6; ++number) {
            expected.append("say line " + QByteArray::number(number));
            script += expected.last() + '\n';
        }
        const CliOutcome outcome = it.run({u"-"_s}, script);
        QCOMPARE(outcome.status, 0);
        QCOMPARE(it.server.commands(), expected);
        QCOMPARE(dropped, QStringList());
        QVERIFY2(it.leastApart() >= leastPause, qPrintable(QString::number(it.leastApart())));
        QVERIFY(it.times.last() - it.times.first() < 2 * 5 * 750); // but no slower than it must be
    }

    void twoCallsInARowAreBothHeard_data()
    {
        QTest::addColumn<QStringList>("first");
        QTest::addColumn<int>("status");
        QTest::newRow("command") << QStringList{u"say"_s, u"a"_s} << 0;
        QTest::newRow("answered whole") << QStringList{u"status"_s} << 0;
        QTest::newRow("players") << QStringList{u"players"_s} << 0;
        QTest::newRow("not answered") << QStringList{u"--timeout"_s, u"0.1"_s, u"say"_s, u"a"_s} << 3;
        QTest::newRow("refused") << QStringList{u"--password-file"_s, u"wrong"_s, u"say"_s, u"a"_s} << 4;
        QTest::newRow("check refused") << QStringList{u"--password-file"_s, u"wrong"_s, u"check"_s} << 4;
    }
    void twoCallsInARowAreBothHeard()
    {
        QFETCH(QStringList, first);
        CliWithServer it(PracticeOptions::cod2());
        QStringList dropped;
        collectDropped(it.server, dropped);
        it.cli.writeFile(u"wrong"_s, "falsch\n");
        it.server.setLatency(first.contains(u"0.1"_s) ? 300 : 0);
        QTEST(it.run(first).status, "status");
        it.server.setLatency(0);
        QCOMPARE(it.run({u"say"_s, u"b"_s}).status, 0);
        QCOMPARE(dropped, QStringList());
        QCOMPARE(it.server.commands().last(), "say b");
    }

    void theListOfAHardServerIsReadAndItsDoubtsAreTold()
    {
        PracticeOptions options = PracticeOptions::cod2();
        options.players = 40;
        CliWithServer it(options);
        const CliOutcome outcome = it.run({u"players"_s, u"--json"_s});
        QCOMPARE(outcome.status, 0);
        QVERIFY2(outcome.errors.contains("loses a character now and then"), outcome.errors.constData());
        QVERIFY(QJsonDocument::fromJson(outcome.output).array().size() >= 38); // a line feed can be what is lost
    }

    void aBanThatIsNotThereIsNotDone()
    {
        CliWithServer it(PracticeOptions::cod2());
        const CliOutcome outcome = it.run({u"unbanUser nobody"_s});
        QCOMPARE(outcome.status, 5);
        QVERIFY2(outcome.errors.contains("did not do it: unbanUser nobody"), outcome.errors.constData());
    }

    void aCopyOfWhatHasSucceededIsDone()
    {
        CliWithServer it(PracticeOptions::cod2());
        it.server.answer("unbanUser Bob", {});
        QObject::connect(&it.server, &PracticeServer::requested, &it.server, [&it] {
            if (it.server.requests().size() == 2) // the answer to the first copy is lost
                it.server.answer("unbanUser Bob", {"no banned user has name Bob\n"});
        });
        const CliOutcome outcome = it.run({u"--timeout"_s, u"0.75"_s, u"--retries"_s, u"1"_s, u"unbanUser Bob"_s});
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.output, "no banned user has name Bob\n");
        QCOMPARE(outcome.errors, "molvark-cli: An earlier copy may have done it: unbanUser Bob\n");
    }

    void whatAHardServerRefusesIsNotDone()
    {
        CliWithServer it(PracticeOptions::cod2());
        for (const auto &command : {u"exec none.cfg"_s, u"sv_maxclients banana"_s, u"rcon_password"_s}) {
            const CliOutcome outcome = it.run({command});
            QVERIFY2(outcome.status == 5, outcome.output.constData());
            QVERIFY2(outcome.errors.contains("did not do it: " + command.toUtf8()), outcome.errors.constData());
        }
    }

    void aHardServersRefusalIsOne()
    {
        CliWithServer it(PracticeOptions::cod2());
        it.cli.setPassword(u"wrong"_s);
        const CliOutcome outcome = it.run({u"status"_s});
        QCOMPARE(outcome.status, 4);
        QCOMPARE(outcome.output, "Invalid password.\n");
    }

    void anAnswerThatComesAfterTheSecondCopyIsNotThatToTheNextCommand()
    {
        CliWithServer it;
        it.server.setLatency(1000);
        it.server.answer("one", {"first\n"});
        it.server.answer("two", {"second\n"});
        const CliOutcome outcome = it.run({u"--timeout"_s, u"0.8"_s, u"--retries"_s, u"2"_s, u"one"_s, u"two"_s});
        QCOMPARE(outcome.output, "first\nsecond\n");
    }

    void aCheckFindsOutTheHardServersHabit()
    {
        CliWithServer it(PracticeOptions::cod2());
        const CliOutcome outcome = it.run({u"check"_s});
        QCOMPARE(outcome.status, 0);
        QVERIFY2(outcome.output.contains("Servers that cut like this lose a character"), outcome.output.constData());
    }
};

GUILESS_TEST(CliBadLineTest)
#include "tst_cli_bad_line.moc"
