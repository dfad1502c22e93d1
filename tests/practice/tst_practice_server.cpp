// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "practice/practice_server.h"
#include "practice/rate_limit.h"
#include "practice_client.h"
#include "test_class.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QSignalSpy>

#include <chrono>
#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QByteArray printHeader("\xFF\xFF\xFF\xFFprint\n");
const QByteArray sayHello("\xFF\xFF\xFF\xFFrcon practice say hello");
const QByteArray getStatus("\xFF\xFF\xFF\xFFgetstatus");

} // namespace

class PracticeServerTest final : public QObject {
    Q_OBJECT

    std::unique_ptr<PracticeServer> server;
    std::unique_ptr<PracticeClient> client;
    std::chrono::milliseconds now{};

    void start(const PracticeOptions &options)
    {
        server = std::make_unique<PracticeServer>(options);
        QVERIFY2(server->listen(), qPrintable(server->errorString()));
        client = std::make_unique<PracticeClient>(server->port());
    }

    // A server whose time is `now`.
    void startWithLimit(PracticeOptions::Rate rate)
    {
        PracticeOptions options;
        options.mapLoadMs = 0;
        options.rate = rate;
        start(options);
        now = 0ms;
        server->setClock([this] { return now; });
    }

    // How many of `requests` the server answers.
    qsizetype answered(const QList<QByteArray> &requests)
    {
        client->forget();
        server->forgetRequests();
        for (const QByteArray &request : requests)
            client->send(request);
        const bool allCame = QTest::qWaitFor([&] { return server->requests().size() == requests.size(); });
        return allCame ? client->count() : -1;
    }

    // The next reply to a plain request, which shows that nothing else is on its way.
    void verifyNothingElseComes()
    {
        const qsizetype before = client->count();
        client->rcon("say end");
        QTRY_COMPARE(client->count(), before + 1);
        QCOMPARE(client->datagrams().last(), printHeader);
    }

private slots:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        PracticeOptions options;
        options.mapLoadMs = 0;
        start(options);
    }

    void statusComesBack()
    {
        client->rcon("status");
        QTRY_VERIFY(client->count() > 0);
        QTRY_VERIFY(client->text().endsWith("\n\n"));
        QVERIFY(client->text().startsWith("map: mp_toujane\nnum score ping guid   name"));
        QCOMPARE(client->text(), toAnsi(server->game().execute(u"status"_s).reply));
    }

    void everyRequestIsAnsweredInItsTurn()
    {
        for (int turn = 1; turn <= 50; ++turn) {
            client->rcon("set turn " + QByteArray::number(turn));
            QTRY_COMPARE(client->count(), turn);
            QCOMPARE(server->game().dvars().number(u"turn"_s), turn);
        }
    }

    void silentCommandsAreAcknowledgedByTheBareHeader()
    {
        client->rcon("sv_hostname\"My server\"");
        QTRY_COMPARE(client->datagrams(), QList<QByteArray>({printHeader}));
        QCOMPARE(server->game().dvars().value(u"sv_hostname"_s), u"My server"_s);
    }

    void aWrongPasswordIsRefused()
    {
        client->rcon("sv_hostname x", "wrong");
        QTRY_COMPARE(client->text(), "Bad rconpassword.\n");
        client->forget();
        client->rcon("sv_hostname x", "");
        QTRY_COMPARE(client->text(), "Bad rconpassword.\n");
        QCOMPARE(server->game().dvars().value(u"sv_hostname"_s), u"CoD2Host"_s);
    }

    void aServerWithoutPasswordSaysSo()
    {
        server->setPassword({});
        client->rcon("status", "");
        QTRY_COMPARE(client->text(), "No rconpassword set on the server.\n");
    }

    void aNewPasswordCountsAtOnce()
    {
        client->rcon("rcon_password other");
        QTRY_COMPARE(client->count(), 1);
        client->rcon("say hello", "practice");
        QTRY_COMPARE(client->text(), "Bad rconpassword.\n");
        client->rcon("say hello", "other");
        QTRY_COMPARE(client->datagrams().last(), printHeader);
    }

    void thePublicStatusIsOneDatagram()
    {
        server->setDatagramSize(40);
        client->send("\xFF\xFF\xFF\xFFgetstatus");
        QTRY_COMPARE(client->count(), 1);
        QCOMPARE(client->datagrams().first(), QByteArray("\xFF\xFF\xFF\xFF" + toAnsi(server->game().statusResponse())));
    }

    void aLongReplyIsCutIntoDatagrams_data()
    {
        QTest::addColumn<int>("size");
        for (const int size : {40, 500, 1000, 1300})
            QTest::addRow("%d bytes", size) << size;
    }
    void aLongReplyIsCutIntoDatagrams()
    {
        QFETCH(int, size);
        server->setDatagramSize(size);
        const QByteArray whole = toAnsi(server->game().execute(u"dvarlist sv_*"_s).reply);
        client->rcon("dvarlist sv_*");
        QTRY_COMPARE(client->text().size(), whole.size());
        QCOMPARE(client->text(), whole);
        QCOMPARE(client->count(), (whole.size() + size - 1) / size);
        for (const QByteArray &datagram : client->datagrams())
            QVERIFY(datagram.startsWith(printHeader) && datagram.size() <= size + printHeader.size());
    }

    void everyRequestIsKept()
    {
        QSignalSpy requested(server.get(), &PracticeServer::requested);
        client->rcon("dvarlist sv_*");
        client->send("\xFF\xFF\xFF\xFFgetstatus");
        client->rcon("say a", "wrong");
        QTRY_COMPARE(server->requests().size(), 3);
        QCOMPARE(server->requests(),
                 QList<QByteArray>({"\xFF\xFF\xFF\xFFrcon practice dvarlist sv_*", "\xFF\xFF\xFF\xFFgetstatus",
                                    "\xFF\xFF\xFF\xFFrcon wrong say a"}));
        QCOMPARE(server->commands(), QList<QByteArray>({"dvarlist sv_*", "getstatus", "say a"}));
        QCOMPARE(requested.size(), 3);
        server->forgetRequests();
        QVERIFY(server->requests().isEmpty());
    }

    void aSilentServerCountsAndSaysNothing()
    {
        server->setSilent(true);
        client->rcon("sv_hostname x");
        client->send("\xFF\xFF\xFF\xFFgetstatus");
        QTRY_COMPARE(server->requests().size(), 2);
        server->setSilent(false);
        verifyNothingElseComes();
        QCOMPARE(server->game().dvars().value(u"sv_hostname"_s), u"CoD2Host"_s);
    }

    void aRequestCanBeAnsweredByTheTest()
    {
        server->answer("status", {"one", "two\n"});
        client->rcon("status");
        QTRY_COMPARE(client->datagrams(), QList<QByteArray>({printHeader + "one", printHeader + "two\n"}));
        client->rcon("status");
        QTRY_COMPARE(client->count(), 4);
        server->answerAsUsual("status");
        client->forget();
        client->rcon("status");
        QTRY_VERIFY(client->text().startsWith("map: mp_toujane\n"));
    }

    void aTestCanAnswerWithAnything()
    {
        server->answerRaw("getstatus", {"\xFF\xFF\xFF\xFFstatusResponse\n", QByteArray(), QByteArray(1, '\0')});
        client->send("\xFF\xFF\xFF\xFFgetstatus");
        QTRY_COMPARE(client->datagrams(),
                     QList<QByteArray>({"\xFF\xFF\xFF\xFFstatusResponse\n", QByteArray(), QByteArray(1, '\0')}));
    }

    void aTestCanAnswerWithNothing()
    {
        server->answer("map_rotate", {});
        client->rcon("map_rotate");
        QTRY_COMPARE(server->requests().size(), 1);
        verifyNothingElseComes();
        QCOMPARE(server->game().dvars().value(u"mapname"_s), u"mp_toujane"_s);
    }

    void aSlotMayChangeTheAnswer()
    {
        connect(server.get(), &PracticeServer::requested, this,
                [this] { server->answer("status", {QByteArray::number(server->requests().size())}); });
        client->rcon("status");
        client->rcon("status");
        QTRY_COMPARE(client->text(), "12");
    }

    void aWrongPasswordGetsNoPreparedAnswer()
    {
        server->answer("status", {"prepared"});
        client->rcon("status", "wrong");
        QTRY_COMPARE(client->text(), "Bad rconpassword.\n");
    }

    void anUnaskedDatagramReachesTheLastClient()
    {
        QVERIFY(!server->sendRaw("nobody is there"));
        client->rcon("say hello");
        QTRY_COMPARE(client->count(), 1);
        QVERIFY(server->sendRaw(printHeader + "late"));
        QTRY_COMPARE(client->text(), "late");
    }

    void nothingPassesALineThatLosesAll()
    {
        QSignalSpy happened(server.get(), &PracticeServer::happened);
        server->setLoss(100);
        client->rcon("sv_hostname x");
        QTRY_COMPARE(server->requests().size(), 1);
        QVERIFY(happened.last().first().toString().endsWith(u"lost"_s));
        server->setLoss(0);
        verifyNothingElseComes();
        QCOMPARE(server->game().dvars().value(u"sv_hostname"_s), u"CoD2Host"_s);
    }

    void aBadLineLosesRequestsAndReplies()
    {
        server->setLoss(50);
        for (int turn = 1; turn <= 200; ++turn) {
            client->rcon("set turn " + QByteArray::number(turn));
            QTRY_COMPARE(server->requests().size(), turn);
        }
        server->setLoss(0);
        const qsizetype answered = client->count();
        QVERIFY2(answered > 20 && answered < 80, QByteArray::number(answered).constData()); // a quarter of 200
        verifyNothingElseComes();
    }

    void neighboursOvertakeEachOther()
    {
        server->setReorder(true);
        server->setDatagramSize(3);
        client->rcon("foo"); // Unknown command "foo"
        QTRY_COMPARE(client->count(), 8);
        QCOMPARE(client->text(), "now"
                                 "Unk"
                                 "omm"
                                 "n c"
                                 " \"f"
                                 "and"
                                 "\n"
                                 "oo\"");
    }

    void aDistantServerAnswersLate()
    {
        server->setLatency(60);
        QElapsedTimer clock;
        clock.start();
        client->rcon("say hello");
        QTRY_COMPARE(client->count(), 1);
        QVERIFY(clock.elapsed() >= 59);
    }

    void whatComesWhileAMapLoadsIsAnsweredAfterwards()
    {
        PracticeClient other(server->port());
        server->setMapLoad(200);
        client->rcon("map mp_decoy");
        client->rcon("set turn 1");
        client->rcon("turn");
        client->rcon("say hello", "wrong");
        client->send("\xFF\xFF\xFF\xFFgetstatus");
        other.rcon("say hello");
        QTRY_COMPARE(server->requests().size(), 6);
        QCOMPARE(client->count(), 0);
        QCOMPARE(server->game().dvars().find(u"turn"_s), nullptr);
        QTRY_COMPARE(client->count(), 5);
        QVERIFY(client->datagrams().at(0).endsWith("Server: mp_decoy\n"));
        QCOMPARE(client->datagrams().at(1), printHeader);
        QVERIFY(client->datagrams().at(2).startsWith(printHeader + "\"turn\" is: \"1^7\""));
        QCOMPARE(client->datagrams().at(3), printHeader + "Bad rconpassword.\n");
        QVERIFY(client->datagrams().at(4).contains("\\mapname\\mp_decoy\\"));
        QTRY_COMPARE(other.datagrams(), QList<QByteArray>({printHeader}));
        QCOMPARE(server->requests().size(), 6);
        verifyNothingElseComes();
    }

    void theLastTenThatCameWhileAMapLoadsAreKept()
    {
        QSignalSpy happened(server.get(), &PracticeServer::happened);
        PracticeClient other(server->port());
        server->setMapLoad(200);
        client->rcon("map mp_decoy");
        for (const char *command : {"set first 1", "set second 1", "set third 1"})
            client->rcon(command);
        for (int turn = 1; turn <= 9; ++turn)
            other.rcon("set turn " + QByteArray::number(turn));
        QTRY_COMPARE(server->requests().size(), 13);
        QVERIFY(happened.last().first().toString().endsWith(u"too many came while a map is loading"_s));
        QTRY_COMPARE(other.datagrams(), QList<QByteArray>(9, printHeader));
        QCOMPARE(client->count(), 2); // the map and the third command
        QCOMPARE(server->game().dvars().find(u"first"_s), nullptr);
        QCOMPARE(server->game().dvars().find(u"second"_s), nullptr);
        QCOMPARE(server->game().dvars().value(u"third"_s), u"1"_s);
        QCOMPARE(server->game().dvars().number(u"turn"_s), 9);
    }

    void aMapAmongWhatWaitsKeepsTheRestWaiting()
    {
        server->setMapLoad(100);
        client->rcon("map mp_decoy");
        client->rcon("say hello");
        client->rcon("map mp_carentan");
        client->rcon("foo");
        QTRY_COMPARE(client->count(), 4);
        QVERIFY(client->datagrams().at(0).endsWith("Server: mp_decoy\n"));
        QCOMPARE(client->datagrams().at(1), printHeader);
        QVERIFY(client->datagrams().at(2).endsWith("Server: mp_carentan\n"));
        QCOMPARE(client->datagrams().at(3), printHeader + "Unknown command \"foo\"\n");
    }

    void aSilentServerKeepsNothingForAfterTheMap()
    {
        server->setMapLoad(200);
        client->rcon("map mp_decoy");
        QTRY_COMPARE(server->requests().size(), 1);
        server->setSilent(true);
        client->rcon("sv_hostname x");
        QTRY_COMPARE(server->requests().size(), 2);
        server->setSilent(false);
        QTRY_COMPARE(client->count(), 1);
        verifyNothingElseComes();
        QCOMPARE(server->game().dvars().value(u"sv_hostname"_s), u"CoD2Host"_s);
    }

    void aClosedServerForgetsWhatWaits()
    {
        const quint16 port = server->port();
        server->setMapLoad(200);
        client->rcon("map mp_decoy");
        client->rcon("sv_hostname x");
        QTRY_COMPARE(server->requests().size(), 2);
        server->close();
        QVERIFY(server->listen(QHostAddress::LocalHost, port));
        QTRY_COMPARE(client->count(), 1);
        verifyNothingElseComes();
        QCOMPARE(server->game().dvars().value(u"sv_hostname"_s), u"CoD2Host"_s);
    }

    void withoutALoadingTimeTheMapIsThereAtOnce()
    {
        client->rcon("map_rotate");
        QTRY_VERIFY(client->text().endsWith("Server: mp_carentan\n"));
        client->forget();
        client->rcon("status");
        QTRY_VERIFY(client->text().startsWith("map: mp_carentan\n"));
    }

    void aServerWithoutLimitAnswersEverything()
    {
        startWithLimit(PracticeOptions::Rate::Unlimited);
        QCOMPARE(answered(QList<QByteArray>(30, sayHello)), 30);
    }

    void oneRconRequestPassesInHalfASecond()
    {
        startWithLimit(PracticeOptions::Rate::HalfSecond);
        QCOMPARE(answered({sayHello, sayHello}), 1);
        now = 300ms;
        QCOMPARE(answered({sayHello}), 0);
        now = 499ms;
        QCOMPARE(answered({sayHello}), 0);
        now = 500ms; // the dropped ones did not start the time anew
        QCOMPARE(answered({sayHello}), 1);
        now = 999ms;
        QCOMPARE(answered({sayHello}), 0);
        now = 1000ms;
        QCOMPARE(answered({sayHello}), 1);
    }

    void whoseRequestItIsDoesNotMatterToHalfASecond()
    {
        startWithLimit(PracticeOptions::Rate::HalfSecond);
        PracticeClient stranger(server->port());
        stranger.rcon("status", "wrong");
        QTRY_COMPARE(stranger.text(), "Bad rconpassword.\n");
        QCOMPARE(answered({sayHello}), 0);
        now = 500ms;
        QCOMPARE(answered({sayHello, "\xFF\xFF\xFF\xFFrcon wrong status"}), 1);
        QCOMPARE(client->datagrams(), QList<QByteArray>({printHeader}));
        RateLimit limit(PracticeOptions::Rate::HalfSecond);
        QVERIFY(limit.admits(Request::Kind::Rcon, QHostAddress(u"192.0.2.1"_s), now));
        QVERIFY(!limit.admits(Request::Kind::Rcon, QHostAddress(u"192.0.2.2"_s), now));
    }

    void statusQueriesPassInHalfASecond()
    {
        startWithLimit(PracticeOptions::Rate::HalfSecond);
        QCOMPARE(answered({getStatus, sayHello, getStatus, getStatus, sayHello}), 4);
        now = 499ms;
        QCOMPARE(answered({getStatus, sayHello}), 1);
        now = 500ms; // nor did the queries start it
        QCOMPARE(answered({sayHello}), 1);
    }

    void aDroppedRequestDoesNothing()
    {
        startWithLimit(PracticeOptions::Rate::HalfSecond);
        QSignalSpy happened(server.get(), &PracticeServer::happened);
        QCOMPARE(answered({sayHello, "\xFF\xFF\xFF\xFFrcon practice sv_hostname x"}), 1);
        QCOMPARE(server->game().dvars().value(u"sv_hostname"_s), u"CoD2Host"_s);
        QCOMPARE(server->commands(), QList<QByteArray>({"say hello", "sv_hostname x"}));
        const QString line = happened.last().first().toString();
        QVERIFY2(line.endsWith(u": request of 31 bytes not answered: too soon after others"_s), qPrintable(line));
    }

    void aBurstOfTenPassesAndThenOneASecond()
    {
        startWithLimit(PracticeOptions::Rate::Burst);
        QCOMPARE(answered(QList<QByteArray>(6, sayHello) + QList<QByteArray>(6, getStatus)), 10);
        now = 999ms;
        QCOMPARE(answered({sayHello, getStatus}), 0);
        now = 1000ms;
        QCOMPARE(answered({getStatus, sayHello}), 1);
        now = 4500ms;
        QCOMPARE(answered(QList<QByteArray>(5, sayHello)), 3);
        now = 5000ms;
        QCOMPARE(answered({sayHello, sayHello}), 1);
        now = 1h;
        QCOMPARE(answered(QList<QByteArray>(20, "\xFF\xFF\xFF\xFFrcon wrong status")), 10);
    }

    void aBurstIsCountedForEachAddress()
    {
        startWithLimit(PracticeOptions::Rate::Burst);
        QCOMPARE(answered(QList<QByteArray>(10, getStatus)), 10);
        client = std::make_unique<PracticeClient>(server->port()); // another port
        QCOMPARE(answered({getStatus, sayHello}), 0);

        RateLimit limit(PracticeOptions::Rate::Burst);
        const QHostAddress first(u"192.0.2.1"_s);
        const QHostAddress second(u"192.0.2.2"_s);
        for (int turn = 0; turn < 10; ++turn) {
            QVERIFY(limit.admits(Request::Kind::Rcon, first, 7s));
            QVERIFY(limit.admits(Request::Kind::Status, second, 7s));
        }
        QVERIFY(!limit.admits(Request::Kind::Status, first, 7s));
        QVERIFY(!limit.admits(Request::Kind::Rcon, second, 7s));
        QVERIFY(limit.admits(Request::Kind::Rcon, first, 8s));
        QVERIFY(!limit.admits(Request::Kind::Rcon, first, 8s));
        QVERIFY(limit.admits(Request::Kind::Rcon, second, 8s));
    }

    void nonsenseCountsForNoLimit()
    {
        startWithLimit(PracticeOptions::Rate::Burst);
        QCOMPARE(answered(QList<QByteArray>(20, "\xFF\xFF\xFF\xFFgetchallenge")), 0);
        QCOMPARE(answered(QList<QByteArray>(11, sayHello)), 10);
    }

    void theLimitCountsWhatWaitedWhenItIsRead()
    {
        startWithLimit(PracticeOptions::Rate::HalfSecond);
        server->setMapLoad(100);
        client->rcon("map mp_decoy");
        QTRY_COMPARE(server->requests().size(), 1);
        client->send(sayHello);
        client->rcon("foo");
        QTRY_COMPARE(server->requests().size(), 3);
        now = 2s;
        QTRY_COMPARE(client->count(), 2); // the map and one of the two
        QCOMPARE(client->datagrams().last(), printHeader);
        QCOMPARE(answered({getStatus, sayHello}), 1);
    }

    void nastyNamesSurviveTheWire()
    {
        PracticeOptions options;
        options.players = 48;
        options.quirks = true;
        start(options);
        client->rcon("status");
        QTRY_VERIFY(client->text().endsWith("\n\n"));
        const QList<QByteArray> lines = client->text().split('\n');
        QCOMPARE(lines.size(), 3 + 48 + 2);
        for (int slot = 0; slot < 48; ++slot) {
            const Player *player = server->game().players().at(slot);
            const QByteArray name = ' ' + toAnsi(player->guid) + ' ' + toAnsi(player->name) + "^7 ";
            QVERIFY2(QByteArray(' ' + lines.at(3 + slot)).contains(name), lines.at(3 + slot).constData());
        }
    }

    void nonsenseIsIgnored_data()
    {
        QTest::addColumn<QByteArray>("datagram");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("one byte") << QByteArray(1, '\0');
        QTest::newRow("header only") << QByteArray("\xFF\xFF\xFF\xFF");
        QTest::newRow("a word of no meaning") << QByteArray("\xFF\xFF\xFF\xFFgetchallenge");
        QTest::newRow("no header") << QByteArray("rcon practice map_rotate");
        QTest::newRow("large zeroes") << QByteArray(60'000, '\0');
        QByteArray bytes;
        for (int value = 0; value < 256; ++value)
            bytes.append(static_cast<char>(value));
        QTest::newRow("all bytes") << bytes;
    }
    void nonsenseIsIgnored()
    {
        QFETCH(QByteArray, datagram);
        client->send(datagram);
        QTRY_COMPARE(server->requests(), QList<QByteArray>({datagram}));
        verifyNothingElseComes();
    }

    void anOversizedCommandIsCut()
    {
        client->rcon("set long " + QByteArray(20'000, 'x'));
        QTRY_COMPARE(client->count(), 1);
        QCOMPARE(server->game().dvars().value(u"long"_s), QString(1023 - 9, u'x'));
    }

    void aBinaryCommandIsAnsweredInKind()
    {
        client->rcon("\x01\xFE\x80\xAD");
        QTRY_COMPARE(client->text(), "Unknown command \"\xFE\x80\xAD\"\n");
    }

    void passwordsStayOutOfTheLog()
    {
        QSignalSpy happened(server.get(), &PracticeServer::happened);
        client->rcon("g_password \"hidden1\"");
        client->rcon("say hidden2", "hidden2");
        client->rcon("status");
        QTRY_COMPARE(server->requests().size(), 3);
        QString log;
        for (const QList<QVariant> &line : happened)
            log += line.first().toString() + u'\n';
        QVERIFY(log.contains(u"rcon g_password"_s) && log.contains(u"rcon status"_s));
        QVERIFY2(!log.contains(u"hidden"_s) && !log.contains(u"practice"_s), qPrintable(log));
    }

    void aTakenPortIsTold()
    {
        PracticeServer second;
        QVERIFY(!second.listen(QHostAddress::LocalHost, server->port()));
        QVERIFY(!second.errorString().isEmpty());
    }

    void aClosedServerCanListenAgain()
    {
        const quint16 port = server->port();
        server->close();
        QVERIFY(server->listen(QHostAddress::LocalHost, port));
        QCOMPARE(server->port(), port);
        verifyNothingElseComes();
    }
};

GUILESS_TEST(PracticeServerTest)
#include "tst_practice_server.moc"
