// SPDX-License-Identifier: MIT
#include "cli/exit_status.h"
#include "cli/masking.h"
#include "cli/script.h"
#include "cli/wrong_usage.h"
#include "ledger/verdict.h"
#include "test_class.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

/// Commands as they are, and pauses as their milliseconds.
QStringList shown(const QList<ScriptStep> &steps)
{
    QStringList texts;
    for (const ScriptStep &step : steps)
        texts.append(step.kind == ScriptStep::Kind::Sleep ? QString::number(step.pause.count()) : step.command);
    return texts;
}

QString complaintAbout(const QString &script)
{
    try {
        (void)readScript(script);
        return {};
    } catch (const WrongUsage &wrong) {
        return wrong.text();
    }
}

QString complaintAboutCommands(const QStringList &commands)
{
    try {
        (void)stepsOf(commands);
        return {};
    } catch (const WrongUsage &wrong) {
        return wrong.text();
    }
}

} // namespace

class CliScriptTest final : public QObject {
    Q_OBJECT

private slots:
    void aLineIsACommand()
    {
        QCOMPARE(
            shown(readScript(
                u"# evening\r\nsay one  two \r\n\n\tsay #1 // no comment\n  # also one\nSleep 1.5\nsleep 0\nlast"_s)),
            QStringList({u"say one  two"_s, u"say #1 // no comment"_s, u"1500"_s, u"0"_s, u"last"_s}));
        QCOMPARE(shown(readScript({})), QStringList());
        QCOMPARE(shown(readScript(u"sleep\t1\nSLEEP \t 2\nsleeper\nsleep_time\t3"_s)),
                 QStringList({u"1000"_s, u"2000"_s, u"sleeper"_s, u"sleep_time\t3"_s}));
    }

    void theLineThatCannotBeSentIsNamed()
    {
        QCOMPARE(complaintAbout(u"say a\nsleep\n"_s),
                 u"Line 2: sleep takes a number of seconds from 0 to 86400, not \"\"."_s);
        QVERIFY(complaintAbout(u"sleep -1"_s).startsWith(u"Line 1: sleep takes"_s));
        QVERIFY(complaintAbout(u"\n\nsay \u0142"_s).startsWith(u"Line 3 has characters"_s));
        QVERIFY(complaintAbout(u"say a\n"_s + QString(1024, u'x')).startsWith(u"Line 2 has 1024 bytes"_s));
        QCOMPARE(complaintAbout(u"sleeper 1\nsay what?\nsay \u20ac"_s), QString()); // all have a byte
    }

    void aCommandHas1023Bytes()
    {
        QCOMPARE(stepsOf({QString(1023, u'x')}).size(), 1);
        QVERIFY(complaintAboutCommands({QString(1024, u'x')}).contains(u"1024 bytes"_s));
        QVERIFY(complaintAboutCommands({u"a"_s, QString(1024, u'x')}).startsWith(u"Command 2 has"_s));
    }

    void aCommandIsOneLineOfReadableCharacters()
    {
        QVERIFY(complaintAboutCommands({u" "_s}).contains(u"is empty"_s));
        QVERIFY(complaintAboutCommands({u"a\nb"_s}).contains(u"line end"_s));
        QVERIFY(complaintAboutCommands({u"a\rb"_s}).contains(u"line end"_s));
        QVERIFY(complaintAboutCommands({u"say \U0001F600"_s}).contains(u"cannot read"_s));
        QCOMPARE(shown(stepsOf({u"# no comment here"_s, u"sleep 1"_s})),
                 QStringList({u"# no comment here"_s, u"sleep 1"_s}));
    }

    void aRequestWithItsPasswordMayBeCut()
    {
        QVERIFY(!mayBeCut(QString(1023 - 5 - 3, u'x'), u"pw"_s));
        QVERIFY(mayBeCut(QString(1023 - 5 - 2, u'x'), u"pw"_s));
    }

    void aReplyIsJudgedByTheBeginningsOfItsLines_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("reply");
        QTest::addColumn<int>("status");
        const auto row = [](const char *command, const char *reply, int status) {
            QTest::addRow("%s: %s", command, reply)
                << QString::fromLatin1(command) << QString::fromLatin1(reply) << status;
        };
        row("say a", "", 0);
        row("foo", "Unknown command \"foo\"\n", 5);
        row("clientkick 9", "Client 9 is not active\n", 5);
        row("clientkick 99", "Bad client slot: 99\n", 5);
        row("tell", "Usage: tell <client number> <text>\n", 5);
        row("status", "Bad rconpassword.\n", 4);
        row("status", "Invalid password.\n", 4);
        row("status", "Bad rcon", 4);
        row("foo", "late rest of a log\nUnknown command \"foo\"\n", 5);
        row("status", "map: mp_a\n  0 0 50 1 Unknown command \"status\"^7 50\n", 0);
        row("status", "map: mp_a\n  0 0 50 1 Client 9 is not active\n", 0);
        row("kick all", "Unknown command^7 was kicked\n", 0);
        row("kick all", "Bad rconpassword.^7 was kicked\n", 0);
        row("fdir *.cfg", "---\n/server.cfg\nusage: of it.cfg\n2 files listed\n", 0);
        row("g_gametype", "\"g_gametype\" is: \"dm\"\n", 0);
        row("unbanUser Bob", "no banned user has name Bob\n", 5);
        row("UNBANUSER \"B o b\"", "some log\nNo banned user has name B o b\n", 5);
        row("unbanUser Bob", "unbanned 1 user(s) named Bob: no banned user has name\n", 0);
        row("kick all", "no banned user has name Bob^7 was kicked\n", 0);
        row("status", "map: mp_a\n  0 0 50 1 no banned user has name Bob^7 50\n", 0);
        row("map mp_x", "Can't find map maps/mp/mp_x.d3dbsp\n", 5);
        row("map mp_x", "Can't find map mp_x\n", 5);
        row("map \"a b\"", "Can't find map maps/mp/a b.d3dbsp\n", 5);
        row("map_rotate", "map_rotate...\n\ncan't find map maps/mp/mp_x.d3dbsp\n", 5);
        row("kick all", "Can't find map x^7 was kicked\n", 0);
        row("status", "map: mp_a\n  0 0 50 1 Can't find map x^7 50\n", 0);
        row("kick all", "Unknown command \"x\"^7 was kicked\n", 0);
        row("kick all", "usage:^7 was kicked\n", 0);
        row("kick all", "kick <x>^7 was kicked\n", 0);
        row("exec none.cfg", "couldn't exec none.cfg\n", 5);
        row("exec none.cfg", "execing none.cfg\n", 0);
        row("kick all", "couldn't exec x^7 was kicked\n", 0);
        row("g_allowvote banana", "'banana' is not a valid value for dvar 'g_allowvote'\n  Domain is 0 or 1\n", 5);
        row("kick all", "'a' is not a valid value for dvar 'b'^7 was kicked\n", 0);
        row("set a 1", "Can't create dvar 'a': 4096 dvars already exist\n", 5);
        row("version 2", "version is read only.\n", 5);
        row("set dedicated 1", "dedicated is write protected.\n", 5);
        row("SV_Cheats 1", "sv_cheats is cheat protected.\n", 5);
        row("rcon_password", "rcon_password is read protected\n", 5);
        row("sv_maxclients 12", "sv_maxclients will be changed upon restarting.\n", 0);
        row("kick all", "all is read only.^7 was kicked\n", 0);
        row("map_restart", "Bob is read only.\n", 0);
        row("banClient 3", "Can't ban user, GUID is 0\n", 5);
        row("banClient 3", "This user (632819) is already banned\n", 5);
        row("kick Bob", "Player Bob is not on the server\n", 5);
        row("kick all", "Player Bob is not on the server^7 was kicked\n", 0);
        row("say a", "Server is not running.\n", 5);
    }
    void aReplyIsJudgedByTheBeginningsOfItsLines()
    {
        QFETCH(QString, command);
        QFETCH(QString, reply);
        QTEST(static_cast<int>(statusOfReply(command, reply)), "status");
    }

    void whatAnEarlierCopyMayHaveDoneIsDone_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("reply");
        QTest::addColumn<int>("status");
        QTest::newRow("kick") << u"clientkick 3"_s << u"Client 3 is not active\n"_s << 0;
        QTest::newRow("unban") << u"unbanUser Bob"_s << u"no banned user has name Bob\n"_s << 0;
        QTest::newRow("ban") << u"banClient 3"_s << u"This user (632819) is already banned\n"_s << 0;
        QTest::newRow("by name") << u"kick Bob"_s << u"Player Bob is not on the server\n"_s << 0;
        QTest::newRow("unknown") << u"foo"_s << u"Unknown command \"foo\"\n"_s << 5;
        QTest::newRow("file") << u"exec a"_s << u"couldn't exec a\n"_s << 5;
        QTest::newRow("usage") << u"tell"_s << u"Usage: tell <client number> <text>\n"_s << 5;
        QTest::newRow("refused") << u"clientkick 3"_s << u"Bad rconpassword.\nBad rconpassword.\n"_s << 4;
    }
    void whatAnEarlierCopyMayHaveDoneIsDone()
    {
        QFETCH(QString, command);
        QFETCH(QString, reply);
        QTEST(static_cast<int>(statusOfReply(command, reply, 2)), "status");
    }

    void aBanThatIsNotThereIsNoSuchPlayerInTheLedgerToo()
    {
        QCOMPARE(verdictWord(verdictOfReply(u"unbanUser Bob", u"no banned user has name Bob\n")), u"no such player"_s);
        QCOMPARE(verdictWord(verdictOfReply(u"kick all", u"no banned user has name Bob^7 was kicked\n")),
                 u"answered"_s);
        QCOMPARE(verdictWord(verdictOfReply(u"unbanUser Bob", u"unbanned 1 user(s) named Bob\n")), u"answered"_s);
    }

    void aPasswordBecomesAsterisks()
    {
        QCOMPARE(maskedText(u"a secret, secretsecret"_s, u"secret"_s), u"a ******, ************"_s);
        QCOMPARE(maskedText(u"a"_s, {}), u"a"_s);
        QCOMPARE(maskedText(u"ananas"_s, u"ana"_s), u"*****s"_s);
    }

    // Its words are known, and asterisks would tell which of them is the password.
    void aUsualRefusalStaysReadable()
    {
        const QList<ReplyPiece> one{{0, false}};
        QCOMPARE(maskedReply(u"Invalid password.\n"_s, one, u"password"_s), u"Invalid password.\n"_s);
        QCOMPARE(maskedReply(u"Bad rconBad rcon"_s, {{0, false}, {8, false}}, u"rcon"_s), u"Bad rconBad rcon"_s);
        QCOMPARE(maskedReply(u"Invalid password for Bob\n"_s, one, u"password"_s), u"Invalid ******** for Bob\n"_s);
    }

    void aPasswordInManyDatagramsBecomesAsterisks()
    {
        QCOMPARE(maskedReply(u"is secret!"_s, {{0, false}, {4, false}, {6, false}, {8, false}}, u"secret"_s),
                 u"is ******!"_s);
        QCOMPARE(maskedReply(u"is secre"_s, {{0, true}}, u"secret"_s), u"is *****"_s); // nothing came behind it
        QCOMPARE(maskedReply(u"ab"_s, {{0, true}, {1, false}}, u"ax"_s), u"ab"_s);
        QCOMPARE(maskedReply({}, {}, u"secret"_s), QString());
    }

    void soDoesOneThatHasLostACharacterBetweenTwoDatagrams_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        QTest::addColumn<bool>("isLossy");
        QTest::addColumn<QString>("masked");
        QTest::newRow("middle") << u"is sec"_s << u"et!"_s << true << u"is *****!"_s;
        QTest::newRow("first") << u"is "_s << u"ecret!"_s << true << u"is *****!"_s;
        QTest::newRow("last") << u"is secre"_s << u"!"_s << true << u"is *****!"_s;
        QTest::newRow("nothing lost") << u"is sec"_s << u"ret!"_s << false << u"is ******!"_s;
        QTest::newRow("another word") << u"is sec"_s << u"et!"_s << false << u"is secet!"_s;
    }
    void soDoesOneThatHasLostACharacterBetweenTwoDatagrams()
    {
        QFETCH(QString, before);
        QFETCH(QString, after);
        QFETCH(bool, isLossy);
        const QList<ReplyPiece> pieces{{0, isLossy}, {before.size(), false}};
        QTEST(maskedReply(before + after, pieces, u"secret"_s), "masked");
    }
};

GUILESS_TEST(CliScriptTest)
#include "tst_cli_script.moc"
