// SPDX-License-Identifier: MIT
#include "ledger/known_passwords.h"
#include "ledger/ledger_entry.h"
#include "rcon/refusals.h"
#include "test_class.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QByteArray header("\xFF\xFF\xFF\xFF");

SentCopy copyOf(const QString &comm, const QString &password = u"practice"_s)
{
    return {1, comm, password, header + "rcon " + password.toLatin1() + ' ' + comm.toLatin1()};
}

LedgerEntry entryOf(const QString &comm)
{
    return {copyOf(comm), {}, QDateTime(QDate(2006, 3, 5), QTime(12, 0)), 0s};
}

CameDatagram reply(const QString &text)
{
    return {header + "print\n", text, text.size() + 10};
}

QString wordOf(const LedgerEntry &entry)
{
    return verdictWord(entry.judged());
}

} // namespace

/// What the words of an answer, its time and its size say of a command.
class VerdictTest final : public QObject {
    Q_OBJECT

private slots:
    void theWordsOfAnAnswerAreJudged_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("reply");
        QTest::addColumn<QString>("verdict");
        const auto row = [](const char *command, const char *text, const char *verdict) {
            QTest::addRow("%s: %s", command, text)
                << QString::fromLatin1(command) << QString::fromLatin1(text) << QString::fromLatin1(verdict);
        };
        row("say a", "", "acknowledged");
        row("say a", "\n \n", "acknowledged");
        row("status", "map: mp_decoy\nnum score\n", "answered");
        row("rcon_password", "rcon_password is read protected\n", "answered");
        for (const char *wording :
             {"Bad rconpassword.\n", "Invalid password.\n", "Bad rcon", "No rconpassword set on the server.\n",
              "The server must set 'rcon_password' for clients to use 'rcon'.\n",
              "The server's rcon password is shorter than 8 characters.\n", "BAD RCONPASSWORD.\n", "Bad rconBad rcon",
              "Bad rconpassword.\nBad rconpassword.\n"})
            row("status", wording, "password refused");
        row("status", "map: mp_decoy\n 0 0 50 1 Invalid password.^7 50\n", "answered");
        row("say_last", "Bad rcon habits are bad\n", "answered");
        row("foo", "Unknown command \"foo\"\n", "unknown command");
        row("foo", "unknown command \"foo\"\n", "unknown command");
        row("clientkick 9", "Client 9 is not active\n", "no such player");
        row("clientkick 99", "Bad client slot: 99\n", "no such player");
        row("clientkick 99", "Bad client slot", "no such player");
        row("clientkick x", "Bad slot number: x\n", "no such player");
        row("kick all", "Unknown command^7 was kicked\n", "answered");
        row("clientkick 3", "Bad client slot^7 was kicked\n", "answered");
        row("unbanUser Bob", "no banned user has name Bob\n", "no such player");
        row("/unbanUser \"Bob B\"", "no banned user has name Bob B\n", "no such player");
        row("clientkick 3", "no banned user has name Bob\n", "answered");
        row("/exec", "exec <filename> : execute a script file\n", "usage");
        row("clientkick 3", "usage^7 was kicked\n", "answered");
        row("kick all", "Unknown command \"x\"^7 was kicked\n", "answered");
        row("kick all", "Unknown command \"x^7 was kicked\n", "answered");
        row("kick all", "Bad client slot: x^7 was kicked\n", "answered");
        row("kick all", "usage:^7 was kicked\n", "answered");
        row("kick all", "kick <x>^7 was kicked\n", "answered");
        row("foo^7", "Unknown command \"foo^7\"\n", "unknown command");
        row("dir", "usage: dir <directory> [extension]\n", "usage");
        row("set", "USAGE: set <variable> <value>\n", "usage");
        row("exec", "exec <filename> : execute a script file\n", "usage");
        row("EXEC", "exec <filename> : execute a script file\n", "usage");
        row("exec a.cfg", "execing a.cfg\n", "answered");
        row("map", "map: <none>\n", "answered");
        row("sv_hostname", "\"sv_hostname\" is: \"<usage>\"\n", "answered");
    }

    void theWordsOfAnAnswerAreJudged()
    {
        QFETCH(QString, command);
        QFETCH(QString, reply);
        QTEST(verdictWord(verdictOfReply(command, reply)), "verdict");
    }

    void onlyTwoVerdictsAreGood()
    {
        QStringList good;
        for (int verdict = 0; verdict <= static_cast<int>(Verdict::Unreadable); ++verdict) {
            if (isGood(static_cast<Verdict>(verdict)))
                good.append(verdictWord(static_cast<Verdict>(verdict)));
        }
        QCOMPARE(good, QStringList({u"acknowledged"_s, u"answered"_s}));
    }

    void cutComesBeforeTooLong()
    {
        LedgerEntry entry = entryOf(u"set a "_s + QString(1100, u'x'));
        QCOMPARE(wordOf(entry), u"too long"_s);
        entry.take({header + "print\n", u"text"_s, 8193}, {}, 1ms);
        QCOMPARE(wordOf(entry), u"cut"_s);
    }

    void aFullDatagramIsNotCut()
    {
        LedgerEntry entry = entryOf(u"dvarlist"_s);
        entry.take({header + "print\n", u"text"_s, 8192}, {}, 1ms);
        QCOMPARE(wordOf(entry), u"answered"_s);
    }

    void tooLongComesBeforeUnreadableAndLate()
    {
        const QString comm = u"say \u0142"_s + QString(1100, u'x');
        LedgerEntry entry({1, comm, u"pw"_s, header + "rcon pw say ?" + QByteArray(1100, 'x')}, {}, {}, 0s);
        QVERIFY(entry.isUnreadable);
        entry.isOver = true;
        entry.take(reply({}), {}, 20s);
        QCOMPARE(wordOf(entry), u"too long"_s);
    }

    void unreadableComesBeforeLate()
    {
        LedgerEntry entry({1, u"say \u0142?"_s, u"pw"_s, header + "rcon pw say ??"}, {}, {}, 0s);
        QCOMPARE(wordOf(entry), u"unreadable"_s);
        entry.isOver = true;
        entry.take(reply({}), {}, 20s);
        QCOMPARE(wordOf(entry), u"unreadable"_s);
    }

    void questionMarksOfOnesOwnAreReadable()
    {
        const LedgerEntry entry({1, u"say what?"_s, u"p?"_s, header + "rcon p? say what?"}, {}, {}, 0s);
        QVERIFY(!entry.isUnreadable);
    }

    void lateComesBeforeTheText()
    {
        LedgerEntry entry = entryOf(u"foo"_s);
        entry.isOver = true;
        entry.isUnanswered = true;
        QCOMPARE(wordOf(entry), u"silent"_s);
        entry.take(reply(u"Unknown command \"foo\"\n"_s), {}, 16s);
        QCOMPARE(wordOf(entry), u"late"_s);
    }

    void theServerReads1023Bytes_data()
    {
        QTest::addColumn<qsizetype>("size"); // of the command
        QTest::addColumn<bool>("isTooLong");
        const qsizetype room = 1023 - QByteArray("rcon practice ").size();
        QTest::newRow("just") << room << false;
        QTest::newRow("one too many") << room + 1 << true;
    }

    void theServerReads1023Bytes()
    {
        QFETCH(qsizetype, size);
        QFETCH(bool, isTooLong);
        const QString comm = u"set a "_s + QString(size - 7, u'x') + u'y';
        const LedgerEntry entry = entryOf(comm);
        QCOMPARE(entry.readPart.has_value(), isTooLong);
        if (isTooLong)
            QCOMPARE(*entry.readPart, comm.chopped(1));
    }

    void thePartThatIsReadHidesAPassword()
    {
        const LedgerEntry entry = entryOf(u"set g_password "_s + QString(1100, u'x'));
        QCOMPARE(*entry.readPart, u"set g_password "_s + QString(1023 - 14 - 15, u'*'));
    }

    void aPasswordThatFillsTheRequestLeavesNothing()
    {
        const LedgerEntry entry(copyOf(u"status"_s, QString(1100, u'p')), {}, {}, 0s);
        QCOMPARE(*entry.readPart, QString());
    }

    void noPasswordIsKept()
    {
        LedgerEntry entry = entryOf(u"say practice; set g_password letmein"_s);
        QCOMPARE(entry.command, u"say ********; set g_password *******"_s);
        KnownPasswords passwords;
        passwords.add(u"practice"_s);
        entry.take(reply(u"it is practice, and prac"_s), passwords, 1ms);
        entry.take(reply(u"tice, pract"_s), passwords, 1ms);
        entry.take(reply(u"i"_s), passwords, 1ms);
        entry.take(reply(u"ce"_s), passwords, 1ms);
        QCOMPARE(entry.reply, u"it is ********, and ********, ********"_s);
    }

    // Some servers lose the last character of each full datagram.
    void aPasswordThatLostACharacterIsHidden()
    {
        KnownPasswords passwords;
        passwords.add(u"practice"_s);
        for (qsizetype lost = 0; lost < 8; ++lost) {
            LedgerEntry entry = entryOf(u"dvarlist"_s);
            const QString left = u"practice"_s.first(lost);
            const QString right = u"practice"_s.sliced(lost + 1);
            entry.take(reply(left.rightJustified(1293, u'x')), passwords, 1ms);
            entry.take(reply(right + u" is it"_s), passwords, 1ms);
            QCOMPARE(entry.reply, QString(1293 - lost, u'x') + QString(7, u'*') + u" is it"_s);
        }
    }

    // The full datagram came from another kind of server, or nothing comes behind it.
    void atTheEndOfAFullDatagramTooItIsHidden()
    {
        KnownPasswords passwords;
        passwords.add(u"practice"_s);
        LedgerEntry entry = entryOf(u"dvarlist"_s);
        entry.take(reply(u"practic"_s.rightJustified(1293, u'x')), passwords, 1ms);
        QCOMPARE(entry.reply, QString(1286, u'x') + u"*******"_s);
        entry.take(reply(u"e is it"_s), passwords, 1ms);
        QCOMPARE(entry.reply, QString(1286, u'x') + u"******** is it"_s);
    }

    void inOtherDatagramsNothingIsTakenForLost()
    {
        KnownPasswords passwords;
        passwords.add(u"practice"_s);
        LedgerEntry entry = entryOf(u"dvarlist"_s);
        entry.take(reply(u"a prac"_s), passwords, 1ms);
        entry.take(reply(u"ice"_s), passwords, 1ms);
        QCOMPARE(entry.reply, u"a practice"_s.remove(6, 1));
    }

    // It is one of the words of the refusal.
    void aRefusalIsKnownWhateverThePassword()
    {
        KnownPasswords passwords;
        passwords.add(u"password"_s);
        LedgerEntry entry = entryOf(u"status"_s);
        entry.take(reply(u"Invalid password.\n"_s), passwords, 1ms);
        QCOMPARE(wordOf(entry), u"password refused"_s);
        entry = entryOf(u"status"_s);
        entry.take(reply(u"password is shorter than 8 characters.\n"_s), passwords, 1ms);
        QCOMPARE(entry.reply, u"******** is shorter than 8 characters.\n"_s);
        QCOMPARE(wordOf(entry), u"password refused"_s);
    }

    // Asterisks would cover the words that matter.
    void theWordsAreJudgedWhateverThePassword_data()
    {
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("kept");
        QTest::addColumn<QString>("verdict");
        const auto row = [](const char *password, const char *command, const char *text, const char *kept,
                            const char *verdict) {
            QTest::addRow("%s: %s", password, text)
                << QString::fromLatin1(password) << QString::fromLatin1(command) << QString::fromLatin1(text)
                << QString::fromLatin1(kept) << QString::fromLatin1(verdict);
        };
        const std::array<const char *, 5> usual{"Bad rconpassword.\n", "Invalid password.\n", "Bad rcon",
                                                "No rconpassword set on the server.\n",
                                                "The server must set 'rcon_password' for clients to use 'rcon'.\n"};
        for (const char *text : usual) {
            for (const char *password : {"password", "rcon", "Bad", "server", "Invalid", "client", " ", "."})
                row(password, "status", text, text, "password refused");
        }
        row("shorter", "status", "rcon_password is shorter than 8 characters.\n",
            "rcon_password is ******* than 8 characters.\n", "password refused");
        row("Client", "clientkick 9", "Client 9 is not active\n", "****** 9 is not active\n", "no such player");
        row("active", "clientkick 9", "Client 9 is not active\n", "Client 9 is not ******\n", "no such player");
        row("slot", "clientkick 99", "Bad client slot: 99\n", "Bad client ****: 99\n", "no such player");
        row("Unknown", "foo", "Unknown command \"foo\"\n", "******* command \"foo\"\n", "unknown command");
        row("usage", "dir", "usage: dir <directory>\n", "*****: dir <directory>\n", "usage");
        row("exec", "exec", "exec <filename> : execute\n", "**** <filename> : ****ute\n", "usage");
    }

    void theWordsAreJudgedWhateverThePassword()
    {
        QFETCH(QString, password);
        QFETCH(QString, command);
        QFETCH(QString, text);
        QFETCH(QString, kept);
        QFETCH(QString, verdict);
        KnownPasswords passwords;
        passwords.add(password);
        LedgerEntry entry(copyOf(command, password), passwords, {}, 0s);
        entry.take(reply(text), passwords, 1ms);
        QCOMPARE(entry.reply, kept);
        QCOMPARE(wordOf(entry), verdict);
        entry.take(reply(text), passwords, 2ms); // each copy is answered
        QCOMPARE(wordOf(entry), verdict);
        entry.take(reply({}), passwords, 3ms);
        QCOMPARE(wordOf(entry), verdict);
        entry.hide(passwords);
        QCOMPARE(wordOf(entry), verdict);
    }

    void aRefusalThatGoesOnWithSomethingElseIsNone()
    {
        LedgerEntry entry = entryOf(u"status"_s);
        entry.take(reply(u"Bad rcon"_s), {}, 1ms);
        QCOMPARE(wordOf(entry), u"password refused"_s);
        entry.take(reply(u" habits are bad\n"_s), {}, 1ms);
        QCOMPARE(wordOf(entry), u"answered"_s);
    }

    void aLineInTwoDatagramsIsOne()
    {
        LedgerEntry entry = entryOf(u"clientkick 9"_s);
        entry.take(reply(u"Client 9 is n"_s), {}, 1ms);
        QCOMPARE(wordOf(entry), u"answered"_s);
        entry.take(reply(u"ot active\n"_s), {}, 1ms);
        QCOMPARE(wordOf(entry), u"no such player"_s);
    }

    // A million characters of them would be read again and again.
    void aLongReplyIsNoRefusal()
    {
        QVERIFY(isRefusal(u"Bad rcon\n"_s.repeated(5)));
        QVERIFY(!isRefusal(u"Bad rcon\n"_s.repeated(500)));
        QVERIFY(!isUsualRefusal(u"Bad rcon\n"_s.repeated(500)));
    }

    void aReplyWithoutEndIsNotKeptWithoutEnd()
    {
        LedgerEntry entry = entryOf(u"dvarlist"_s);
        for (int datagram = 0; datagram < 300; ++datagram)
            entry.take(reply(QString(8000, u'x')), {}, 1ms);
        QCOMPARE(entry.reply.size(), longestKeptReply);
        QCOMPARE(entry.datagrams, 300);
        QCOMPARE(entry.bytes, 300 * 8010);
    }
};

GUILESS_TEST(VerdictTest)
#include "tst_verdict.moc"
