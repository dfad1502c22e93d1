// SPDX-License-Identifier: MIT
#include "cli_process.h"

using namespace Qt::StringLiterals;

/// Several commands, from the command line, a file or the standard input, one after the other.
class CliCommandsTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void commandsGoOutInTheirOrder750MillisecondsApart()
    {
        CliWithServer it;
        const CliOutcome outcome = it.run({u"say one"_s, u"say two"_s, u"sv_hostname"_s});
        QCOMPARE(outcome.status, 0);
        QCOMPARE(it.server.commands(), (QByteArrayList{"say one", "say two", "sv_hostname"}));
        QVERIFY2(it.leastApart() >= leastPause, qPrintable(QString::number(it.leastApart())));
        QCOMPARE(outcome.errors, QByteArray());
        QVERIFY2(outcome.output.startsWith("\"sv_hostname\" is: "), outcome.output.constData());
    }

    void copiesAreAsFarApart()
    {
        CliWithServer it;
        it.server.setSilent(true);
        const CliOutcome outcome = it.run({u"--timeout"_s, u"0.1"_s, u"--retries"_s, u"2"_s, u"say a"_s, u"say b"_s});
        QCOMPARE(outcome.status, 3);
        QCOMPARE(it.server.commands(), (QByteArrayList{"say a", "say a", "say a"}));
        QVERIFY2(it.leastApart() >= leastPause, qPrintable(QString::number(it.leastApart())));
        QVERIFY2(outcome.errors.contains("No answer to: say a"), outcome.errors.constData());
    }

    void commandsComeFromTheStandardInput()
    {
        CliWithServer it;
        const CliOutcome outcome = it.run({u"-"_s}, "# evening\r\nsay #1 J\xc3\xbcrgen\r\n\nsleep 1.2\n  say b");
        QCOMPARE(outcome.status, 0);
        QCOMPARE(it.server.commands(), (QByteArrayList{"say #1 J\xfcrgen", "say b"}));
        QVERIFY2(it.leastApart() >= 1190, qPrintable(QString::number(it.leastApart())));
    }

    void commandsComeFromAFile()
    {
        CliWithServer it;
        it.cli.writeFile(u"evening.cfg"_s, "say a\nsay b\n");
        QCOMPARE(it.run({u"--script"_s, u"evening.cfg"_s}).status, 0);
        QCOMPARE(it.server.commands(), (QByteArrayList{"say a", "say b"}));
        QCOMPARE(it.run({u"--script"_s, u"missing.cfg"_s}).status, 2);
        QCOMPARE(it.server.commands().size(), 2);
    }

    void whatAServerCouldNotDoGoesOnAndCounts()
    {
        CliWithServer it;
        const CliOutcome outcome = it.run({u"say a"_s, u"nosuch"_s, u"clientkick 63"_s, u"say b"_s});
        QCOMPARE(outcome.status, 5);
        QCOMPARE(it.server.commands(), (QByteArrayList{"say a", "nosuch", "clientkick 63", "say b"}));
        QVERIFY2(outcome.errors.contains("did not do it: nosuch"), outcome.errors.constData());
        QVERIFY(outcome.output.startsWith("Unknown command \"nosuch\"\n"));
        QCOMPARE(it.run({u"tell"_s}).status, 5); // "Usage: ..."
        const CliOutcome lost = it.run({u"map mp_nowhere"_s});
        QCOMPARE(lost.status, 5);
        QVERIFY2(lost.output.startsWith("Can't find map "), lost.output.constData());
    }

    void theFirstThatIsNotDoneCounts()
    {
        CliWithServer it;
        QObject::connect(&it.server, &PracticeServer::requested, &it.server,
                         [&it] { it.server.setSilent(it.server.requests().size() > 1); });
        QCOMPARE(it.run({u"--timeout"_s, u"0.5"_s, u"nosuch"_s, u"say a"_s, u"say b"_s}).status, 5);
        QCOMPARE(it.server.commands(), (QByteArrayList{"nosuch", "say a"})); // and silence ends it
    }

    void aRefusedPasswordEndsAScript()
    {
        CliWithServer it;
        it.cli.setPassword(u"wrong"_s);
        const CliOutcome outcome = it.run({u"say a"_s, u"say b"_s});
        QCOMPARE(outcome.status, 4);
        QCOMPARE(outcome.output, "Bad rconpassword.\n");
        QCOMPARE(it.server.requests().size(), 1);
    }

    void whatCannotBeSentIsWrongUsageAndNotSent_data()
    {
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<QByteArray>("input");
        QTest::newRow("too long") << QStringList{u"say a"_s, QString(1024, u'x')} << QByteArray();
        QTest::newRow("no byte") << QStringList{u"say a"_s, u"say \u0142"_s} << QByteArray();
        QTest::newRow("too long in a script") << QStringList{u"-"_s} << QByteArray("say a\n" + QByteArray(1024, 'x'));
        QTest::newRow("no UTF-8") << QStringList{u"-"_s} << QByteArray("say a\nsay \xff\n");
        QTest::newRow("no pause") << QStringList{u"-"_s} << QByteArray("say a\nsleep long\n");
    }
    void whatCannotBeSentIsWrongUsageAndNotSent()
    {
        QFETCH(QStringList, words);
        QFETCH(QByteArray, input);
        CliWithServer it;
        const CliOutcome outcome = it.run(words, input);
        QCOMPARE(outcome.status, 2);
        QCOMPARE(outcome.output, QByteArray());
        QCOMPARE(outcome.errors.count('\n'), 1);
        QCOMPARE(it.server.requests().size(), 0);
    }

    void aCommandOf1023BytesIsSent()
    {
        CliWithServer it;
        const CliOutcome outcome = it.run({QString(1023, u'x')});
        QCOMPARE(it.server.requests().size(), 1);
        QCOMPARE(it.server.requests().first().size(), 4 + 5 + 9 + 1023);
        QVERIFY2(outcome.errors.contains("more than 1,023 bytes"), outcome.errors.constData());
    }
};

GUILESS_TEST(CliCommandsTest)
#include "tst_cli_commands.moc"
