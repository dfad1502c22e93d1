// SPDX-License-Identifier: MIT
#include "cli_process.h"

using namespace Qt::StringLiterals;

namespace {

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

} // namespace

/// The servers that are saved in molvark.ini, and where the password comes from.
class CliSavedTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

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
};

GUILESS_TEST(CliSavedTest)
#include "tst_cli_saved.moc"
