// SPDX-License-Identifier: MIT
#include "cli_hands.h"
#include "cli_process.h"

using namespace Qt::StringLiterals;

/// The program without a window and the password: that it is taken, and seen nowhere.
class CliPasswordTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    // The server takes it without them, and so it stands in the answers.
    void aPasswordWithBlanksAroundItIsHidden_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("environment");
        QTest::newRow("file") << QByteArray("practice \n") << u"x"_s;
        QTest::newRow("file with a tab") << QByteArray("\tpractice\n") << u"x"_s;
        QTest::newRow("environment") << QByteArray() << u" practice "_s;
    }
    void aPasswordWithBlanksAroundItIsHidden()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, environment);
        CliWithServer it;
        it.cli.setPassword(environment);
        it.cli.writeFile(u"file"_s, file);
        const QStringList option = file.isEmpty() ? QStringList() : QStringList{u"--password-file"_s, u"file"_s};
        const CliOutcome outcome = it.run(option + QStringList{u"practice"_s});
        QCOMPARE(outcome.output, "Unknown command \"********\"\n");
        QCOMPARE(outcome.status, 5);
        QVERIFY2(!outcome.errors.contains("practice"), outcome.errors.constData());
        QVERIFY(it.server.requests().first().startsWith("\xFF\xFF\xFF\xFFrcon practice practice"));
        it.server.answerRaw("getstatus", {"\xFF\xFF\xFF\xFFstatusResponse\n\\sv_hostname\\practice\n"});
        QCOMPARE(it.run(option + QStringList{u"query"_s}).output, "\\sv_hostname\\********\n");
    }

    void aRefusalIsReadableWhateverThePassword()
    {
        CliWithServer it(PracticeOptions::cod2());
        it.cli.setPassword(u"password"_s);
        QCOMPARE(it.run({u"status"_s}).output, "Invalid password.\n");
        const CliOutcome check = it.run({u"check"_s});
        QVERIFY2(check.output.contains("Console: refused with \"Invalid password.\""), check.output.constData());
    }

    void blanksAreNoPassword()
    {
        CliWithServer it;
        it.cli.writeFile(u"blank"_s, "  \n");
        const CliOutcome file = it.run({u"--password-file"_s, u"blank"_s, u"say"_s, u"a"_s});
        QCOMPARE(file.status, 2);
        QCOMPARE(file.errors, "molvark-cli: The password file is empty. (--help says more.)\n");
        it.cli.setPassword(u"  "_s);
        const CliOutcome environment = it.run({u"say"_s, u"a"_s});
        QCOMPARE(environment.status, 2);
        QVERIFY2(environment.errors.contains("There is no RCON password"), environment.errors.constData());
        QCOMPARE(it.run({u"query"_s}).status, 0); // which needs none
        QCOMPARE(it.server.commands(), QByteArrayList{"getstatus"});
    }

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
#endif
};

GUILESS_TEST(CliPasswordTest)
#include "tst_cli_password.moc"
