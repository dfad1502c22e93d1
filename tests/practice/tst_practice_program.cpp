// SPDX-License-Identifier: MIT
#include "practice/log_line.h"
#include "practice/practice_arguments.h"
#include "practice_client.h"
#include "test_class.h"

#include <QProcess>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

const QString program = QStringLiteral(MOLVARK_PRACTICE_PROGRAM);

struct Outcome {
    int status = -1;
    QString output;
    QString errors;
};

/// What a program printed, with the line ends of a text.
QString text(const QByteArray &printed)
{
    return QString::fromLocal8Bit(printed).replace(u"\r\n"_s, u"\n"_s);
}

Outcome run(const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished())
        return {};
    return {process.exitCode(), text(process.readAllStandardOutput()), text(process.readAllStandardError())};
}

void stop(QProcess &process)
{
#ifdef Q_OS_WIN
    process.kill(); // a program without a window hears only Ctrl+C there
#else
    process.terminate();
#endif
}

quint16 portIn(const QString &line)
{
    static const QRegularExpression port(u"^\\d\\d:\\d\\d:\\d\\d Listening on 127\\.0\\.0\\.1 port (\\d+)"_s);
    return port.match(line).captured(1).toUShort();
}

} // namespace

class PracticeProgramTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void withoutArgumentsItServesThisMachine()
    {
        const PracticeArguments arguments = readPracticeArguments({u"molvark-practice"_s});
        QCOMPARE(arguments.fault, QString());
        QCOMPARE(arguments.notice, QString());
        QCOMPARE(arguments.port, 28960);
        QCOMPARE(arguments.address, QHostAddress(QHostAddress::LocalHost));
        QCOMPARE(arguments.options.password, u"practice"_s);
        QCOMPARE(arguments.options.players, 12);
        QCOMPARE(arguments.options.datagramSize, 1000);
        QCOMPARE(arguments.options.lossPercent, 0);
        QCOMPARE(arguments.options.latencyMs, 0);
        QCOMPARE(arguments.options.mapLoadMs, 2000);
        QCOMPARE(arguments.options.rate, PracticeOptions::Rate::Unlimited);
        QCOMPARE(arguments.options.headLines, 3);
        QVERIFY(!arguments.options.reorder && !arguments.options.silent && !arguments.options.quirks);
        QCOMPARE(arguments.options.mod, QString());
    }

    void everyOptionArrives()
    {
        const PracticeArguments arguments = readPracticeArguments(
            {u"p"_s,      u"--port"_s,    u"4000"_s,      u"--address"_s, u"127.0.0.2"_s,  u"--password"_s,
             u"pw"_s,     u"--players"_s, u"64"_s,        u"--seed"_s,    u"4294967295"_s, u"--datagram-size=40"_s,
             u"--loss"_s, u"100"_s,       u"--latency"_s, u"250"_s,       u"--map-load"_s, u"0"_s,
             u"--mod"_s,  u"hob"_s,       u"--reorder"_s, u"--silent"_s,  u"--quirks"_s,   u"--head-lines"_s,
             u"2"_s});
        QCOMPARE(arguments.fault, QString());
        QCOMPARE(arguments.port, 4000);
        QCOMPARE(arguments.address, QHostAddress(u"127.0.0.2"_s));
        QCOMPARE(arguments.options.password, u"pw"_s);
        QCOMPARE(arguments.options.players, 64);
        QCOMPARE(arguments.options.seed, 4294967295U);
        QCOMPARE(arguments.options.datagramSize, 40);
        QCOMPARE(arguments.options.lossPercent, 100);
        QCOMPARE(arguments.options.latencyMs, 250);
        QCOMPARE(arguments.options.mapLoadMs, 0);
        QCOMPARE(arguments.options.headLines, 2);
        QCOMPARE(arguments.options.mod, u"hob"_s);
        QVERIFY(arguments.options.reorder && arguments.options.silent && arguments.options.quirks);
    }

    void theRateIsOneOfTwo()
    {
        const auto rate = [](const QString &value) {
            const PracticeArguments arguments = readPracticeArguments({u"p"_s, u"--rate"_s, value});
            return arguments.fault.isEmpty() ? arguments.options.rate : PracticeOptions::Rate::Unlimited;
        };
        QCOMPARE(rate(u"500ms"_s), PracticeOptions::Rate::HalfSecond);
        QCOMPARE(rate(u"burst"_s), PracticeOptions::Rate::Burst);
    }

    void aBadValueIsNamed_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("fault");
        const auto row = [](const QStringList &arguments, const QString &fault) {
            QTest::newRow(arguments.join(u' ').toLatin1().constData()) << arguments << fault;
        };
        row({u"--port"_s, u"65536"_s}, u"--port takes a whole number from 0 to 65535, not \"65536\"."_s);
        row({u"--port"_s, u"x"_s}, u"--port takes a whole number from 0 to 65535, not \"x\"."_s);
        row({u"--players"_s, u"65"_s}, u"--players takes a whole number from 0 to 64, not \"65\"."_s);
        row({u"--players"_s, u"-1"_s}, u"--players takes a whole number from 0 to 64, not \"-1\"."_s);
        row({u"--seed"_s, u"4294967296"_s}, u"--seed takes a whole number from 0 to 4294967295, not \"4294967296\"."_s);
        row({u"--loss"_s, u"101"_s}, u"--loss takes a whole number from 0 to 100, not \"101\"."_s);
        row({u"--latency"_s, u""_s}, u"--latency takes a whole number from 0 to 60000, not \"\"."_s);
        row({u"--datagram-size"_s, u"0"_s}, u"--datagram-size takes a whole number from 1 to 8000, not \"0\"."_s);
        row({u"--datagram-size"_s, u"8001"_s}, u"--datagram-size takes a whole number from 1 to 8000, not \"8001\"."_s);
        row({u"--rate"_s, u"500"_s}, u"--rate takes \"500ms\" or \"burst\", not \"500\"."_s);
        row({u"--rate"_s, u""_s}, u"--rate takes \"500ms\" or \"burst\", not \"\"."_s);
        row({u"--head-lines"_s, u"1"_s}, u"--head-lines takes a whole number from 2 to 3, not \"1\"."_s);
        row({u"--head-lines"_s, u"4"_s}, u"--head-lines takes a whole number from 2 to 3, not \"4\"."_s);
        row({u"--mod"_s, u"other"_s}, u"--mod takes \"hob\", not \"other\"."_s);
        row({u"--address"_s, u"nowhere"_s}, u"--address takes a numeric address of this machine, not \"nowhere\"."_s);
        row({u"--password"_s, u"a b"_s}, u"--password takes one word: a blank ends the password in a request."_s);
        row({u"extra"_s}, u"Unexpected argument \"extra\"."_s);
    }
    void aBadValueIsNamed()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, fault);
        QCOMPARE(readPracticeArguments(QStringList{u"p"_s} + arguments).fault, fault);
    }

    void aLogLineHasTheTimeAndNoControlCharacters()
    {
        QCOMPARE(logLine(QTime(7, 5, 9), u"a\x1b[2J\nb\x7f\u0085 \u00e9"_s),
                 u"07:05:09 a\\x1B[2J\\x0Ab\\x7F\\x85 \u00e9"_s);
    }

    void helpListsTheOptions()
    {
        const Outcome outcome = run({u"--help"_s});
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.errors, QString());
        for (const auto &option :
             {u"--port"_s, u"--address"_s, u"--password"_s, u"--players"_s, u"--seed"_s, u"--datagram-size"_s,
              u"--loss"_s, u"--latency"_s, u"--reorder"_s, u"--silent"_s, u"--quirks"_s, u"--mod"_s, u"--rate"_s,
              u"--head-lines"_s, u"--help"_s, u"--version"_s})
            QVERIFY2(outcome.output.contains(option), qPrintable(option));
    }

    void helpTellsDefaultsAndLimits()
    {
        const QString help = run({u"--help"_s}).output.simplified();
        for (const auto &text :
             {u"takes any free one (28960)."_s, u"to listen on (127.0.0.1)."_s, u"rcon password (practice)."_s,
              u"on the server, 0 to 64 (12)."_s, u"players and losses (1)."_s, u"datagram, 1 to 8000 (1000)."_s,
              u"each way, 0 to 100 (0)."_s, u"reply leaves, 0 to 60000 (0)."_s, u"map loads, 0 to 60000 (2000)."_s,
              u"\"500ms\" hears one rcon command in that time, \"burst\" ten requests"_s,
              u"\"dir\" lists, 2 to 3 (3)."_s, u"Run a mod; \"hob\" is the only one."_s})
            QVERIFY2(help.contains(text), qPrintable(text));
    }

    void versionNamesTheProgram()
    {
        const Outcome outcome = run({u"--version"_s});
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.output, QStringLiteral("molvark-practice " MOLVARK_VERSION "\n"));
    }

    void aWrongCommandLineIsRefused_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("word");
        QTest::newRow("unknown option") << QStringList{u"--bogus"_s} << u"bogus"_s;
        QTest::newRow("missing value") << QStringList{u"--loss"_s} << u"--loss"_s;
        QTest::newRow("bad value") << QStringList{u"--players"_s, u"many"_s} << u"many"_s;
#ifdef Q_OS_UNIX // Wine lets a program listen on an address that the machine does not have
        QTest::newRow("foreign address") << QStringList{u"--port"_s, u"0"_s, u"--address"_s, u"192.0.2.1"_s}
                                         << u"192.0.2.1"_s;
#endif
    }
    void aWrongCommandLineIsRefused()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, word);
        const Outcome outcome = run(arguments);
        QCOMPARE(outcome.status, 1);
        QCOMPARE(outcome.output, QString());
        QVERIFY2(outcome.errors.contains(word), qPrintable(outcome.errors));
        QCOMPARE(outcome.errors.count(u'\n'), 1);
    }

    void aTakenPortEndsTheProgram()
    {
        QUdpSocket taken;
        QVERIFY(taken.bind(QHostAddress::LocalHost, 0, QAbstractSocket::DontShareAddress));
        const QString port = QString::number(taken.localPort());
        const Outcome outcome = run({u"--port"_s, port});
        QCOMPARE(outcome.status, 1);
        QVERIFY2(outcome.errors.contains(u"port "_s + port), qPrintable(outcome.errors));
        QCOMPARE(outcome.errors.count(u'\n'), 1);
    }

    void itDropsWhatComesTooFastWhenTold()
    {
        QProcess process;
        process.start(program, {u"--port"_s, u"0"_s, u"--rate"_s, u"burst"_s});
        QTRY_VERIFY(process.canReadLine());
        PracticeClient client(portIn(QString::fromLocal8Bit(process.readLine())));
        QString log;
        for (int turn = 0; turn < 100 && !log.contains(u"not answered: too soon after others"_s); ++turn) {
            client.send("\xFF\xFF\xFF\xFFgetstatus");
            QTRY_VERIFY(process.canReadLine());
            log += QString::fromLocal8Bit(process.readAllStandardOutput());
        }
        QVERIFY2(log.contains(u"not answered: too soon after others"_s), qPrintable(log));
        stop(process);
        QTRY_COMPARE(process.state(), QProcess::NotRunning);
    }

    // One process each: here the socket's notifications come late at times, which must not leave the server deaf.
    void itAnswersHoweverOftenItIsAsked()
    {
        QProcess process;
        process.start(program, {u"--port"_s, u"0"_s});
        QTRY_VERIFY(process.canReadLine());
        PracticeClient client(portIn(QString::fromLocal8Bit(process.readLine())));
        for (int turn = 1; turn <= 20; ++turn) {
            client.rcon("say hello");
            QTRY_COMPARE(client.count(), turn);
        }
        stop(process);
        QTRY_COMPARE(process.state(), QProcess::NotRunning);
    }

    void itServesTellsAndStops()
    {
        QProcess process;
        process.start(program, {u"--port"_s, u"0"_s, u"--password"_s, u"pw"_s});
        QTRY_VERIFY(process.canReadLine());
        const quint16 port = portIn(QString::fromLocal8Bit(process.readLine()));
        QVERIFY(port != 0);

        PracticeClient client(port);
        client.rcon("sv_hostname\"\x1b[2JHi\"", "pw");
        QTRY_COMPARE(client.datagrams(), QList<QByteArray>({"\xFF\xFF\xFF\xFFprint\n"}));
        client.rcon("dvarlist sv_hostname", "pw");
        QTRY_VERIFY(client.text().startsWith("S   A   sv_hostname \"\x1b[2JHi\"\n"));

        stop(process);
        QTRY_COMPARE(process.state(), QProcess::NotRunning);
        const QString log = text(process.readAllStandardOutput());
        QVERIFY(log.contains(u": rcon sv_hostname\"\\x1B[2JHi\"\n"_s));
        QVERIFY(log.contains(u" sv_hostname is now \"\\x1B[2JHi\"\n"_s));
        QVERIFY(!log.contains(u"pw"_s));
        QCOMPARE(process.readAllStandardError(), QByteArray());
#ifdef Q_OS_UNIX
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 0);
        QVERIFY(log.endsWith(u" Stopped.\n"_s));
#endif
    }
};

GUILESS_TEST(PracticeProgramTest)
#include "tst_practice_program.moc"
