// SPDX-License-Identifier: MIT
#include "victim.h"

#include <QTimer>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype largestReply = 4 * 1024 * 1024; // characters

/// Sends the datagram again and again, twenty times in each second of the program's clock.
class Endless final {
public:
    Endless(Victim &victim, const QByteArray &datagram)
    {
        QObject::connect(&timer, &QTimer::timeout, &timer, [this, &victim, datagram] {
            const double now = victim.program.clock.secondsSinceMidnight();
            if (now < last + 0.05)
                return;
            last = now;
            victim.server.send(datagram);
            ++sent;
        });
        timer.start(0);
    }

    int sent = 0;

private:
    QTimer timer;
    double last = 0;
};

/// Sends so many of the datagram that the reply cannot hold more, and lets all of them arrive.
void fill(Victim &victim, const QByteArray &datagram)
{
    const QString &reply = victim.program.session.rconreply;
    for (int round = 0; round < 700 && reply.size() < largestReply; ++round) {
        const qsizetype before = reply.size();
        victim.server.send(datagram);
        QTRY_VERIFY(reply.size() > before);
    }
    int arrivals = 0;
    QObject context;
    QObject::connect(&victim.program.udpclient, &UDPClient::DataArrival, &context, [&] { ++arrivals; });
    for (int more = 0; more < 5; ++more)
        victim.server.send(datagram);
    QTRY_COMPARE(arrivals, 5);
}

} // namespace

/// A server that does not stop.
class EndlessRepliesTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void aReplyIsKeptUpToFourMillionCharacters()
    {
        Victim victim;
        victim.connect();
        Session &session = victim.program.session;
        session.rconcollect = true;
        victim.server.answers.insert("ask", {printDatagram("the first\n")});
        victim.program.exchange.sendinfo(u"ask"_s, true);
        fill(victim, printDatagram(QByteArray(8'000, 'x')));
        QCOMPARE(session.rconreply.size(), largestReply);
        QVERIFY(session.rconreply.startsWith(u"the first\nxxx"));

        victim.program.exchange.sendinfo(u"ask"_s, true);
        QCOMPARE(session.rconreply, u"the first\n"_s);
    }

    void whatIsNotKeptIsStillShown()
    {
        Victim victim;
        victim.connect();
        victim.program.session.rconcollect = true;
        fill(victim, printDatagram(QByteArray(8'000, 'x')));
        victim.program.session.rconcollect = false;
        victim.server.send(printDatagram("the last\n"));
        QTRY_VERIFY(victim.program.pane().endsWith(u"the last\r\n"));
        QCOMPARE(victim.program.session.rconreply.size(), largestReply);
    }

    void everyPopulateEndsWhileTheReplyGrows_data()
    {
        QTest::addColumn<QByteArray>("piece");
        QTest::newRow("letters") << QByteArray(100, 'x');
        QTest::newRow("lines") << QByteArray("one more line of many words\n");
        QTest::newRow("players") << QByteArray("  3 7 48 123456 Ann 50 10.0.0.1:28960 1234 25000\n");
        QTest::newRow("files") << QByteArray("/one.cfg\n/two.d3dbsp\n");
        QTest::newRow("variables") << QByteArray("S sv_hostname \"endless\"\nS scr_allow_bar \"1\"\n");
        QTest::newRow("an open quote") << QByteArray("sv_hostname \"");
    }

    void everyPopulateEndsWhileTheReplyGrows()
    {
        QFETCH(const QByteArray, piece);
        Victim victim(desertedGame(u"hob"_s));
        victim.openHob();
        victim.connect();
        int boxes = 0;
        victim.program.prompts.whileOpen = [&] {
            if (++boxes % 3 == 0 && victim.isConnected())
                victim.connect();
        };
        victim.server.liar = [&](const QByteArray &) { return QList<QByteArray>{printDatagram(piece)}; };
        auto endless = std::make_unique<Endless>(victim, printDatagram(piece));
        victim.populateAll();
        QVERIFY(endless->sent > 10);
        endless.reset();
        victim.program.prompts.takeBoxes();
        QVERIFY(!victim.program.progress()->isVisible());
    }

    void aListingAsLargeAsAReplyCanBeIsRead_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QString>("list");
        QTest::newRow("maps") << "dir maps/mp d3dbsp"_ba
                              << "a.d3dbsp\n"_ba << u"lstmaps"_s;
        QTest::newRow("files") << "fdir *.cfg"_ba
                               << "/a.cfg\n"_ba << u"lstcfgs"_s;
    }

    void aListingAsLargeAsAReplyCanBeIsRead()
    {
        QFETCH(const QByteArray, command);
        QFETCH(const QByteArray, line);
        QFETCH(const QString, list);
        const QByteArray page = printDatagram(line.repeated(8'000 / line.size()));
        Victim victim;
        victim.server.beforeAnswer = [&](const QByteArray &asked) {
            if (asked == command)
                QTimer::singleShot(0, &victim.program.window, [&] { fill(victim, page); });
        };
        victim.connect();
        victim.program.click(u"cmdpopmaps"_s);
        QVERIFY(victim.program.rows(list).size() > largestReply / line.size() / 2);
    }

    void connectingEndsWhileTheServerTalks()
    {
        Victim victim;
        const std::unique_ptr<Endless> endless = [&] {
            std::unique_ptr<Endless> begun;
            victim.server.beforeAnswer = [&](const QByteArray &) {
                if (!begun)
                    begun = std::make_unique<Endless>(victim, printDatagram("and so on\n"));
            };
            victim.connect();
            return begun;
        }();
        QVERIFY(victim.isConnected());
        QVERIFY(endless->sent > 10);
    }

    void aFloodInThePaneLeavesTheWindowItsClicks()
    {
        constexpr int flood = 6'000;
        Victim victim;
        victim.connect();
        auto *box = victim.program.find<QAbstractButton>(u"chkremcol"_s);
        const bool before = box->isChecked();
        int sent = 0;
        int sentAtClick = 0;
        connect(box, &QAbstractButton::toggled, this, [&] { sentAtClick = sent; });
        // Also inside the yields of the arrivals, so that there is always more to take in.
        QTimer sender;
        connect(&sender, &QTimer::timeout, this, [&] {
            for (int burst = 0; burst < 20 && sent < flood; ++burst, ++sent)
                victim.server.send(printDatagram("flood\n"));
            if (sent == flood / 4)
                QTimer::singleShot(0, box, [box] { box->click(); });
        });
        sender.start(0);
        QTRY_COMPARE_WITH_TIMEOUT(sent, flood, 60'000);
        QCOMPARE(box->isChecked(), !before);
        QVERIFY2(sentAtClick > 0 && sentAtClick < flood / 2, qPrintable(QString::number(sentAtClick)));
    }
};

WINDOW_TEST(EndlessRepliesTest)
#include "tst_endless_replies.moc"
