// SPDX-License-Identifier: MIT
#include "cli_process.h"

using namespace Qt::StringLiterals;

/// The words "query" and "check".
class CliCheckTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void queryNeedsNoPassword()
    {
        CliWithServer it;
        it.cli.setPassword({});
        const CliOutcome outcome = it.run({u"query"_s});
        QCOMPARE(outcome.status, 0);
        QCOMPARE(it.server.commands(), QByteArrayList{"getstatus"});
        QVERIFY2(outcome.output.startsWith("\\") && outcome.output.contains("\\mapname\\"), outcome.output.constData());
    }

    // The clock of a busy machine can only make a run longer.
    void thePublicStatusHoldsNothingUp()
    {
        CliWithServer it;
        qint64 least = 10'000;
        for (int run = 0; run < 8 && least >= 700; ++run) {
            QElapsedTimer since;
            since.start();
            QCOMPARE(it.run({u"query"_s}).status, 0);
            least = std::min(least, since.elapsed());
        }
        QVERIFY2(least < 700, qPrintable(QString::number(least)));
    }

    void checkPrintsItsSteps()
    {
        CliWithServer it;
        const CliOutcome outcome = it.run({u"check"_s});
        QCOMPARE(outcome.status, 0);
        QCOMPARE(it.server.commands(), (QByteArrayList{"getstatus", "g_gametype", "dvarlist s*"}));
        QStringList steps;
        for (const QByteArray &line : outcome.output.split('\n')) {
            if (!line.isEmpty() && !line.startsWith("    "))
                steps.append(QString::fromUtf8(line.first(line.indexOf(':'))));
        }
        QCOMPARE(steps, QStringList({u"Name"_s, u"Public query"_s, u"Console"_s, u"Long reply"_s}));
        QVERIFY(outcome.output.contains("\n    The RCON password is right.\n"));
    }

    void checkHasTheStatusOfItsConsoleStep()
    {
        CliWithServer it;
        it.cli.setPassword(u"wrong"_s);
        const CliOutcome refused = it.run({u"check"_s});
        QCOMPARE(refused.status, 4);
        QVERIFY2(refused.output.contains("Console: refused with \"Bad rconpassword.\""), refused.output.constData());
        it.cli.setPassword(u"practice"_s);
        it.server.answer("g_gametype", {});
        QCOMPARE(it.run({u"check"_s, u"--retries"_s, u"0"_s, u"--timeout"_s, u"0.5"_s}).status, 3);
        it.server.answerAsUsual("g_gametype");
        it.server.answer("getstatus", {});
        QCOMPARE(it.run({u"check"_s, u"--retries"_s, u"0"_s, u"--timeout"_s, u"0.5"_s}).status,
                 0); // the public query is not what counts
    }
};

GUILESS_TEST(CliCheckTest)
#include "tst_cli_check.moc"
