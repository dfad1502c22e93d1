// SPDX-License-Identifier: MIT
#include "practice/practice_arguments.h"
#include "practice/practice_server.h"
#include "practice/replay.h"
#include "practice_client.h"
#include "recording_lines.h"
#include "test_class.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <chrono>
#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QByteArray head("\xFF\xFF\xFF\xFF");
const QByteArray status(head + "rcon ******** status");
const QByteArray getStatus(head + "getstatus");

using recording::in;
using recording::out;

QByteArray printed(const QByteArray &text)
{
    return head + "print\n" + text;
}

QByteArrayList texts(const Replay::Answer &answer)
{
    QByteArrayList all;
    for (const Replay::Piece &piece : answer)
        all.append(piece.datagram.sliced(10));
    return all;
}

} // namespace

class PracticeReplayTest final : public QObject {
    Q_OBJECT

    std::unique_ptr<PracticeServer> server;
    std::unique_ptr<PracticeClient> client;
    std::chrono::milliseconds now{};

    // A server whose time is `now`.
    void start(const QByteArray &recording)
    {
        const Replay replay(recording);
        QCOMPARE(replay.fault(), QString());
        server = std::make_unique<PracticeServer>();
        server->replay(replay);
        now = 0ms;
        server->setClock([this] { return now; });
        QVERIFY2(server->listen(), qPrintable(server->errorString()));
        client = std::make_unique<PracticeClient>(server->port());
    }
    void goTo(std::chrono::milliseconds time)
    {
        now = time;
        QCoreApplication::processEvents();
    }

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void eachCommandGetsWhatItGotThen()
    {
        Replay replay(out(0us, status) + in(400us, printed("one")) + out(1s, getStatus) +
                      in(1s + 300us, head + "statusResponse\n") + out(2s, head + "rcon ******** say a") +
                      in(2s + 5us, printed({})));
        QCOMPARE(replay.count(), 3);
        const Replay::Answer answer = replay.next(head + "rcon any status");
        QCOMPARE(texts(answer), QByteArrayList({"one"}));
        QCOMPARE(answer.first().after, 400us);
        QCOMPARE(replay.next(getStatus).first().datagram, head + "statusResponse\n");
        QCOMPARE(texts(replay.next(head + "rcon any say a")), QByteArrayList({""}));
    }

    void theOrderIsThatOfTheRecordingAndTheLastAnswerStays()
    {
        Replay replay(out(0s, status) + in(1ms, printed("one")) + out(1s, status) + in(1001ms, printed("two")) +
                      out(2s, status));
        const QByteArray ask = head + "rcon pw status";
        QCOMPARE(texts(replay.next(ask)), QByteArrayList({"one"}));
        QCOMPARE(texts(replay.next(ask)), QByteArrayList({"two"}));
        QVERIFY(replay.next(ask).isEmpty()); // as silent as it was
        QCOMPARE(texts(replay.next(ask)), QByteArrayList({"two"}));
        QCOMPARE(texts(replay.next(ask)), QByteArrayList({"two"}));
    }

    void whatWasNeverAskedHasNoAnswer()
    {
        Replay replay(out(0s, status) + in(1ms, printed("one")));
        QVERIFY(replay.knows(head + "rcon pw status"));
        for (const QByteArray &request : {head + "rcon pw statu", head + "rcon pw status x", getStatus, QByteArray()}) {
            QVERIFY(!replay.knows(request));
            QVERIFY(replay.next(request).isEmpty());
        }
    }

    void aRequestOfAnotherKindIsKnownByItsBytes()
    {
        Replay replay(out(0s, head + "getinfo xyz") + in(1ms, head + "infoResponse\n"));
        QCOMPARE(replay.next(head + "getinfo xyz").size(), 1);
        QVERIFY(replay.next(head + "getinfo abc").isEmpty());
    }

    void aNewPasswordIsTheSameWhateverItIs_data()
    {
        QTest::addColumn<QByteArray>("recorded");
        QTest::addColumn<QByteArray>("asked");
        QTest::addColumn<bool>("isKnown");
        const auto row = [](const QByteArray &recorded, const QByteArray &asked, bool isKnown = true) {
            QTest::newRow(asked.constData()) << recorded << asked << isKnown;
        };
        row("set g_password ***", "set g_password another");
        row("SetA SV_PrivatePassword \"******\"", "SetA SV_PrivatePassword \"x\"");
        row("g_password\"****\"", "g_password\"longer than before\"");
        row("g_password", "g_password");
        row("g_password", "g_password x", false);
        row("set g_password ***", "set g_gametype sd", false);
        row("say my ********, please", "say my practice, please");
        row("say ****", "say other", false);
        row("*** mp_decoy", "map mp_decoy"); // by somebody whose password was a word of the game
        row("*** mp_decoy", "exec mp_decoy", false);
        row("say ***, *** is up", "say the, map is up");
        row("fdir *.cfg", "fdir *.cfg");
        row("fdir *.cfg", "fdir x.cfg", false);
    }
    void aNewPasswordIsTheSameWhateverItIs()
    {
        QFETCH(QByteArray, recorded);
        QFETCH(QByteArray, asked);
        QFETCH(bool, isKnown);
        const Replay replay(out(0s, head + "rcon ******** " + recorded) + in(1ms, printed({})));
        QCOMPARE(replay.knows(head + "rcon practice " + asked), isKnown);
    }

    void aHandfulOfRequestsIsAnsweredInTurn()
    {
        const auto say = [](const QByteArray &text) { return QByteArray(head + "rcon * say " + text); };
        Replay replay(out(0us, say("a")) + out(10us, say("b")) + out(20us, getStatus) + out(30us, status) +
                      in(300us, printed("a")) + in(310us, printed("b")) + in(320us, head + "statusResponse\n") +
                      in(330us, printed(QByteArray(1294, 'x'))) + in(340us, printed("end")));
        QCOMPARE(texts(replay.next(say("a"))), QByteArrayList({"a"}));
        QCOMPARE(replay.next(say("b")).first().after, 300us);
        QCOMPARE(replay.next(getStatus).first().after, 300us);
        QCOMPARE(texts(replay.next(status)), QByteArrayList({QByteArray(1294, 'x'), "end"}));
    }

    void aFullDatagramGoesOnBeforeTheNextAnswer()
    {
        const QByteArray say = head + "rcon * say a";
        Replay replay(out(0us, status) + out(10us, say) + in(300us, printed(QByteArray(1000, 'x'))) +
                      in(310us, printed("end")) + in(320us, printed({})));
        QCOMPARE(texts(replay.next(status)), QByteArrayList({QByteArray(1000, 'x'), "end"}));
        QCOMPARE(texts(replay.next(say)), QByteArrayList({""}));
    }

    void whatWasLostLeavesTheNextAnswerAlone()
    {
        const QByteArray say = head + "rcon * say a";
        Replay replay(out(0s, say) + out(2s, status) + in(2001ms, printed("one")) + out(4s, status) + out(7s, status) +
                      in(7500ms, printed("two")));
        QVERIFY(replay.next(say).isEmpty());
        QCOMPARE(texts(replay.next(status)), QByteArrayList({"one"}));
        QVERIFY(replay.next(status).isEmpty()); // this copy, too
        QCOMPARE(replay.next(status).first().after, 500ms);
    }

    void aLateAnswerKeepsItsLateness()
    {
        Replay replay(out(0s, status) + out(1s, getStatus) + in(4s, printed("late")) +
                      in(5s, head + "statusResponse\n"));
        QCOMPARE(replay.next(status).first().after, 4s);
        QCOMPARE(replay.next(getStatus).first().after, 4s);
    }

    void whatCameBeforeAnyRequestIsNobodys()
    {
        Replay replay(in(0s, printed("of an older one")) + out(1s, status) + in(2s, printed("one")));
        QCOMPARE(texts(replay.next(status)), QByteArrayList({"one"}));
    }

    // Read in square time, this takes minutes.
    void manyRequestsOfOneKindAreReadQuickly()
    {
        QByteArray recording;
        constexpr int requests = 40'000;
        for (int number = 0; number < requests; ++number)
            recording += out(std::chrono::milliseconds(number), status);
        const QByteArray answer = in(std::chrono::milliseconds(requests), head + "statusResponse\n");
        recording += answer.repeated(requests);
        recording += in(std::chrono::milliseconds(requests), printed("one"));
        QElapsedTimer timer;
        timer.start();
        const Replay replay(recording);
        QVERIFY2(timer.elapsed() < 10'000, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(replay.count(), 1);
    }

    void aBadRecordingIsTold_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("fault");
        const QByteArray good = out(0s, status) + in(1ms, printed("one"));
        const QString second = u"line 2 is no datagram of a recording"_s;
        const auto row = [](const char *name, const QByteArray &text, const QString &fault) {
            QTest::newRow(name) << text << fault;
        };
        row("good", good, {});
        row("Windows line ends", QByteArray(good).replace("\n", "\r\n"), {});
        row("an empty line", out(0s, status) + '\n' + in(1ms, printed("one")), {});
        row("nothing", {}, u"no request is in it"_s);
        row("no request", in(0s, printed("one")), u"no request is in it"_s);
        row("no JSON", out(0s, status) + "hello\n" + good, second);
        row("no time", out(0s, status) + "{\"way\":\"in\",\"data\":\"\"}\n" + good, second);
        row("no way", out(0s, status) + "{\"us\":1,\"way\":\"up\",\"data\":\"\"}\n" + good, second);
        row("no data", out(0s, status) + "{\"us\":1,\"way\":\"in\"}\n" + good, second);
        row("no base64", out(0s, status) + "{\"us\":1,\"way\":\"in\",\"data\":\"a!b\"}\n" + good, second);
        row("before its beginning", out(0s, status) + in(-1us, printed("one")) + good, second);
        row("after more than a year", out(0s, status) + in(24h * 367, printed("one")) + good, second);
        row("beyond all time", out(0s, status) + "{\"us\":9223372036854775807,\"way\":\"in\",\"data\":\"\"}\n", second);
        row("a year", out(0s, status) + in(24h * 366, printed("one")), {});
        row("the disk was full", good + "{\"us\":1,\"wa", {});
        row("two bad lines", out(0s, status) + "a\nb\n", second);
    }
    void aBadRecordingIsTold()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, fault);
        QCOMPARE(Replay(text).fault(), fault);
    }

    void theServerKeepsSizesGapsAndLateness()
    {
        start(out(10s, status) + in(10'300ms, printed(QByteArray(1293, 'x'))) + in(10'301ms, printed("y")) +
              in(14'000ms, printed("z")));
        client->rcon("status", "whatever");
        QTRY_COMPARE(server->requests().size(), 1);
        goTo(299ms);
        QCOMPARE(client->count(), 0);
        goTo(300ms);
        QTRY_COMPARE(client->count(), 1);
        QCOMPARE(client->datagrams().first().size(), 1303);
        goTo(301ms);
        QTRY_COMPARE(client->count(), 2);
        goTo(3999ms);
        QCOMPARE(client->count(), 2);
        goTo(4000ms);
        QTRY_COMPARE(client->count(), 3);
        QCOMPARE(client->datagrams().last(), printed("z"));
    }

    void aReplayedServerLeavesTheGameAlone()
    {
        start(out(0s, head + "rcon * sv_hostname x") + in(0s, printed("told")));
        QSignalSpy happened(server.get(), &PracticeServer::happened);
        client->rcon("sv_hostname x", "");
        QTRY_COMPARE(client->text(), "told");
        QCOMPARE(server->game().dvars().value(u"sv_hostname"_s), u"CoD2Host"_s);
        client->rcon("status");
        QTRY_COMPARE(happened.size(), 2);
        const QString log = happened.last().first().toString();
        QVERIFY2(log.endsWith(u": status is not in the recording"_s), qPrintable(log));
        QCOMPARE(client->count(), 1);
    }

    void theProgramReplaysAFile()
    {
        QTemporaryDir folder;
        QFile file(folder.filePath(u"recording.jsonl"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(out(0s, status) + in(2ms, printed("one")) + in(4ms, printed("two")));
        file.close();
        QProcess process;
        process.start(QStringLiteral(MOLVARK_PRACTICE_PROGRAM), {u"--port"_s, u"0"_s, u"--replay"_s, file.fileName()});
        QTRY_VERIFY(process.canReadLine());
        static const QRegularExpression listening(u"Listening on \\S+ port (\\d+), 1 requests of a recording\\."_s);
        const QRegularExpressionMatch match = listening.match(QString::fromLocal8Bit(process.readLine()));
        QVERIFY(match.hasMatch());
        PracticeClient asking(match.captured(1).toUShort());
        asking.rcon("status", "whatever");
        QTRY_COMPARE(asking.text(), "onetwo");
        process.kill();
        QTRY_COMPARE(process.state(), QProcess::NotRunning);
    }

    void aFileThatCannotBeReplayedEndsTheProgram_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("word");
        QTest::newRow("missing") << QByteArray() << u"cannot read "_s;
        QTest::newRow("something else") << QByteArray("hello\nyou\n") << u"line 1 is no datagram of a recording"_s;
    }
    void aFileThatCannotBeReplayedEndsTheProgram()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, word);
        QTemporaryDir folder;
        QFile file(folder.filePath(u"recording.jsonl"_s));
        if (!text.isEmpty()) {
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(text);
            file.close();
        }
        QProcess process;
        process.start(QStringLiteral(MOLVARK_PRACTICE_PROGRAM), {u"--port"_s, u"0"_s, u"--replay"_s, file.fileName()});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 1);
        const QString errors = QString::fromLocal8Bit(process.readAllStandardError());
        QVERIFY2(errors.contains(word) && errors.contains(u"recording.jsonl"_s), qPrintable(errors));
    }

    void theFileIsAnArgument()
    {
        QCOMPARE(readPracticeArguments({u"p"_s, u"--replay"_s, u"a b.jsonl"_s}).replay, u"a b.jsonl"_s);
        QCOMPARE(readPracticeArguments({u"p"_s}).replay, QString());
    }
};

GUILESS_TEST(PracticeReplayTest)
#include "tst_practice_replay.moc"
