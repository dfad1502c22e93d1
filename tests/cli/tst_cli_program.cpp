// SPDX-License-Identifier: MIT
#include "cli_process.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUdpSocket>

#include <memory>
#include <vector>

#ifdef Q_OS_UNIX
#include <csignal>
#endif

using namespace Qt::StringLiterals;

namespace {

const QByteArray header(4, '\xFF');
const QByteArray table("map: mp_toujane\n"
                       "num score ping guid   name            lastmsg address               qport rate\n"
                       "--- ----- ---- ------ --------------- ------- --------------------- ----- -----\n"
                       "  0     7   55 632819 ^1Band^2Aid^7              50 192.0.2.7:524           804 25000\n"
                       "  3    -1 CNCT      0 Unknown command \"x\"^7     0 loopback               1804  5000\n"
                       "\n");

/// The contents of a settings file with saved servers.
QByteArray savedServers(const QList<std::pair<QByteArray, QByteArray>> &namesAndPasswords, quint16 port)
{
    QByteArray servers = "[servers]\r\n";
    QByteArray ports = "[ports]\r\n";
    QByteArray passwords = "[rcon]\r\n";
    int number = 0;
    for (const auto &[name, password] : namesAndPasswords) {
        const QByteArray key = QByteArray::number(++number);
        servers += "server" + key + '=' + name + "\r\n";
        ports += "port" + key + '=' + QByteArray::number(port) + "\r\n";
        passwords += "rcon" + key + '=' + password + "\r\n";
    }
    return servers + ports + passwords;
}

#ifdef Q_OS_LINUX
/// How often the process was woken up or took the processor by itself.
qint64 wakes(const QProcess &process)
{
    QFile status(u"/proc/%1/status"_s.arg(process.processId()));
    if (!status.open(QIODevice::ReadOnly))
        failTest(u"no process"_s);
    qint64 count = 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.contains("ctxt_switches:"))
            count += line.split('\t').last().toLongLong();
    }
    return count;
}

QByteArray fileOf(const QProcess &process, const QString &name)
{
    QFile file(u"/proc/%1/%2"_s.arg(process.processId()).arg(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
#endif

} // namespace

class CliProgramTest final : public QObject {
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

    void aCommandIsSentOnceAndAQuestionThreeTimes()
    {
        const QList<std::pair<QStringList, int>> copies{
            {{u"map_restart"_s}, 1}, {{u"say"_s, u"a"_s}, 1}, {{u"status"_s}, 3},
            {{u"players"_s}, 3},     {{u"query"_s}, 3},       {{u"check"_s}, 6}, // its two questions
        };
        std::vector<std::unique_ptr<CliWithServer>> all; // side by side, because each waits
        for (const auto &[words, count] : copies) {
            all.push_back(std::make_unique<CliWithServer>());
            all.back()->server.setSilent(true);
            all.back()->cli.start(all.back()->withServer(QStringList{u"--timeout"_s, u"0.75"_s} + words));
        }
        for (std::size_t at = 0; at < all.size(); ++at) {
            const auto &[words, count] = copies.at(static_cast<qsizetype>(at));
            QCOMPARE(all.at(at)->cli.end().status, 3);
            QVERIFY2(all.at(at)->server.requests().size() == count, qPrintable(words.first()));
        }
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

    void statusPrintsTheTableAsItCame()
    {
        CliWithServer it;
        it.server.answer("status", {table.first(250), table.sliced(250)});
        const CliOutcome outcome = it.run({u"status"_s});
        QCOMPARE(outcome.output, table);
        QCOMPARE(outcome.status, 0); // whatever somebody calls himself
    }

    void aReplyIsPrintedAsItCame_data()
    {
        QTest::addColumn<QByteArrayList>("datagrams");
        QTest::addColumn<QByteArray>("printed");
        QTest::newRow("acknowledged") << QByteArrayList{""} << QByteArray();
        QTest::newRow("line") << QByteArrayList{"a  b\n"} << QByteArray("a  b\n");
        QTest::newRow("no line feed") << QByteArrayList{"a\n b"} << QByteArray("a\n b\n");
        QTest::newRow("bare header first") << QByteArrayList{"", "a\n"} << QByteArray("a\n");
        QTest::newRow("several") << QByteArrayList{"a", "b\nc", "d"} << QByteArray("ab\ncd\n");
        QTest::newRow("UTF-8") << QByteArrayList{"\xfc\x80\t\x1b\r\n"} << QByteArray("\xc3\xbc\xe2\x82\xac\t\x1b\r\n");
    }
    void aReplyIsPrintedAsItCame()
    {
        QFETCH(QByteArrayList, datagrams);
        CliWithServer it;
        it.server.answer("foo", datagrams);
        const CliOutcome outcome = it.run({u"foo"_s});
        QTEST(outcome.output, "printed");
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.errors, QByteArray());
    }

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

    void aLostSampleIsNotedAndTheNextOneComes()
    {
        CliWithServer it;
        it.server.setSilent(true);
        QObject::connect(&it.server, &PracticeServer::requested, &it.server,
                         [&it] { it.server.setSilent(it.server.requests().size() < 2); });
        it.cli.start(it.withServer({u"--timeout"_s, u"0.3"_s, u"watch"_s, u"1"_s}));
        QTRY_VERIFY_WITH_TIMEOUT(it.cli.process.bytesAvailable() > 0, 20'000);
        it.cli.process.terminate();
        const CliOutcome outcome = it.cli.end();
        QCOMPARE(outcome.status, 0);
        QVERIFY2(outcome.errors.contains("Z: No answer."), outcome.errors.constData());
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

    void sayTakesAllThatFollows()
    {
        CliWithServer it;
        QCOMPARE(it.run({u"say"_s, u"Restart"_s, u"at  six"_s, u"--now"_s}).status, 0);
        QCOMPARE(it.server.commands(), QByteArrayList{"say Restart at  six --now"});
    }

    void thePasswordComesFromFileEnvironmentOrRow()
    {
        CliWithServer it;
        it.server.setPassword(u"geheim"_s);
        it.cli.writeFile(u"right"_s, "geheim\r\n");
        it.cli.writeFile(u"wrong"_s, "falsch\n");
        it.cli.writeFile(u"molvark.ini"_s, savedServers({{"127.0.0.1", "geheim"}}, it.server.port()));
        const QStringList question{u"say"_s, u"a"_s};
        it.cli.setPassword(u"falsch"_s);
        QCOMPARE(it.cli.run(QStringList{u"--saved"_s, u"1"_s, u"--password-file"_s, u"right"_s} + question).status, 0);
        QCOMPARE(it.cli.run(QStringList{u"--saved"_s, u"1"_s} + question).status, 4);
        it.cli.setPassword(u"geheim"_s);
        QCOMPARE(it.cli.run(QStringList{u"--saved"_s, u"1"_s, u"--password-file"_s, u"wrong"_s} + question).status, 4);
        QCOMPARE(it.run(question).status, 0);
        it.cli.setPassword({});
        QCOMPARE(it.cli.run(QStringList{u"--saved"_s, u"1"_s} + question).status, 0);
        QCOMPARE(it.cli.run(question).status, 0); // the only one that is saved
        const qsizetype before = it.server.requests().size();
        QCOMPARE(it.run(question).status, 2);
        QCOMPARE(it.cli.run(QStringList{u"--saved"_s, u"1"_s, u"--password-file"_s, u"none"_s} + question).status, 2);
        QCOMPARE(it.server.requests().size(), before);
    }

    void aFileOfAnotherKindIsNotReadToItsEnd_data()
    {
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<QByteArray>("told");
        QTest::newRow("password") << QStringList{u"--password-file"_s, u"large"_s, u"say"_s, u"a"_s}
                                  << QByteArray("large has more than 64 KiB");
        QTest::newRow("script") << QStringList{u"--script"_s, u"huge"_s} << QByteArray("huge has more than 4 MB");
#ifdef Q_OS_UNIX
        QTest::newRow("password without end") << QStringList{u"--password-file"_s, u"/dev/zero"_s, u"say"_s, u"a"_s}
                                              << QByteArray("/dev/zero has more than 64 KiB");
        QTest::newRow("script without end")
            << QStringList{u"--script"_s, u"/dev/zero"_s} << QByteArray("/dev/zero has more than 4 MB");
#endif
    }
    void aFileOfAnotherKindIsNotReadToItsEnd()
    {
        QFETCH(QStringList, words);
        QFETCH(QByteArray, told);
        CliWithServer it;
        it.cli.writeFile(u"large"_s, QByteArray(64 * 1024 + 1, 'p'));
        it.cli.writeFile(u"huge"_s, QByteArray("say a\n").repeated(700'000));
        const CliOutcome outcome = it.run(words);
        QCOMPARE(outcome.status, 2);
        QVERIFY2(outcome.errors.contains(told) && outcome.errors.count('\n') == 1, outcome.errors.constData());
        QCOMPARE(it.server.requests().size(), 0);
    }

#ifdef Q_OS_UNIX
    void theStandardInputIsNotReadWithoutEnd()
    {
        CliWithServer it;
        it.cli.process.setStandardInputFile(u"/dev/zero"_s);
        it.cli.start(it.withServer({u"-"_s}));
        const CliOutcome outcome = it.cli.end();
        QCOMPARE(outcome.status, 2);
        QVERIFY2(outcome.errors.contains("The standard input has more than 4 MB"), outcome.errors.constData());
        QCOMPARE(it.server.requests().size(), 0);
    }
#endif

    void aPasswordThatFitsNoRequestIsWrongUsage()
    {
        CliWithServer it;
        it.cli.writeFile(u"long"_s, QByteArray(1017, 'p'));
        const CliOutcome outcome = it.run({u"--password-file"_s, u"long"_s, u"x"_s});
        QCOMPARE(outcome.status, 2);
        QVERIFY2(outcome.errors.contains("The password has 1017 bytes"), outcome.errors.constData());
        QCOMPARE(it.server.requests().size(), 0);
        it.cli.writeFile(u"long"_s, QByteArray(1016, 'p')); // one byte is left for the command
        QCOMPARE(it.run({u"--password-file"_s, u"long"_s, u"x"_s}).status, 4);
        QCOMPARE(it.server.requests().first().size(), 4 + 1023);
    }

    void settingsThatCannotBeReadAreToldOf()
    {
        CliWithServer it;
        QVERIFY(QDir(it.cli.process.workingDirectory()).mkdir(u"molvark.ini"_s));
        for (const QStringList &words : {QStringList{u"say"_s, u"a"_s}, QStringList{u"--saved"_s, u"1"_s, u"x"_s}}) {
            const CliOutcome outcome = it.cli.run(words);
            QCOMPARE(outcome.status, 2);
            QVERIFY2(outcome.errors.contains("molvark.ini in this folder cannot be read: "),
                     outcome.errors.constData());
        }
        QCOMPARE(it.run({u"say"_s, u"a"_s}).status, 0); // they are not needed then
    }

    void savedServersHaveNumbersAndNames()
    {
        CliWithServer it;
        it.cli.writeFile(u"molvark.ini"_s,
                         savedServers({{"nowhere.invalid", "x"}, {"LocalHost", "practice"}, {"a", ""}, {"A", ""}},
                                      it.server.port()));
        for (const auto &wanted : {u"2"_s, u"localhost"_s, u"LOCALHOST"_s})
            QCOMPARE(it.cli.run({u"--saved"_s, wanted, u"say"_s, wanted}).status, 0);
        QCOMPARE(it.server.commands(), (QByteArrayList{"say 2", "say localhost", "say LOCALHOST"}));
        for (const auto &wanted : {u"5"_s, u"0"_s, u"local"_s, u"a"_s}) {
            const CliOutcome outcome = it.cli.run({u"--saved"_s, wanted, u"say"_s, wanted});
            QCOMPARE(outcome.status, 2);
            QCOMPARE(outcome.errors.count('\n'), 1);
        }
        QCOMPARE(it.server.commands().size(), 3);
    }

    void thePasswordIsSeenNowhere()
    {
        CliWithServer it;
        it.server.answer("g_gametype", {"Bad rcon, practice"});
        QVERIFY(it.run({u"check"_s}).output.contains("refused with \"Bad rcon, ********\""));
        it.server.answer("foo", {"it is prac", "tice, and practice\n"});
        it.server.answer("status",
                         {QByteArray(table).replace("BandAid", "practice").replace("^1Band^2Aid", "^1prac^2tice")});
        const CliOutcome outcome = it.run({u"foo"_s, u"set rcon_password practice"_s, u"nosuch practice"_s});
        QCOMPARE(outcome.output.left(28), "it is ********, and ********");
        QVERIFY2(!outcome.output.contains("practice"), outcome.output.constData());
        QVERIFY2(outcome.errors.contains("nosuch ********") && !outcome.errors.contains("practice"),
                 outcome.errors.constData());
        for (const auto &format : {u"--json"_s, u"--csv"_s, u"--timeout=3"_s}) {
            const CliOutcome players = it.run({u"players"_s, format});
            QVERIFY2(!players.output.contains("practice") && players.status == 0, players.output.constData());
        }
    }

    // Some servers lose the last character of a full datagram: here one in the middle of a name.
    void aPasswordThatLostACharacterInANameIsSeenNowhere()
    {
        CliWithServer it;
        const QByteArray whole = QByteArray(table).replace("^1Band^2Aid", "practice");
        const qsizetype lost = whole.indexOf("practice") + 4;
        const QByteArray first = whole.first(lost).replace("mp_toujane", QByteArray(10 + 1293 - lost, 'x'));
        QCOMPARE(first.size() + 10, 1303); // with the header
        it.server.answer("status", {first, whole.sliced(lost + 1)});
        for (const auto &format : {u"--json"_s, u"--csv"_s, u"--timeout=3"_s}) {
            const CliOutcome players = it.run({u"players"_s, format});
            QCOMPARE(players.status, 0);
            QVERIFY2(players.output.contains("*******") && !players.output.contains("pracice"),
                     players.output.constData());
        }
        it.cli.start(it.withServer({u"watch"_s, u"3600"_s}));
        QByteArray line;
        QTRY_VERIFY_WITH_TIMEOUT((line += it.cli.process.readAllStandardOutput()).endsWith('\n'), 20'000);
        it.cli.process.kill();
        QVERIFY2(line.contains("\"name\":\"*******^7\""), line.constData());
    }

    // The heading says what it is, and is not shown.
    void aPasswordThatIsAWordOfTheHeadingLeavesTheListReadable()
    {
        CliWithServer it;
        it.server.setPassword(u"map"_s);
        it.cli.setPassword(u"map"_s);
        it.server.answer("status", {QByteArray(table).replace("Band", "map")});
        const CliOutcome players = it.run({u"players"_s});
        QCOMPARE(players.status, 0);
        QVERIFY2(players.output.contains("***Aid"), players.output.constData());
    }

#ifdef Q_OS_LINUX
    void thePasswordIsNotInTheListOfProcesses()
    {
        CliWithServer it;
        it.server.setSilent(true);
        it.cli.writeFile(u"file"_s, "practice\n");
        it.cli.setPassword({});
        it.cli.start(it.withServer({u"--password-file"_s, u"file"_s, u"say"_s, u"a"_s}));
        QTRY_COMPARE_WITH_TIMEOUT(it.server.requests().size(), 1, 20'000);
        const QByteArray arguments = fileOf(it.cli.process, u"cmdline"_s);
        QVERIFY(arguments.contains("--password-file") && !arguments.contains("practice"));
        QVERIFY(!fileOf(it.cli.process, u"environ"_s).contains("practice"));
        const QByteArray maps = fileOf(it.cli.process, u"maps"_s);
        QVERIFY(maps.contains("libQt6Network") && !maps.contains("libQt6Gui")); // it needs no display
    }

    void waitingCostsNothing()
    {
        CliWithServer it;
        it.server.setSilent(true);
        it.cli.start(it.withServer({u"--retries"_s, u"4"_s, u"--timeout"_s, u"1"_s, u"status"_s}));
        QTRY_COMPARE_WITH_TIMEOUT(it.server.requests().size(), 2, 20'000);
        const qint64 before = wakes(it.cli.process);
        QTRY_COMPARE_WITH_TIMEOUT(it.server.requests().size(), 4, 20'000);
        const qint64 woken = wakes(it.cli.process) - before;
        QVERIFY2(woken < 40, qPrintable(QString::number(woken))); // in two seconds, for two datagrams
    }
#endif

#ifdef Q_OS_UNIX
    void interruptedItEndsWith130_data()
    {
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<int>("signal");
        const QStringList waiting{u"--timeout"_s, u"60"_s, u"say"_s, u"a"_s};
        QTest::newRow("waiting for an answer") << waiting << SIGINT;
        QTest::newRow("the system ends it") << waiting << SIGTERM;
        QTest::newRow("in a pause") << QStringList{u"--script"_s, u"pause"_s} << SIGINT;
        QTest::newRow("in a check") << QStringList{u"--timeout"_s, u"60"_s, u"check"_s} << SIGINT;
    }
    void interruptedItEndsWith130()
    {
        QFETCH(QStringList, words);
        QFETCH(int, signal);
        CliWithServer it;
        it.server.setSilent(!words.contains(u"pause"_s));
        it.cli.writeFile(u"pause"_s, "say a\nsleep 3600\nsay b\n");
        it.cli.start(it.withServer(words));
        QTRY_COMPARE_WITH_TIMEOUT(it.server.requests().size(), 1, 20'000);
        QCOMPARE(kill(static_cast<pid_t>(it.cli.process.processId()), signal), 0);
        QCOMPARE(it.cli.end().status, 130);
        QCOMPARE(it.server.requests().size(), 1);
    }
#endif

#ifdef Q_OS_LINUX
    void ctrlCEndsTheReadingOfTheStandardInput()
    {
        CliWithServer it;
        it.cli.start(it.withServer({u"-"_s}));
        it.cli.process.write("say a\n");
        QTRY_VERIFY_WITH_TIMEOUT(wakes(it.cli.process) > 1 && fileOf(it.cli.process, u"wchan"_s) != "0" &&
                                     fileOf(it.cli.process, u"maps"_s).contains("libQt6Network"),
                                 20'000);
        // It may still be on its way to the reading: then the signal ends it there or at its first line.
        QTimer again;
        QObject::connect(&again, &QTimer::timeout, &it.cli.process,
                         [&it] { kill(static_cast<pid_t>(it.cli.process.processId()), SIGINT); });
        again.start(200);
        QCOMPARE(it.cli.end().status, 130);
        QCOMPARE(it.server.requests().size(), 0);
    }
#endif

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

    void aHostThatCannotBeFoundIsNoAnswer()
    {
        CliProcess cli;
        for (const auto &word : {u"status"_s, u"check"_s}) {
            const CliOutcome outcome = cli.run({u"--server"_s, u"nowhere.invalid"_s, word});
            QCOMPARE(outcome.status, 3);
            const QByteArray told = outcome.output + outcome.errors;
            QVERIFY2(told.contains("o address was found for nowhere.invalid"), told.constData());
        }
    }

    void aClosedPortIsNoAnswer()
    {
        CliWithServer it;
        it.server.close();
        CliProcess cli;
        QUdpSocket other; // so that nobody else gets that port
        QVERIFY(other.bind(QHostAddress::LocalHost, 0));
        const CliOutcome outcome =
            cli.run({u"--server"_s, u"127.0.0.1:1"_s, u"--timeout"_s, u"0.3"_s, u"say"_s, u"a"_s});
        QCOMPARE(outcome.status, 3);
    }

    void strangersAndOddHeadersAreNotHeard()
    {
        CliWithServer it;
        it.server.answer("foo", {});
        QUdpSocket stranger;
        QVERIFY(stranger.bind(QHostAddress::LocalHost, 0));
        QObject::connect(&it.server, &PracticeServer::happened, &it.server, [&it, &stranger](const QString &line) {
            if (!line.contains(u"rcon foo"_s))
                return;
            const auto port = line.section(u':', 1, 1).toUShort();
            stranger.writeDatagram(header + "print\nfrom a stranger\n", QHostAddress::LocalHost, port);
            for (const QByteArray &datagram : {QByteArray("print\nno header\n"), header + "disconnect",
                                               header + "print", header + "statusResponse\n\\a\\b\n", QByteArray()})
                it.server.sendRaw(datagram);
            it.server.sendRaw(header + "print\nfrom the server\n");
        });
        const CliOutcome outcome = it.run({u"foo"_s});
        QCOMPARE(outcome.output, "from the server\n");
        QCOMPARE(outcome.status, 0);
    }

    void aServerThatNeverStopsIsLeft()
    {
        CliWithServer it;
        it.server.answer("foo", {"x\n"});
        QTimer flood;
        QObject::connect(&flood, &QTimer::timeout, &it.server, [&it] {
            for (int datagram = 0; datagram < 20; ++datagram)
                it.server.sendRaw(header + "print\n" + QByteArray(8000, 'x'));
        });
        QObject::connect(&it.server, &PracticeServer::requested, &flood, [&flood] { flood.start(5); });
        const CliOutcome outcome = it.run({u"foo"_s});
        QCOMPARE(outcome.status, 0);
        QVERIFY2(outcome.errors.contains("had no end"), outcome.errors.constData());
        QVERIFY(outcome.output.size() <= 4 * 1024 * 1024 + 1);
    }

    void whatCannotBeWrittenIsTold()
    {
        if (!QFile::exists(u"/dev/full"_s))
            QSKIP("no full disk here");
        CliWithServer it;
        it.cli.process.setStandardOutputFile(u"/dev/full"_s);
        const CliOutcome outcome = it.run({u"sv_hostname"_s});
        QCOMPARE(outcome.status, 2);
        QVERIFY2(outcome.errors.contains("cannot be written"), outcome.errors.constData());
    }

    void helpAndVersionNeedNoServer()
    {
        CliProcess cli;
        QCOMPARE(cli.run({u"--version"_s}).output, QByteArray("molvark-cli " MOLVARK_VERSION "\n"));
        const CliOutcome help = cli.run({u"--help"_s});
        QCOMPARE(help.status, 0);
        QVERIFY(help.output.startsWith("Usage: molvark-cli") && help.errors.isEmpty());
        const CliOutcome nothing = cli.run({});
        QCOMPARE(nothing.status, 2);
        QCOMPARE(nothing.errors, "molvark-cli: There is no command. (--help says more.)\n");
    }
};

GUILESS_TEST(CliProgramTest)
#include "tst_cli_program.moc"
