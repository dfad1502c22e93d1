// SPDX-License-Identifier: MIT
#include "cli_process.h"

using namespace Qt::StringLiterals;

/// The program without a window and the password: where it comes from, and that it is seen nowhere.
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
};

GUILESS_TEST(CliPasswordTest)
#include "tst_cli_password.moc"
