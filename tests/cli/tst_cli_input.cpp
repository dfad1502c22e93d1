// SPDX-License-Identifier: MIT
#include "cli_hands.h"
#include "cli_process.h"

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;

namespace {

#ifdef Q_OS_LINUX
/// Whether the process takes signals by itself and sleeps, which it does first when it waits for something to read.
bool waitsForInput(const QProcess &process)
{
    bool isAsleep = false;
    quint64 caught = 0;
    for (const QByteArray &line : fileOf(process, u"status"_s).split('\n')) {
        if (line.startsWith("State:"))
            isAsleep = line.contains("S (sleeping)");
        else if (line.startsWith("SigCgt:"))
            caught = line.sliced(7).trimmed().toULongLong(nullptr, 16);
    }
    return isAsleep && (caught >> (SIGTERM - 1)) % 2 == 1;
}
#endif

} // namespace

/// What the program without a window reads: files, pipes and its standard input.
class CliInputTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aFileThatCannotBeReadIsWrongUsage()
    {
        CliWithServer it;
        QVERIFY(QDir(it.cli.process.workingDirectory()).mkdir(u"folder"_s));
        for (const auto &name : {u"missing"_s, u"folder"_s}) {
            for (const QStringList &words :
                 {QStringList{u"--script"_s, name}, QStringList{u"--password-file"_s, name, u"say"_s, u"a"_s}}) {
                const CliOutcome outcome = it.run(words);
                QCOMPARE(outcome.status, 2);
                QVERIFY2(outcome.errors.startsWith("molvark-cli: " + name.toUtf8() + " cannot be read: ") &&
                             outcome.errors.count('\n') == 1,
                         outcome.errors.constData());
            }
        }
        QCOMPARE(it.server.requests().size(), 0);
    }

    void aFileMayHaveAnyName()
    {
        CliWithServer it;
        const QString name = u"J\u00fcrgen \u0142.txt"_s;
        it.cli.writeFile(name, "say a\r\n");
        QCOMPARE(it.run({u"--script"_s, name}).status, 0);
        QCOMPARE(it.server.commands(), QByteArrayList{"say a"});
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

#ifdef Q_OS_LINUX
    void aPipeThatNobodyWritesToIsLeftWithCtrlC_data()
    {
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<int>("signal");
        QTest::addColumn<bool>("isOpened"); // by somebody who writes nothing
        const QStringList password{u"--password-file"_s, u"pipe"_s, u"say"_s, u"a"_s};
        QTest::newRow("script") << QStringList{u"--script"_s, u"pipe"_s} << SIGINT << false;
        QTest::newRow("script, ended by the system") << QStringList{u"--script"_s, u"pipe"_s} << SIGTERM << false;
        QTest::newRow("script, opened") << QStringList{u"--script"_s, u"pipe"_s} << SIGINT << true;
        QTest::newRow("password") << password << SIGINT << false;
        QTest::newRow("password, opened") << password << SIGTERM << true;
    }
    void aPipeThatNobodyWritesToIsLeftWithCtrlC()
    {
        QFETCH(QStringList, words);
        QFETCH(int, signal);
        QFETCH(bool, isOpened);
        CliWithServer it;
        const QString path = it.cli.process.workingDirectory() + u"/pipe"_s;
        QCOMPARE(mkfifo(path.toLocal8Bit().constData(), 0600), 0);
        QFile writer(path);
        if (isOpened)
            QVERIFY(writer.open(QIODevice::ReadWrite | QIODevice::Unbuffered)); // on Linux this waits for nobody
        it.cli.start(it.withServer(words));
        QTRY_VERIFY_WITH_TIMEOUT(waitsForInput(it.cli.process), 20'000);
        QCOMPARE(kill(static_cast<pid_t>(it.cli.process.processId()), signal), 0);
        const CliOutcome outcome = it.cli.end();
        QCOMPARE(outcome.status, 130);
        QCOMPARE(outcome.output + outcome.errors, QByteArray());
        QCOMPARE(it.server.requests().size(), 0);
    }

    void aStandardInputThatCannotBeReadIsWrongUsage()
    {
        CliWithServer it;
        it.cli.process.setStandardInputFile(u"/"_s);
        it.cli.start(it.withServer({u"-"_s}));
        const CliOutcome outcome = it.cli.end();
        QCOMPARE(outcome.status, 2);
        QVERIFY2(outcome.errors.startsWith("molvark-cli: The standard input cannot be read: "),
                 outcome.errors.constData());
        QCOMPARE(it.server.requests().size(), 0);
    }

    void ctrlCEndsTheReadingOfTheStandardInput()
    {
        CliWithServer it;
        it.cli.start(it.withServer({u"-"_s}));
        it.cli.process.write("say a\n");
        QTRY_VERIFY_WITH_TIMEOUT(waitsForInput(it.cli.process), 20'000);
        QCOMPARE(kill(static_cast<pid_t>(it.cli.process.processId()), SIGINT), 0);
        QCOMPARE(it.cli.end().status, 130);
        QCOMPARE(it.server.requests().size(), 0);
    }
#endif
};

GUILESS_TEST(CliInputTest)
#include "tst_cli_input.moc"
