// SPDX-License-Identifier: MIT
#include "cli_process.h"

using namespace Qt::StringLiterals;

/// The program without a window over a line that loses things.
class CliLossTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void questionsAreAskedAgainOverALineThatLosesAThird_data()
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<bool>("isHard");
        for (const auto &word : {u"status"_s, u"players"_s, u"query"_s}) {
            QTest::newRow(qPrintable(word)) << word << false;
            QTest::newRow(qPrintable(word + u", hard server"_s)) << word << true;
        }
    }
    void questionsAreAskedAgainOverALineThatLosesAThird()
    {
        QFETCH(QString, word);
        QFETCH(bool, isHard);
        for (quint32 seed = 1; seed <= (isHard ? 2 : 4); ++seed) {
            PracticeOptions options = isHard ? PracticeOptions::cod2() : PracticeOptions();
            options.players = 4; // one datagram
            options.lossPercent = 33;
            options.seed = seed;
            options.latencyMs = 30;
            CliWithServer it(options);
            const CliOutcome outcome = it.run({u"--timeout"_s, u"0.8"_s, u"--retries"_s, u"15"_s, word});
            QVERIFY2(outcome.status == 0, outcome.errors.constData());
            QCOMPARE(outcome.output.count('\n'), word == "status"_L1 ? 8 : 5); // heads, players, an empty line
        }
    }

    void aScriptGoesOnOverABadLineAndItsAnswersStayInPlace_data()
    {
        QTest::addColumn<bool>("isHard");
        QTest::newRow("kind server") << false;
        QTest::newRow("hard server") << true;
    }
    void aScriptGoesOnOverABadLineAndItsAnswersStayInPlace()
    {
        QFETCH(bool, isHard);
        PracticeOptions options = isHard ? PracticeOptions::cod2() : PracticeOptions();
        options.lossPercent = 30;
        options.seed = 3;
        CliWithServer it(options);
        const CliOutcome outcome =
            it.run({u"--timeout"_s, u"0.8"_s, u"--retries"_s, u"15"_s, u"sv_hostname"_s, u"nosuch"_s, u"g_gametype"_s});
        QCOMPARE(outcome.status, 5);
        const QByteArray output = outcome.output;
        QVERIFY2(output.indexOf("\"sv_hostname\" is") < output.indexOf("Unknown command \"nosuch\"") &&
                     output.indexOf("Unknown command \"nosuch\"") < output.indexOf("\"g_gametype\" is"),
                 output.constData());
    }
};

GUILESS_TEST(CliLossTest)
#include "tst_cli_loss.moc"
