// SPDX-License-Identifier: MIT
#include "ledger/receivers.h"
#include "test_class.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Commands that have gone out, and whom answers are given to.
struct Asked {
    int to(const QString &text, Receivers::Time at)
    {
        return receivers.receiver(text, text.size() + 10, at).value_or(-1);
    }
    /// A server that answers so late is known by one answer.
    void learn(Receivers::Time delay)
    {
        receivers.sent(1, u"g_gametype"_s, 0s);
        (void)to(u"\"g_gametype\" is: \"tdm^7\"\n"_s, delay);
    }

    Receivers receivers;
};

} // namespace

/// Which command an answer belongs to.
class ReceiversTest final : public QObject {
    Q_OBJECT

private slots:
    void theWordsOfAnAnswerNameItsCommand_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("reply");
        const auto row = [](const char *command, const char *reply) {
            QTest::newRow(command) << QString::fromLatin1(command) << QString::fromLatin1(reply);
        };
        row("foo", "Unknown command \"foo\"\n");
        row("/foo bar", "Unknown command \"foo\"\n");
        row("sv_hostname", "\"sv_hostname\" is: \"My Server^7\" default: \"CoD2Host^7\"\n");
        row("rcon_password", "rcon_password is read protected\n");
        row("Status", "map: mp_decoy\nnum score ping\n");
        row("clientkick 15", "Client 15 is not active\n");
        row("banClient 99", "Bad client slot: 99\n");
        row("dir", "usage: dir <directory> [extension]\n");
        row("map", "USAGE: map <map name>\n");
        row("exec a.cfg", "execing a.cfg\n");
        row("dir maps/mp d3dbsp", "Directory of maps/mp d3dbsp\n");
    }

    // Between two others, and whatever the time says.
    void theWordsOfAnAnswerNameItsCommand()
    {
        QFETCH(QString, command);
        QFETCH(QString, reply);
        Asked it;
        it.learn(80ms);
        it.receivers.sent(2, u"say before"_s, 10s);
        it.receivers.sent(3, command, 11s);
        it.receivers.sent(4, u"net_ip"_s, 15s);
        QCOMPARE(it.to(reply, 15s + 80ms), 3);
    }

    void whatIsSaidOfAnotherIsNotTaken()
    {
        Asked it;
        it.learn(4s);
        it.receivers.sent(2, u"clientkick 3"_s, 10s);
        it.receivers.sent(3, u"clientkick 5"_s, 11s);
        QCOMPARE(it.to(u"Client 5 is not active\n"_s, 14s), 3);
        QCOMPARE(it.to(u"Client 3 is not active\n"_s, 14s), 2);
    }

    void aLateServersAnswersComeInTurn()
    {
        Asked it;
        it.learn(4s);
        it.receivers.sent(2, u"say one"_s, 10s);
        it.receivers.sent(3, u"say two"_s, 11s);
        it.receivers.sent(4, u"say three"_s, 12s + 500ms);
        QCOMPARE(it.to({}, 13s + 500ms), 2);
        QCOMPARE(it.to({}, 15s + 900ms), 3);
        QCOMPARE(it.to({}, 16s), 4);
    }

    void ofALinkOfWhichNothingIsKnownToo()
    {
        Asked it;
        it.receivers.sent(2, u"say one"_s, 10s);
        it.receivers.sent(3, u"say two"_s, 11s);
        QCOMPARE(it.to({}, 14s), 2);
        QCOMPARE(it.to({}, 15s), 3);
    }

    // It has dropped the first, which came too fast.
    void aQuickServerAnswersTheLast()
    {
        Asked it;
        it.learn(80ms);
        it.receivers.sent(2, u"say one"_s, 10s);
        it.receivers.sent(3, u"say two"_s, 10s + 600ms);
        QCOMPARE(it.to({}, 10s + 680ms), 3);
        it.receivers.sent(4, u"say three"_s, 15s);
        QCOMPARE(it.to({}, 15s + 90ms), 4);
    }

    void oneAnswerThatWasHeldUpChangesLittle()
    {
        Asked it;
        it.learn(80ms);
        it.receivers.sent(2, u"map_restart"_s, 10s);
        QCOMPARE(it.to({}, 14s), 2);
        it.receivers.sent(3, u"say one"_s, 20s);
        it.receivers.sent(4, u"say two"_s, 21s);
        QCOMPARE(it.to({}, 21s + 80ms), 4);
    }

    void theAnswerToAnotherCopyIsKnownByItsText()
    {
        Asked it;
        const QString list = u"S       sv_mapRotation \"gametype sd map mp_decoy\"\n\n1 total dvars\n"_s;
        it.receivers.sent(2, u"dvarlist sv_maprotation"_s, 0s);
        it.receivers.sent(2, u"dvarlist sv_maprotation"_s, 3s);
        QCOMPARE(it.to(list, 4s), 2);
        it.receivers.sent(3, u"fdir *.cfg"_s, 5s);
        QCOMPARE(it.to(list, 7s), 2);
        QCOMPARE(it.to(u"---------------\n/server.cfg\n"_s, 9s), 3);
    }

    void nothingIsPrintedToWhatIsSaid()
    {
        Asked it;
        it.learn(4s);
        it.receivers.sent(2, u"say one"_s, 10s);
        it.receivers.sent(3, u"dvarlist sv_hostname"_s, 11s);
        QCOMPARE(it.to(u"S       sv_hostname \"name\"\n\n1 total dvars\n"_s, 14s), 3);
        QCOMPARE(it.to({}, 14s), 2);
    }

    // What was first, an answer without words or one with, is not known beforehand.
    void anAnswerWithoutWordsIsForWhatIsSaid()
    {
        Asked it;
        it.learn(4s);
        it.receivers.sent(2, u"foo"_s, 10s);
        it.receivers.sent(3, u"say one"_s, 11s);
        QCOMPARE(it.to({}, 14s + 500ms), 3);
        QCOMPARE(it.to(u"Unknown command \"foo\"\n"_s, 14s + 800ms), 2);
    }

    void whatIsOlderThanAnyAnswerWaitsNoLonger()
    {
        Asked it;
        it.receivers.sent(2, u"say one"_s, 0s);
        it.receivers.sent(3, u"say two"_s, 10s);
        QCOMPARE(it.to({}, 15s + 1ms), 3);
    }
};

GUILESS_TEST(ReceiversTest)
#include "tst_receivers.moc"
