// SPDX-License-Identifier: MIT
#include "cli_hands.h"
#include "cli_process.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#ifdef Q_OS_UNIX
#include <csignal>
#endif

using namespace Qt::StringLiterals;

/// The words "players" and "watch".
class CliPlayersTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void playersAreATableJsonOrCsv()
    {
        CliWithServer it;
        it.server.answer("status", {table});
        QCOMPARE(it.run({u"players"_s}).output,
                 "num  score  ping    guid  name                 address        qport   rate\n"
                 "  0      7    55  632819  BandAid              192.0.2.7:524    804  25000\n"
                 "  3     -1  CNCT       0  Unknown command \"x\"  loopback        1804   5000\n");
        const QJsonArray json = QJsonDocument::fromJson(it.run({u"players"_s, u"--json"_s}).output).array();
        QCOMPARE(json.size(), 2);
        QCOMPARE(json.at(0)[u"name"_s].toString(), u"^1Band^2Aid^7"_s);
        QCOMPARE(json.at(1)[u"num"_s].toInt(), 3);
        QCOMPARE(it.run({u"players"_s, u"--csv"_s}).output,
                 "num,score,ping,guid,name,address,qport,rate\r\n"
                 "0,7,55,632819,^1Band^2Aid^7,192.0.2.7:524,804,25000\r\n"
                 "3,-1,CNCT,0,\"Unknown command \"\"x\"\"^7\",loopback,1804,5000\r\n");
    }

    void aListThatHasNotComeWholeIsAskedForAgain()
    {
        CliWithServer it;
        it.server.answer("status", {table.first(250)});
        QObject::connect(&it.server, &PracticeServer::requested, &it.server, [&it] {
            if (it.server.requests().size() == 2)
                it.server.answer("status", {table});
        });
        const CliOutcome outcome = it.run({u"players"_s});
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.output.count('\n'), 3);
        QCOMPARE(it.server.requests().size(), 2);

        it.server.answer("status", {table.first(250)});
        const CliOutcome torn = it.run({u"players"_s, u"--retries"_s, u"0"_s});
        QCOMPARE(torn.status, 3);
        QCOMPARE(torn.output, QByteArray());
        QVERIFY2(torn.errors.contains("did not come whole"), torn.errors.constData());
    }

#ifdef Q_OS_UNIX // a program without a window hears only Ctrl+C on Windows
    void watchPrintsALineEachTimeUntilItIsInterrupted()
    {
        CliWithServer it;
        it.server.answer("status", {table});
        it.cli.start(it.withServer({u"watch"_s, u"1"_s}));
        QTRY_COMPARE_WITH_TIMEOUT(it.server.requests().size(), 3, 20'000);
        QCOMPARE(kill(static_cast<pid_t>(it.cli.process.processId()), SIGINT), 0);
        const CliOutcome outcome = it.cli.end();
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.errors, QByteArray());
        const qint64 took = it.times.at(2) - it.times.at(0);
        QVERIFY2(took >= 1900, qPrintable(QString::number(took)));
        QVERIFY(outcome.output.endsWith('\n'));
        const QByteArrayList lines = outcome.output.chopped(1).split('\n');
        QVERIFY(lines.size() >= 2);
        for (const QByteArray &line : lines) {
            const QJsonObject sample = QJsonDocument::fromJson(line).object();
            QCOMPARE(sample.keys(), QStringList({u"players"_s, u"time"_s}));
            QCOMPARE(sample[u"players"_s].toArray().size(), 2);
            QVERIFY(QDateTime::fromString(sample[u"time"_s].toString(), Qt::ISODate).isValid());
        }
    }

    void aLostSampleIsNotedAndTheNextOneComes_data()
    {
        QTest::addColumn<QByteArrayList>("first");
        QTest::addColumn<QByteArray>("note");
        QTest::newRow("no answer") << QByteArrayList() << QByteArray("Z: No answer.\n");
        QTest::newRow("half a list") << QByteArrayList{table.first(250)}
                                     << QByteArray("Z: The list of players did not come whole.\n");
    }
    void aLostSampleIsNotedAndTheNextOneComes()
    {
        QFETCH(QByteArrayList, first);
        QFETCH(QByteArray, note);
        CliWithServer it;
        it.server.answer("status", first);
        QObject::connect(&it.server, &PracticeServer::requested, &it.server, [&it] {
            if (it.server.requests().size() == 2)
                it.server.answer("status", {table});
        });
        it.cli.start(it.withServer({u"--timeout"_s, u"0.3"_s, u"--retries"_s, u"0"_s, u"watch"_s, u"1"_s}));
        QTRY_VERIFY_WITH_TIMEOUT(it.cli.process.bytesAvailable() > 0, 20'000);
        it.cli.process.terminate();
        const CliOutcome outcome = it.cli.end();
        QCOMPARE(outcome.status, 0);
        QCOMPARE(QJsonDocument::fromJson(outcome.output)[u"players"_s].toArray().size(), 2);
        QVERIFY2(outcome.errors.endsWith(note), outcome.errors.constData());
        QCOMPARE(outcome.errors.count('\n'), 1);
    }

    void watchEndsWhenNobodyReadsItAnyMore()
    {
        CliWithServer it;
        QProcess reader;
        it.cli.process.setStandardOutputProcess(&reader);
        it.cli.start(it.withServer({u"watch"_s, u"3600"_s}));
        reader.start(u"head"_s, {u"-n"_s, u"1"_s}); // ends long before the next line
        QCOMPARE(it.cli.end().status, 0);
        QTRY_COMPARE(reader.state(), QProcess::NotRunning);
        QVERIFY(reader.readAllStandardOutput().startsWith("{\"time\":"));
        QCOMPARE(it.server.requests().size(), 1);
    }
#endif

    void watchEndsWhenThePasswordIsRefused()
    {
        CliWithServer it;
        it.cli.setPassword(u"wrong"_s);
        const CliOutcome outcome = it.run({u"watch"_s, u"1"_s});
        QCOMPARE(outcome.status, 4);
        QCOMPARE(outcome.output, QByteArray());
    }
};

GUILESS_TEST(CliPlayersTest)
#include "tst_cli_players.moc"
