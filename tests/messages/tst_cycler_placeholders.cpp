// SPDX-License-Identifier: MIT
#include "cycler_tab.h"

using namespace Qt::StringLiterals;

namespace {

/// Gives the server a name and a friendly-fire mode.
void name(CyclerTab &cycler, const QString &hostname, const QString &mode)
{
    cycler.server.game().dvars().set(u"sv_hostname"_s, hostname);
    cycler.server.game().dvars().set(u"scr_friendlyfire"_s, mode);
}

/// The settings of a program that connects to `server` and starts the cycler by itself.
QByteArray startingByItself(const PracticeServer &server, const QByteArray &more = {})
{
    return keepsOutput +
           "autoconnect=1\r\nautoconnectserv=127.0.0.1\r\nautoconnectport=" + QByteArray::number(server.port()) +
           "\r\nautoconnectrcon=practice\r\nautomessage=1\r\n" + more +
           setsFile({{"Ann", {"first"}}, {"Ben", {"other"}}});
}

} // namespace

/// What the cycler says in place of the placeholders, an hour of it, and its start with the program.
class CyclerPlaceholdersTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void placeholdersAreFilled_data()
    {
        QTest::addColumn<QByteArray>("message");
        QTest::addColumn<QString>("mode");
        QTest::addColumn<QString>("said"); ///< with PORT for the server's port
        QTest::newRow("none") << QByteArray("^1Plain %1 100%") << u"1"_s << u"^1Plain %1 100%"_s;
        QTest::newRow("the address") << QByteArray("at %IP%") << u"1"_s << u"at 127.0.0.1:PORT"_s;
        QTest::newRow("the address twice") << QByteArray("%ip% or %IP%") << u"1"_s << u"127.0.0.1:PORT or %IP%"_s;
        QTest::newRow("the name") << QByteArray("on %sn%, %SN%") << u"1"_s << u"on ^2Big  Server, %SN%"_s;
        QTest::newRow("off") << QByteArray("FF %FF% %ff%") << u"0"_s << u"FF Off %ff%"_s;
        QTest::newRow("on") << QByteArray("FF %Ff%") << u"1"_s << u"FF On"_s;
        QTest::newRow("reflective") << QByteArray("FF %FF%") << u"2"_s << u"FF Reflective"_s;
        QTest::newRow("shared") << QByteArray("FF %FF%") << u"3"_s << u"FF Shared"_s;
        QTest::newRow("another mode") << QByteArray("FF [%FF%]") << u"4"_s << u"FF []"_s;
        QTest::newRow("another mode behind the name")
            << QByteArray("%FF% %SN%") << u"4"_s << u"^2Big  Server ^2Big  Server"_s;
        QTest::newRow("no number") << QByteArray("FF [%FF%]") << u"x"_s << u"FF []"_s;
        QTest::newRow("all") << QByteArray("%FF%, %SN%, %IP%") << u"0"_s << u"Off, ^2Big  Server, 127.0.0.1:PORT"_s;
    }

    void placeholdersAreFilled()
    {
        QFETCH(QByteArray, message);
        QFETCH(QString, mode);
        QFETCH(QString, said);
        CyclerTab cycler({message});
        name(cycler, u"^2Big  Server"_s, mode);
        cycler.start();
        QCOMPARE(cycler.saidIn(1),
                 QStringList{u"1 "_s + said.replace(u"PORT"_s, QString::number(cycler.server.port()))});
    }

    void theServerIsAskedInOrderAndWaitedFor()
    {
        CyclerTab cycler({"%FF% %SN% %IP%"});
        name(cycler, u"Big"_s, u"1"_s);
        cycler.start();
        const double before = cycler.program().clock.secondsSinceMidnight();
        cycler.tick();
        QCOMPARE(cycler.server.commands(),
                 (QList<QByteArray>{"dvarlist sv_hostname", "dvarlist scr_friendlyfire",
                                    sayPrefix + "On Big 127.0.0.1:" + QByteArray::number(cycler.server.port())}));
        QVERIFY2(cycler.program().clock.secondsSinceMidnight() - before > 2.5, "five waits of half a second or more");
    }

    // What a server's name brings in is not searched again for the placeholder that was filled before it.
    void aPlaceholderInTheNameIsFilledOnlyBehindIt()
    {
        CyclerTab cycler({"%SN% %FF%"});
        name(cycler, u"%IP% %SN% %FF%"_s, u"1"_s);
        cycler.start();
        QCOMPARE(cycler.saidIn(1), QStringList{u"1 %IP% %SN% On %FF%"_s});
    }

    void aServerThatDoesNotAnswerHasNoName_data()
    {
        QTest::addColumn<QList<QByteArray>>("answers");
        QTest::addColumn<QList<Box>>("boxes");
        QTest::newRow("silence") << QList<QByteArray>() << QList<Box>{noResponseBox(), noResponseBox()};
        QTest::newRow("something else") << QList<QByteArray>{"0 total dvars\n"} << QList<Box>();
        QTest::newRow("a cut reply") << QList<QByteArray>{"S  sv_hostname \"Bi"} << QList<Box>();
    }

    void aServerThatDoesNotAnswerHasNoName()
    {
        QFETCH(QList<QByteArray>, answers);
        CyclerTab cycler({"[%SN%] [%FF%]", "second"});
        cycler.setInterval(u"1"_s);
        cycler.server.answer("dvarlist sv_hostname", answers);
        cycler.server.answer("dvarlist scr_friendlyfire", answers);
        cycler.start();
        cycler.tick();
        QTEST(cycler.program().prompts.takeBoxes(), "boxes");
        QCOMPARE(cycler.server.commands().constLast(), sayPrefix + "[] []");
        QCOMPARE(cycler.saidIn(1), QStringList{u"1 second"_s});
    }

    void theMessageIsEchoedUnlessTheServerWasAsked_data()
    {
        QTest::addColumn<QByteArray>("message");
        QTest::addColumn<bool>("echoed");
        QTest::newRow("plain") << QByteArray("Hello") << true;
        QTest::newRow("the address") << QByteArray("%IP%") << true;
        QTest::newRow("the name") << QByteArray("%SN%") << false;
        QTest::newRow("friendly fire") << QByteArray("%FF%") << false;
    }

    void theMessageIsEchoedUnlessTheServerWasAsked()
    {
        QFETCH(QByteArray, message);
        QFETCH(bool, echoed);
        CyclerTab cycler({message});
        cycler.start();
        const QString pane = cycler.program().pane();
        cycler.tick();
        const QString echo = u"] \x18"_s + QString::fromLatin1(cycler.server.commands().constLast()) + u"\x18\r\n"_s;
        QCOMPARE(cycler.program().pane().mid(pane.size()).contains(echo), echoed);
        QCOMPARE(cycler.program().pane().mid(pane.size()).contains(u">>RCON sent"_s), echoed);
    }

    // A settings page is read in minute 31, in which a message would be due.
    void anHourOfTheCycler()
    {
        CyclerTab cycler({"Welcome to %SN% at %IP%, friendly fire %FF%", "%FF% is the friendly fire of %sn% (%ip%)",
                          "%IP% %IP% ^3%SN% %SN% ^4%FF% %FF%"});
        name(cycler, u"^1Big ^7Server"_s, u"2"_s);
        cycler.start();
        const QByteArray address = "127.0.0.1:" + QByteArray::number(cycler.server.port());
        const QByteArrayList messages{
            "Welcome to ^1Big ^7Server at " + address + ", friendly fire Reflective",
            "Reflective is the friendly fire of ^1Big ^7Server (" + address + ")",
            address + " %IP% ^3^1Big ^7Server %SN% ^4Reflective %FF%",
        };
        QList<QByteArray> said;
        QList<int> minutes;
        for (int minute = 1; minute <= 60; ++minute) {
            cycler.server.forgetRequests();
            if (minute == 31) {
                atRequest(cycler.server, "dvarlist scr_allow_*", [&] { cycler.tick(); });
                cycler.program().click(u"cmdpopwep"_s);
                QCOMPARE(cycler.server.commands(), QList<QByteArray>{"dvarlist scr_allow_*"});
            } else {
                cycler.tick();
            }
            const QList<QByteArray> commands = cycler.server.commands();
            for (const QByteArray &command : commands) {
                if (command.startsWith("say "))
                    said.append(command);
            }
            if (!commands.isEmpty() && minute != 31)
                minutes.append(minute);
        }
        QCOMPARE(minutes, (QList<int>{1, 4, 7, 10, 13, 16, 19, 22, 25, 28, 34, 37, 40, 43, 46, 49, 52, 55, 58}));
        QList<QByteArray> wanted;
        for (int number = 0; number < 19; ++number)
            wanted.append("say ^3Molvark ^5(1.0)> ^7" + messages.at(number % 3));
        QCOMPARE(said, wanted);
        QVERIFY(cycler.isRunning());
    }

    void itStartsWithTheProgram()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        answerBriefly(server);
        MessagesTab tab(startingByItself(server, "messageset=2\r\nmessagetime=7\r\n"));
        QVERIFY(tab.program.find<QTimer>(u"tmrmessage"_s)->isActive());
        QCOMPARE(tab.program.text(u"txtinterval"_s), u"7"_s);
        QCOMPARE(tab.free(), u"2"_s);
        server.forgetRequests();
        QMetaObject::invokeMethod(tab.program.find<QTimer>(u"tmrmessage"_s), "timeout");
        QCOMPARE(server.commands(), QList<QByteArray>{sayPrefix + "first"});
    }

    void withoutNumbersItStartsWithThree()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        answerBriefly(server);
        const MessagesTab tab(startingByItself(server));
        QVERIFY(tab.program.find<QTimer>(u"tmrmessage"_s)->isActive());
        QCOMPARE(tab.program.text(u"txtinterval"_s), u"3"_s);
        QCOMPARE(tab.free(), u"1"_s);
    }

    void byItselfItWarnsOfNothing_data()
    {
        QTest::addColumn<QByteArray>("settings");
        QTest::newRow("no connection") << QByteArray("[options]\r\nautomessage=1\r\n" + threeSets());
        QTest::newRow("off") << QByteArray("[options]\r\nautomessage=0\r\n" + threeSets());
        QTest::newRow("not said") << threeSets();
    }

    void byItselfItWarnsOfNothing()
    {
        QFETCH(QByteArray, settings);
        const MessagesTab tab(settings);
        QVERIFY(!tab.program.find<QTimer>(u"tmrmessage"_s)->isActive());
        QVERIFY(tab.program.find<QAbstractButton>(u"cmdmessstart"_s)->isEnabled());
    }

    void byItselfAnEmptySetIsNotTold()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        answerBriefly(server);
        QByteArray settings = startingByItself(server);
        settings.replace("mess0=first", "mess0=");
        const MessagesTab tab(settings);
        QVERIFY(tab.program.isConnected());
        QVERIFY(!tab.program.find<QTimer>(u"tmrmessage"_s)->isActive());
    }

    // While the program connects by itself, a person can already have typed a message.
    void byItselfItWarnsOfUnsavedSets()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        answerBriefly(server);
        Program program(startingByItself(server));
        atRequest(server, "status", [&] { program.find<QAbstractButton>(u"cmdsetsave"_s)->setEnabled(true); });
        program.start();
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{pendingBox()});
        QVERIFY(!program.find<QTimer>(u"tmrmessage"_s)->isActive());
    }
};

WINDOW_TEST(CyclerPlaceholdersTest)
#include "tst_cycler_placeholders.moc"
