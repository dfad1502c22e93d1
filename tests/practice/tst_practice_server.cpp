// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "practice/practice_server.h"
#include "practice_client.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QByteArray printHeader("\xFF\xFF\xFF\xFFprint\n");

} // namespace

class PracticeServerTest final : public QObject {
    Q_OBJECT

    std::unique_ptr<PracticeServer> m_server;
    std::unique_ptr<PracticeClient> m_client;

    void start(const PracticeOptions &options)
    {
        m_server = std::make_unique<PracticeServer>(options);
        QVERIFY2(m_server->listen(), qPrintable(m_server->errorString()));
        m_client = std::make_unique<PracticeClient>(m_server->port());
    }

    // The next reply to a plain request, which shows that nothing else is on its way.
    void verifyNothingElseComes()
    {
        const qsizetype before = m_client->count();
        m_client->rcon("say end");
        QTRY_COMPARE(m_client->count(), before + 1);
        QCOMPARE(m_client->datagrams().last(), printHeader);
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
        m_client->rcon("status");
        QTRY_VERIFY(m_client->count() > 0);
        QTRY_VERIFY(m_client->text().endsWith("\n\n"));
        QVERIFY(m_client->text().startsWith("map: mp_toujane\nnum score ping guid   name"));
        QCOMPARE(m_client->text(), toAnsi(m_server->game().execute(u"status"_s).reply));
    }

    void everyRequestIsAnsweredInItsTurn()
    {
        for (int turn = 1; turn <= 50; ++turn) {
            m_client->rcon("set turn " + QByteArray::number(turn));
            QTRY_COMPARE(m_client->count(), turn);
            QCOMPARE(m_server->game().dvars().number(u"turn"_s), turn);
        }
    }

    void silentCommandsAreAcknowledgedByTheBareHeader()
    {
        m_client->rcon("sv_hostname\"My server\"");
        QTRY_COMPARE(m_client->datagrams(), QList<QByteArray>({printHeader}));
        QCOMPARE(m_server->game().dvars().value(u"sv_hostname"_s), u"My server"_s);
    }

    void aWrongPasswordIsRefused()
    {
        m_client->rcon("sv_hostname x", "wrong");
        QTRY_COMPARE(m_client->text(), "Bad rconpassword.\n");
        m_client->forget();
        m_client->rcon("sv_hostname x", "");
        QTRY_COMPARE(m_client->text(), "Bad rconpassword.\n");
        QCOMPARE(m_server->game().dvars().value(u"sv_hostname"_s), u"CoD2Host"_s);
    }

    void aServerWithoutPasswordSaysSo()
    {
        m_server->setPassword({});
        m_client->rcon("status", "");
        QTRY_COMPARE(m_client->text(), "No rconpassword set on the server.\n");
    }

    void aNewPasswordCountsAtOnce()
    {
        m_client->rcon("rcon_password other");
        QTRY_COMPARE(m_client->count(), 1);
        m_client->rcon("say hello", "practice");
        QTRY_COMPARE(m_client->text(), "Bad rconpassword.\n");
        m_client->rcon("say hello", "other");
        QTRY_COMPARE(m_client->datagrams().last(), printHeader);
    }

    void thePublicStatusIsOneDatagram()
    {
        m_server->setDatagramSize(40);
        m_client->send("\xFF\xFF\xFF\xFFgetstatus");
        QTRY_COMPARE(m_client->count(), 1);
        QCOMPARE(m_client->datagrams().first(),
                 QByteArray("\xFF\xFF\xFF\xFF" + toAnsi(m_server->game().statusResponse())));
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
        m_server->setDatagramSize(size);
        const QByteArray whole = toAnsi(m_server->game().execute(u"dvarlist sv_*"_s).reply);
        m_client->rcon("dvarlist sv_*");
        QTRY_COMPARE(m_client->text().size(), whole.size());
        QCOMPARE(m_client->text(), whole);
        QCOMPARE(m_client->count(), (whole.size() + size - 1) / size);
        for (const QByteArray &datagram : m_client->datagrams())
            QVERIFY(datagram.startsWith(printHeader) && datagram.size() <= size + printHeader.size());
    }

    void everyRequestIsKept()
    {
        QSignalSpy requested(m_server.get(), &PracticeServer::requested);
        m_client->rcon("dvarlist sv_*");
        m_client->send("\xFF\xFF\xFF\xFFgetstatus");
        m_client->rcon("say a", "wrong");
        QTRY_COMPARE(m_server->requests().size(), 3);
        QCOMPARE(m_server->requests(),
                 QList<QByteArray>({"\xFF\xFF\xFF\xFFrcon practice dvarlist sv_*", "\xFF\xFF\xFF\xFFgetstatus",
                                    "\xFF\xFF\xFF\xFFrcon wrong say a"}));
        QCOMPARE(m_server->commands(), QList<QByteArray>({"dvarlist sv_*", "getstatus", "say a"}));
        QCOMPARE(requested.size(), 3);
        m_server->forgetRequests();
        QVERIFY(m_server->requests().isEmpty());
    }

    void aSilentServerCountsAndSaysNothing()
    {
        m_server->setSilent(true);
        m_client->rcon("sv_hostname x");
        m_client->send("\xFF\xFF\xFF\xFFgetstatus");
        QTRY_COMPARE(m_server->requests().size(), 2);
        m_server->setSilent(false);
        verifyNothingElseComes();
        QCOMPARE(m_server->game().dvars().value(u"sv_hostname"_s), u"CoD2Host"_s);
    }

    void aRequestCanBeAnsweredByTheTest()
    {
        m_server->answer("status", {"one", "two\n"});
        m_client->rcon("status");
        QTRY_COMPARE(m_client->datagrams(), QList<QByteArray>({printHeader + "one", printHeader + "two\n"}));
        m_client->rcon("status");
        QTRY_COMPARE(m_client->count(), 4);
        m_server->answerAsUsual("status");
        m_client->forget();
        m_client->rcon("status");
        QTRY_VERIFY(m_client->text().startsWith("map: mp_toujane\n"));
    }

    void aTestCanAnswerWithAnything()
    {
        m_server->answerRaw("getstatus", {"\xFF\xFF\xFF\xFFstatusResponse\n", QByteArray(), QByteArray(1, '\0')});
        m_client->send("\xFF\xFF\xFF\xFFgetstatus");
        QTRY_COMPARE(m_client->datagrams(),
                     QList<QByteArray>({"\xFF\xFF\xFF\xFFstatusResponse\n", QByteArray(), QByteArray(1, '\0')}));
    }

    void aTestCanAnswerWithNothing()
    {
        m_server->answer("map_rotate", {});
        m_client->rcon("map_rotate");
        QTRY_COMPARE(m_server->requests().size(), 1);
        verifyNothingElseComes();
        QCOMPARE(m_server->game().dvars().value(u"mapname"_s), u"mp_toujane"_s);
    }

    void aSlotMayChangeTheAnswer()
    {
        connect(m_server.get(), &PracticeServer::requested, this,
                [this] { m_server->answer("status", {QByteArray::number(m_server->requests().size())}); });
        m_client->rcon("status");
        m_client->rcon("status");
        QTRY_COMPARE(m_client->text(), "12");
    }

    void aWrongPasswordGetsNoPreparedAnswer()
    {
        m_server->answer("status", {"prepared"});
        m_client->rcon("status", "wrong");
        QTRY_COMPARE(m_client->text(), "Bad rconpassword.\n");
    }

    void anUnaskedDatagramReachesTheLastClient()
    {
        QVERIFY(!m_server->sendRaw("nobody is there"));
        m_client->rcon("say hello");
        QTRY_COMPARE(m_client->count(), 1);
        QVERIFY(m_server->sendRaw(printHeader + "late"));
        QTRY_COMPARE(m_client->text(), "late");
    }

    void nothingPassesALineThatLosesAll()
    {
        QSignalSpy happened(m_server.get(), &PracticeServer::happened);
        m_server->setLoss(100);
        m_client->rcon("sv_hostname x");
        QTRY_COMPARE(m_server->requests().size(), 1);
        QVERIFY(happened.last().first().toString().endsWith(u"lost"_s));
        m_server->setLoss(0);
        verifyNothingElseComes();
        QCOMPARE(m_server->game().dvars().value(u"sv_hostname"_s), u"CoD2Host"_s);
    }

    void aBadLineLosesRequestsAndReplies()
    {
        m_server->setLoss(50);
        for (int turn = 1; turn <= 200; ++turn) {
            m_client->rcon("set turn " + QByteArray::number(turn));
            QTRY_COMPARE(m_server->requests().size(), turn);
        }
        m_server->setLoss(0);
        const qsizetype answered = m_client->count();
        QVERIFY2(answered > 20 && answered < 80, QByteArray::number(answered).constData()); // a quarter of 200
        verifyNothingElseComes();
    }

    void neighboursOvertakeEachOther()
    {
        m_server->setReorder(true);
        m_server->setDatagramSize(3);
        m_client->rcon("foo"); // Unknown command "foo"
        QTRY_COMPARE(m_client->count(), 8);
        QCOMPARE(m_client->text(), "now"
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
        m_server->setLatency(60);
        QElapsedTimer clock;
        clock.start();
        m_client->rcon("say hello");
        QTRY_COMPARE(m_client->count(), 1);
        QVERIFY(clock.elapsed() >= 59);
    }

    void nothingIsHeardWhileAMapLoads()
    {
        m_server->setMapLoad(200);
        m_client->rcon("map mp_decoy");
        m_client->rcon("say hello");
        m_client->send("\xFF\xFF\xFF\xFFgetstatus");
        QTRY_COMPARE(m_server->requests().size(), 3);
        QCOMPARE(m_client->count(), 0);
        QTRY_COMPARE(m_client->count(), 1);
        QVERIFY(m_client->text().endsWith("Server: mp_decoy\n"));
        verifyNothingElseComes();
    }

    void withoutALoadingTimeTheMapIsThereAtOnce()
    {
        m_client->rcon("map_rotate");
        QTRY_VERIFY(m_client->text().endsWith("Server: mp_carentan\n"));
        m_client->forget();
        m_client->rcon("status");
        QTRY_VERIFY(m_client->text().startsWith("map: mp_carentan\n"));
    }

    void nastyNamesSurviveTheWire()
    {
        PracticeOptions options;
        options.players = 48;
        options.quirks = true;
        start(options);
        m_client->rcon("status");
        QTRY_VERIFY(m_client->text().endsWith("\n\n"));
        const QList<QByteArray> lines = m_client->text().split('\n');
        QCOMPARE(lines.size(), 3 + 48 + 2);
        for (int slot = 0; slot < 48; ++slot) {
            const Player *player = m_server->game().players().at(slot);
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
        m_client->send(datagram);
        QTRY_COMPARE(m_server->requests(), QList<QByteArray>({datagram}));
        verifyNothingElseComes();
    }

    void anOversizedCommandIsCut()
    {
        m_client->rcon("set long " + QByteArray(20'000, 'x'));
        QTRY_COMPARE(m_client->count(), 1);
        QCOMPARE(m_server->game().dvars().value(u"long"_s), QString(1023 - 9, u'x'));
    }

    void aBinaryCommandIsAnsweredInKind()
    {
        m_client->rcon("\x01\xFE\x80\xAD");
        QTRY_COMPARE(m_client->text(), "Unknown command \"\xFE\x80\xAD\"\n");
    }

    void passwordsStayOutOfTheLog()
    {
        QSignalSpy happened(m_server.get(), &PracticeServer::happened);
        m_client->rcon("g_password \"hidden1\"");
        m_client->rcon("say hidden2", "hidden2");
        m_client->rcon("status");
        QTRY_COMPARE(m_server->requests().size(), 3);
        QString log;
        for (const QList<QVariant> &line : happened)
            log += line.first().toString() + u'\n';
        QVERIFY(log.contains(u"rcon g_password"_s) && log.contains(u"rcon status"_s));
        QVERIFY2(!log.contains(u"hidden"_s) && !log.contains(u"practice"_s), qPrintable(log));
    }

    void aTakenPortIsTold()
    {
        PracticeServer second;
        QVERIFY(!second.listen(QHostAddress::LocalHost, m_server->port()));
        QVERIFY(!second.errorString().isEmpty());
    }

    void aClosedServerCanListenAgain()
    {
        const quint16 port = m_server->port();
        m_server->close();
        QVERIFY(m_server->listen(QHostAddress::LocalHost, port));
        QCOMPARE(m_server->port(), port);
        verifyNothingElseComes();
    }
};

QTEST_GUILESS_MAIN(PracticeServerTest)
#include "tst_practice_server.moc"
