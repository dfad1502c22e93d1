// SPDX-License-Identifier: MIT
#include "at_request.h"
#include "link.h"
#include "rcon/exchange.h"
#include "rcon/reply_piece.h"
#include "window_test.h"

using namespace Qt::StringLiterals;

namespace {

bool anything(const QString &)
{
    return true;
}

/// The milliseconds of the program's clock that `action` takes.
template <typename Action>
qint64 took(const Link &link, const Action &action)
{
    const QDateTime begun = link.program.clock.now();
    action();
    return begun.msecsTo(link.program.clock.now());
}

} // namespace

/// Commands that are sent once, and the pieces of a reply.
class ExchangeOnceTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void theAnswerEndsTheWait()
    {
        Link link;
        link.server.answer("clientkick 3", {"3:Ann kicked\n"});
        bool isAnswered = false;
        const qint64 time = took(link, [&] { isAnswered = link.exchange.sendonce(u"clientkick 3"_s, anything); });
        QVERIFY(isAnswered);
        QCOMPARE(link.server.requests(), QByteArrayList{request("clientkick 3")});
        QVERIFY2(time < 750, qPrintable(QString::number(time)));
    }

    void aSilentServerGetsOneCopyAndBringsNoBox()
    {
        Link link;
        link.server.setSilent(true);
        bool isAnswered = true;
        const qint64 time = took(link, [&] { isAnswered = link.exchange.sendonce(u"clientkick 3"_s, anything); });
        QVERIFY(!isAnswered);
        QCOMPARE(link.server.requests().size(), 1);
        QVERIFY2(time >= 6000 && time < 6500, qPrintable(QString::number(time)));
    }

    void itWaitsForTheRestOfAReply()
    {
        Link link;
        link.server.answer("status", {"map: mp_decoy\n", "\n"});
        const auto isWhole = [](const QString &reply) { return reply.endsWith("\r\n\r\n"_L1); };
        QVERIFY(link.exchange.sendonce(u"status"_s, isWhole));
        QVERIFY(isWhole(link.session.rconreply));

        link.server.answer("status", {"map: mp_decoy\n"}); // the rest is lost
        const qint64 time = took(link, [&] { QVERIFY(link.exchange.sendonce(u"status"_s, isWhole)); });
        QVERIFY2(time >= 1500 && time < 3000, qPrintable(QString::number(time)));
    }

    void aCommandBeforeWhichSomethingCameIsNotSent()
    {
        Link link;
        link.server.answer("one", {"1"});
        QVERIFY(link.exchange.sendonce(u"one"_s, anything)); // so that the next waits for its turn
        asSoonAs(
            &link.server, [] { return true; }, [&] { link.exchange.sendinfo(u"one"_s); });
        QVERIFY(!link.exchange.sendonce(u"two"_s, anything));
        QVERIFY(!link.server.commands().contains("two"));
    }

    void theStrictestServerHasItsPause()
    {
        Link link;
        link.server.answer("one", {"1"});
        link.server.answer("two", {"2"});
        QList<QDateTime> times;
        QObject::connect(&link.server, &PracticeServer::requested, &link.server,
                         [&] { times.append(link.program.clock.now()); });
        QVERIFY(link.exchange.sendonce(u"one"_s, anything));
        QVERIFY(link.exchange.sendonce(u"two"_s, anything));
        link.session.rconnowait = true;
        link.exchange.sendinfo(u"one"_s);
        QVERIFY(link.exchange.sendonce(u"two"_s, anything));
        QTRY_COMPARE(times.size(), 4);
        QVERIFY(times.at(0).msecsTo(times.at(1)) >= 700);
        QVERIFY(times.at(2).msecsTo(times.at(3)) >= 700);
    }

    // The list had two copies: the second one's answer may come for six seconds after it.
    void answersToCopiesOfTheListAreAwaited()
    {
        Link link;
        link.server.setSilent(true);
        asSoonAs(
            &link.server, [&] { return link.server.requests().size() == 2; }, [&] { link.server.setSilent(false); });
        link.server.answer("status", {"map: mp_decoy\n\n"});
        link.exchange.sendinfo(u"status"_s, true);
        const qsizetype copies = link.server.requests().size();
        QVERIFY(copies >= 2);
        const qint64 time = took(link, [&] { QVERIFY(link.exchange.sendonce(u"status"_s, anything)); });
        QVERIFY2(time >= 4000, qPrintable(QString::number(time)));
        QCOMPARE(link.server.requests().size(), copies + 1);
        // One copy and its answer: nothing is awaited.
        QVERIFY(took(link, [&] { QVERIFY(link.exchange.sendonce(u"status"_s, anything)); }) < 2000);
    }

    // It is the same list, however it was asked for.
    void answersToTheListByAnyWordingAreAwaited_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<bool>("isAwaited");
        const auto row = [](const char *line, bool isAwaited) {
            QTest::newRow(line) << QString::fromLatin1(line) << isAwaited;
        };
        row("status", true);
        row("/status", true);
        row("\\STATUS", true);
        row("\"status\"", true);
        row("status x", true);
        row("say a; status", true);
        row("statusx", false);
        row("say status", false);
        row("g_status", false);
    }

    void answersToTheListByAnyWordingAreAwaited()
    {
        QFETCH(QString, line);
        QFETCH(bool, isAwaited);
        Link link;
        link.server.answer(line.toLatin1(), {});
        link.server.answer("status", {"map: mp_decoy\n\n"});
        if (line == u"status")
            link.server.answer("status", {});
        link.session.rconnowait = true;
        link.exchange.sendinfo(line, true); // as the console line is sent
        link.server.answer("status", {"map: mp_decoy\n\n"});
        const qint64 time = took(link, [&] { QVERIFY(link.exchange.sendonce(u"status"_s, anything)); });
        QCOMPARE(time >= 5000, isAwaited);
    }

    // A message is no list, whatever stands in it.
    void aMessageThatNamesTheListIsHeldUpLikeAny()
    {
        Link link;
        link.server.answer("one", {"1"});
        QVERIFY(link.exchange.sendonce(u"one"_s, anything));
        asSoonAs(
            &link.server, [] { return true; }, [&] { link.exchange.sendinfo(u"one"_s); });
        QVERIFY(!link.exchange.sendonce(u"tell 3 a; status"_s, anything));
        QVERIFY(!link.server.commands().contains("tell 3 a; status"));
    }

    // They went to the socket of the former link.
    void answersToCopiesOfAFormerLinkAreNotAwaited()
    {
        Link link;
        link.server.setSilent(true);
        asSoonAs(
            &link.server, [&] { return link.server.requests().size() == 2; }, [&] { link.server.setSilent(false); });
        link.server.answer("status", {"map: mp_decoy\n\n"});
        link.exchange.sendinfo(u"status"_s, true);
        QVERIFY(link.server.requests().size() >= 2);
        link.open();
        const qint64 time = took(link, [&] { QVERIFY(link.exchange.sendonce(u"status"_s, anything)); });
        QVERIFY2(time < 2000, qPrintable(QString::number(time)));
    }

    void whatGoesOutBesideItHasItsPauseToo()
    {
        Link link;
        link.server.answer("one", {"1"});
        QCOMPARE(link.exchange.untilTurn(), 0);
        link.exchange.sentBeside();
        QVERIFY(link.exchange.untilTurn() > 600);
        const qint64 time = took(link, [&] { QVERIFY(link.exchange.sendonce(u"one"_s, anything)); });
        QVERIFY2(time >= 600, qPrintable(QString::number(time)));
        QVERIFY(link.exchange.untilTurn() > 0);
    }

    void anotherCommandMeanwhileTakesTheReply()
    {
        Link link;
        link.server.answer("one", {"1"});
        link.server.answer("two", {"2"});
        atRequest(link.server, "one",
                  [&] { QTimer::singleShot(0, &link.server, [&] { link.exchange.sendinfo(u"two"_s, true); }); });
        QVERIFY(!link.exchange.sendonce(u"one"_s, [](const QString &) { return false; }));
    }

    void thePiecesOfAReplyAreKnown()
    {
        Link link;
        link.session.rconcollect = true;
        const QByteArray full(1293, 'x');
        link.server.answer("long", {"a   b ", " c", "", full, "end"});
        QVERIFY(link.exchange.sendonce(u"long"_s, [](const QString &reply) { return reply.endsWith("end"_L1); }));
        QCOMPARE(link.session.rconreply.size(), 4 + 2 + 1293 + 3); // blanks are squeezed
        QCOMPARE(link.exchange.pieces(), (QList<ReplyPiece>{{0, false}, {4, false}, {6, true}, {6 + 1293, false}}));
        link.server.answerRaw("long", {printed(QByteArray(9000, 'x')), printed("end")});
        QVERIFY(link.exchange.sendonce(u"long"_s, [](const QString &reply) { return reply.endsWith("end"_L1); }));
        QCOMPARE(link.program.prompts.takeBoxes().size(), 1);
        QCOMPARE(link.exchange.pieces(), (QList<ReplyPiece>{{0, false, true}, {8182, false, false}}));
        link.server.answer("long", {"short"});
        QVERIFY(link.exchange.sendonce(u"long"_s, anything));
        QCOMPARE(link.exchange.pieces(), (QList<ReplyPiece>{{0, false}}));
    }
};

WINDOW_TEST(ExchangeOnceTest)
#include "tst_exchange_once.moc"
