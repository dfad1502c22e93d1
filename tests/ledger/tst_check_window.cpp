// SPDX-License-Identifier: MIT
#include "connected_program.h"
#include "menus.h"
#include "other_windows.h"
#include "practice/datagrams.h"
#include "window_test.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QListWidget>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// A program, connected or not, and its check window; what the check waits for passes at once.
struct CheckedConnection final : ConnectedProgram {
    explicit CheckedConnection(const PracticeOptions &practice = {}, bool connects = true)
        : ConnectedProgram({.practice = practice, .prepare = {}, .connects = connects})
    {
        server.setClock([this] { return now; });
        if (!connects)
            fill(u"practice"_s);
        forget();
    }

    void fill(const QString &password) const
    {
        program.setText(u"comserver"_s, u"127.0.0.1"_s);
        program.setText(u"comport"_s, QString::number(server.port()));
        program.setText(u"txtPWD"_s, password);
    }
    void open()
    {
        now += 10s;
        program.trigger(u"mcheck"_s);
        runToItsEnd();
    }
    /// Each wait that no answer ends is over when nothing has come for a while.
    void runToItsEnd()
    {
        auto *timer = window()->findChild<QTimer *>(u"tmrcheck"_s);
        for (int turn = 0; !again()->isEnabled() && turn < 200; ++turn) {
            const qsizetype before = steps().size() + server.requests().size();
            for (int events = 0; events < 20; ++events)
                QCoreApplication::processEvents();
            if (timer->isActive() && before == steps().size() + server.requests().size()) {
                now += std::chrono::milliseconds(timer->interval());
                program.clock.set(program.clock.now().addMSecs(timer->interval()));
                timer->stop();
                QMetaObject::invokeMethod(timer, "timeout");
            }
        }
        QVERIFY(again()->isEnabled());
    }
    [[nodiscard]] static QWidget *window()
    {
        QWidget *found = otherWindow(u"frmcheck"_s);
        if (!found)
            failTest(u"no check window"_s);
        return found;
    }
    [[nodiscard]] static QPushButton *again() { return window()->findChild<QPushButton *>(u"cmdcheckagain"_s); }
    [[nodiscard]] static QStringList steps()
    {
        QStringList texts;
        const auto *list = window()->findChild<QListWidget *>(u"lststeps"_s);
        for (int row = 0; row < list->count(); ++row)
            texts.append(list->item(row)->text());
        return texts;
    }
    /// How each step begins.
    [[nodiscard]] static QStringList results()
    {
        static const QRegularExpression number(u"[0-9]+ ms"_s);
        QStringList texts;
        for (const QString &step : steps())
            texts.append(step.section(u'\n', 0, 0).replace(number, u"N ms"_s));
        return texts;
    }

    std::chrono::milliseconds now{};
};

const QString nameStep = u"Name: 127.0.0.1 is an address, and nothing had to be looked up"_s;
const QString answered = u"Public query: answered in N ms"_s;
const QString notAsked = u"Long reply: not asked for"_s;

} // namespace

class CheckWindowTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void allIsWell_data()
    {
        QTest::addColumn<bool>("connected");
        QTest::newRow("connected") << true;
        QTest::newRow("not connected") << false;
    }

    void allIsWell()
    {
        QFETCH(bool, connected);
        CheckedConnection it({}, connected);
        it.open();
        QCOMPARE(it.results().first(3), QStringList({nameStep, answered, u"Console: answered in N ms"_s}));
        QVERIFY2(it.results().at(3).startsWith(u"Long reply: it came whole in "_s), qPrintable(it.results().at(3)));
        QVERIFY2(it.results().at(3).contains(u" of 1010 bytes"_s), qPrintable(it.results().at(3)));
        QCOMPARE(it.results().size(), 4);
        QCOMPARE(it.server.commands(), (QByteArrayList{"getstatus", "g_gametype", "dvarlist s*"}));
        QCOMPARE(it.program.isConnected(), connected);
        QVERIFY(it.lines().isEmpty());
    }

    void aServerThatLosesCharactersIsFoundOut()
    {
        CheckedConnection it(PracticeOptions::cod2(), false);
        it.open();
        QVERIFY2(it.steps().constLast().contains(u" of 1303 bytes"_s) &&
                     it.steps().constLast().contains(u"lose a character at each border"_s),
                 qPrintable(it.steps().constLast()));
        QCOMPARE(it.server.commands(), (QByteArrayList{"getstatus", "g_gametype", "dvarlist s*"}));
    }

    void aServerThatDoesNotKnowTheLongCommandLosesNothing()
    {
        CheckedConnection it({}, false);
        it.server.answer("dvarlist s*", {"Unknown command \"dvarlist\"\n"});
        it.open();
        QCOMPARE(it.results().constLast(), u"Long reply: the server does not know \"dvarlist\""_s);
    }

    // The limit of the strictest servers counts every command of this computer.
    void itsCommandsKeepTheirDistanceFromTheProgramsOwn()
    {
        CheckedConnection it;
        QList<QDateTime> times;
        QObject::connect(&it.server, &PracticeServer::requested, &it.server, [&](const QByteArray &datagram) {
            if (datagram.contains("rcon "))
                times.append(it.program.clock.now());
        });
        it.program.setText(u"comdirect"_s, u"sv_hostname"_s);
        it.program.click(u"cmdsend"_s);
        QTRY_COMPARE(times.size(), 1);
        it.open();
        QCOMPARE(times.size(), 3);
        QVERIFY2(times.at(0).msecsTo(times.at(1)) >= 700,
                 qPrintable(QString::number(times.at(0).msecsTo(times.at(1)))));
        QVERIFY(it.program.exchange.sendonce(u"sv_hostname"_s, [](const QString &) { return true; }));
        QCOMPARE(times.size(), 4);
        QVERIFY2(times.at(2).msecsTo(times.at(3)) >= 700,
                 qPrintable(QString::number(times.at(2).msecsTo(times.at(3)))));
    }

    void itIsRecordedWithoutItsPassword()
    {
        CheckedConnection it;
        it.program.prompts.lines = {QDir::currentPath() + u"/traffic.jsonl"_s};
        it.program.trigger(u"mrecord"_s);
        it.server.setPassword(u"geheim"_s);
        it.program.find<QAbstractButton>(u"cmdconnect"_s)->click(); // now the fields can be changed
        it.fill(u"geheim"_s);
        it.server.answer("g_gametype", {"\"g_gametype\" is: \"geheim practice^7\"\n"});
        it.open();
        QByteArrayList sent;
        QByteArrayList came;
        for (const QByteArray &line : it.program.file(u"traffic.jsonl"_s).split('\n')) {
            const QJsonObject object = QJsonDocument::fromJson(line).object();
            const QByteArray datagram = QByteArray::fromBase64(object.value("data"_L1).toString().toLatin1());
            QVERIFY(!datagram.contains("geheim") && !datagram.contains("practice"));
            if (!line.isEmpty())
                (object.value("way"_L1) == "out"_L1 ? sent : came).append(datagram);
        }
        const QByteArray header("\xFF\xFF\xFF\xFF");
        QCOMPARE(sent, QByteArrayList({header + "getstatus", header + "rcon ****** g_gametype",
                                       header + "rcon ****** dvarlist s*"}));
        QVERIFY(came.size() >= 4);
        QCOMPARE(came.at(1), header + "print\n\"g_gametype\" is: \"****** ********^7\"\n");
    }

    // Whatever sends: it is not waited for without end, nor is all of it kept.
    void aListingWithoutEndIsEnded_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("datagrams");
        QTest::newRow("many") << 20 << 1000;
        QTest::newRow("much") << 8000 << 126; // the first one is small
    }

    void aListingWithoutEndIsEnded()
    {
        QFETCH(int, size);
        QFETCH(int, datagrams);
        CheckedConnection it({}, false);
        it.server.answer("dvarlist s*", {"begun\n"});
        const QByteArray piece = printDatagram(QByteArray(size - 10, 'x'));
        QCOMPARE(piece.size(), size);
        it.program.trigger(u"mcheck"_s);
        auto *timer = it.window()->findChild<QTimer *>(u"tmrcheck"_s);
        QTRY_COMPARE(it.steps().size(), 3);
        it.now += 10s;
        it.program.clock.set(it.program.clock.now().addSecs(10));
        timer->stop();
        QMetaObject::invokeMethod(timer, "timeout"); // the pause before it
        QTRY_COMPARE(it.server.commands().size(), 3);
        QCOMPARE(it.server.commands().constLast(), "dvarlist s*");
        for (int sent = 0; sent < 2 * datagrams && !it.again()->isEnabled(); ++sent) {
            QVERIFY(it.server.sendRaw(piece));
            for (int events = 0; events < 3; ++events)
                QCoreApplication::processEvents();
        }
        QVERIFY(it.again()->isEnabled());
        QVERIFY2(it.results().constLast().startsWith(
                     u"Long reply: it had no end; it came in %1 datagrams: "_s.arg(datagrams)),
                 qPrintable(it.results().constLast()));
    }

    // Datagrams that come drop by drop begin no new wait of all.
    void aListingHasTenSeconds()
    {
        CheckedConnection it({}, false);
        it.server.answer("dvarlist s*", {"begun\n"});
        it.program.trigger(u"mcheck"_s);
        auto *timer = it.window()->findChild<QTimer *>(u"tmrcheck"_s);
        auto *all = it.window()->findChild<QTimer *>(u"tmrlisting"_s);
        QTRY_COMPARE(it.steps().size(), 3);
        QVERIFY(!all->isActive());
        it.now += 10s;
        it.program.clock.set(it.program.clock.now().addSecs(10));
        timer->stop();
        QMetaObject::invokeMethod(timer, "timeout");
        QTRY_VERIFY(timer->interval() == 1000); // something has come
        QVERIFY(all->isActive() && all->isSingleShot());
        QCOMPARE(all->interval(), 10'000);
        QMetaObject::invokeMethod(all, "timeout");
        QVERIFY(it.again()->isEnabled());
        QVERIFY(!all->isActive());
        QCOMPARE(it.results().constLast(), u"Long reply: its end is missing; it came in one datagram of 16 bytes"_s);
    }

    void anEmptyAnswerIsNotTakenForWell()
    {
        CheckedConnection it({}, false);
        it.server.answer("g_gametype", {""});
        it.server.answer("dvarlist s*", {""});
        it.open();
        QCOMPARE(it.results().last(2),
                 QStringList({u"Console: answered in N ms without a word"_s, u"Long reply: it was empty"_s}));
    }

    void aRefusalIsToldInItsWords()
    {
        CheckedConnection it(PracticeOptions::cod2(), false);
        it.fill(u"wrong"_s);
        it.open();
        QCOMPARE(it.results(),
                 QStringList({nameStep, answered, u"Console: refused with \"Invalid password.\""_s, notAsked}));
        QCOMPARE(it.server.requests().size(), 2);
    }

    void aSilentConsoleIsAskedTwice()
    {
        CheckedConnection it({}, false);
        it.server.answer("g_gametype", {});
        it.open();
        QCOMPARE(it.results(),
                 QStringList({nameStep, answered, u"Console: silent although the public query answers"_s, notAsked}));
        QVERIFY2(it.steps().at(2).contains(u"another administrator's tool may be using up the server's limit, or RCON "
                                           "is blocked"_s),
                 qPrintable(it.steps().at(2)));
        QCOMPARE(it.server.commands(), (QByteArrayList{"getstatus", "g_gametype", "g_gametype"}));
    }

    void fourDatagramsAreTheMost()
    {
        CheckedConnection it({}, false);
        it.server.answer("g_gametype", {});
        int asked = 0;
        QObject::connect(&it.server, &PracticeServer::requested, &it.server, [&] {
            if (it.server.commands().constLast() == "g_gametype" && ++asked == 2)
                it.server.answerAsUsual("g_gametype");
        });
        it.open();
        QCOMPARE(it.results().at(2), u"Console: answered in N ms"_s);
        QCOMPARE(it.server.commands(), (QByteArrayList{"getstatus", "g_gametype", "g_gametype", "dvarlist s*"}));
    }

    void aServerThatIsNotThereIsToldSo()
    {
        CheckedConnection it({}, false);
        it.server.setSilent(true);
        it.open();
        QCOMPARE(it.results(),
                 QStringList({nameStep, u"Public query: no answer"_s, u"Console: no answer"_s, notAsked}));
        QVERIFY(it.server.requests().size() <= 4);
    }

    void emptyFieldsSendNothing()
    {
        CheckedConnection it({}, false);
        it.fill({});
        it.open();
        QCOMPARE(it.results(), QStringList{u"Server: the connection fields are not filled in"_s});
        QVERIFY(it.server.requests().isEmpty());
    }

    void aNameIsLookedUp()
    {
        CheckedConnection it({}, false);
        it.program.setText(u"comserver"_s, u"localhost"_s);
        it.program.trigger(u"mcheck"_s);
        QTRY_VERIFY(!it.steps().isEmpty());
        it.runToItsEnd();
        QCOMPARE(it.results().first(2),
                 QStringList({u"Name: localhost has the address 127.0.0.1, found in N ms"_s, answered}));
    }

    void itCanBeDoneAgainWhenItHasEnded()
    {
        CheckedConnection it({}, false);
        it.program.trigger(u"mcheck"_s);
        QVERIFY(!it.again()->isEnabled());
        it.runToItsEnd();
        const QStringList first = it.results();
        it.now += 10s;
        it.again()->click();
        QVERIFY(!it.again()->isEnabled());
        it.runToItsEnd();
        QCOMPARE(it.results(), first);
    }

    void aClosedWindowSendsNothingMore()
    {
        CheckedConnection it({}, false);
        it.server.setSilent(true);
        it.program.trigger(u"mcheck"_s);
        QWidget *window = it.window();
        QTRY_COMPARE(it.server.requests().size(), 1);
        window->close();
        QVERIFY(!window->findChild<QTimer *>(u"tmrcheck"_s)->isActive());
        for (int events = 0; events < 50; ++events)
            QCoreApplication::processEvents();
        QCOMPARE(it.server.requests().size(), 1);
    }

    void itIsCopiedWithoutThePassword()
    {
        CheckedConnection it({}, false);
        it.fill(u"geheim"_s);
        it.server.setPassword(u"geheim"_s);
        it.server.answer("g_gametype", {"Bad rcon: geheim\n"});
        it.open();
        const QString text = copiedBy([&] { it.window()->findChild<QPushButton *>(u"cmdcheckcopy"_s)->click(); });
        QVERIFY2(!text.contains(u"geheim"_s) && text.contains(u"Bad rcon: ******"_s), qPrintable(text));
        QVERIFY2(text.startsWith(u"Connection check of 127.0.0.1:%1, 05-Mar-2006 12:"_s.arg(it.server.port())),
                 qPrintable(text));
        for (const QString &step : it.steps())
            QVERIFY2(text.contains(u'\n' + step.section(u'\n', 0, 0) + u"\n    "_s + step.section(u'\n', 1) + u'\n'),
                     qPrintable(step));
    }

    // Both speak to the server at once, each by a port of its own.
    void theProgramGoesOnBesideIt()
    {
        CheckedConnection it;
        it.program.trigger(u"mcheck"_s);
        QVERIFY(it.showsReplies());
        it.runToItsEnd();
        QCOMPARE(it.results().size(), 4);
    }
};

WINDOW_TEST(CheckWindowTest)
#include "tst_check_window.moc"
