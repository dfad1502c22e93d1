// SPDX-License-Identifier: MIT
#include "cli_hands.h"
#include "cli_process.h"

#include <QUdpSocket>

#include <memory>
#include <vector>

#ifdef Q_OS_UNIX
#include <csignal>
#endif

using namespace Qt::StringLiterals;

/// The program without a window as a whole: its answers, its ways to end, and bad company.
class CliProgramTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

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

    void sayTakesAllThatFollows()
    {
        CliWithServer it;
        QCOMPARE(it.run({u"say"_s, u"Restart"_s, u"at  six"_s, u"--now"_s}).status, 0);
        QCOMPARE(it.server.commands(), QByteArrayList{"say Restart at  six --now"});
    }

#ifdef Q_OS_LINUX
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
        QUdpSocket closed; // nobody has its port yet
        QVERIFY(closed.bind(QHostAddress::LocalHost, 0));
        const QString server = u"127.0.0.1:%1"_s.arg(closed.localPort());
        closed.close();
        CliProcess cli;
        const CliOutcome outcome = cli.run({u"--server"_s, server, u"--timeout"_s, u"0.3"_s, u"say"_s, u"a"_s});
        QCOMPARE(outcome.status, 3);
        QVERIFY2(outcome.errors.contains("No answer to: say a"), outcome.errors.constData());
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
