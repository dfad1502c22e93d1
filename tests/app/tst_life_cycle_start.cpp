// SPDX-License-Identifier: MIT
#include "game_replies.h"
#include "program.h"
#include "saved_entries.h"
#include "window_test.h"

#include <QDir>
#include <QPushButton>
#include <QTabWidget>

using namespace Qt::StringLiterals;

namespace {

QByteArray autoConnect(const QByteArray &server, const QByteArray &port, const QByteArray &password)
{
    return "[options]\r\nautoconnect=1\r\nautoconnectserv=" + server + "\r\nautoconnectport=" + port +
           "\r\nautoconnectrcon=" + password + "\r\n";
}

QByteArray autoConnect(const PracticeServer &server, const QByteArray &password = "practice")
{
    return autoConnect("127.0.0.1", QByteArray::number(server.port()), password);
}

QStringList fields(const Program &program)
{
    return {program.text(u"comserver"_s), program.text(u"comport"_s), program.text(u"txtPWD"_s)};
}

bool isConnected(const Program &program)
{
    return program.find<QPushButton>(u"cmdconnect"_s)->property("Tag").toString() == u"YES";
}

} // namespace

class LifeCycleStartTest final : public QObject {
    Q_OBJECT

private slots:
    void init() { failOnWarnings(); }

    void withoutSettingsTheDefaultsStand()
    {
        Program program;
        program.start();
        QCOMPARE(fields(program), QStringList({u"127.0.0.1"_s, u"28960"_s, u""_s}));
        QVERIFY(program.rows(u"lstservers"_s).isEmpty());
        QCOMPARE(program.session.rconheader, QByteArray(4, '\xFF'));
        QVERIFY(!isConnected(program));
        QVERIFY2(!QFile::exists(u"molvark.ini"_s), "starting writes no settings");
    }

    void theTabsStandBeforeTheirPagesAreBuilt()
    {
        Program program;
        program.window.show();
        auto *tabs = program.find<QTabWidget>(u"SSTab"_s);
        QCOMPARE(tabs->count(), 9);
        QVERIFY(program.window.findChild<QPushButton *>(u"cmdservpop"_s));
        QVERIFY(!program.window.findChild<QPushButton *>(u"cmdplypop"_s));
        QStringList captions;
        for (int tab = 0; tab < tabs->count(); ++tab)
            captions.append(tabs->tabText(tab));

        QCoreApplication::processEvents();
        const QSize size = tabs->size();

        program.start();
        QCoreApplication::processEvents();
        QCOMPARE(tabs->size(), size); // what is seen already does not move
        QCOMPARE(tabs->currentIndex(), 0);
        QStringList later;
        for (int tab = 0; tab < tabs->count(); ++tab)
            later.append(tabs->tabText(tab));
        QCOMPARE(later, captions);
    }

    void aTabThatWasChosenBeforeIsShownOnceItIsBuilt()
    {
        Program program;
        auto *tabs = program.find<QTabWidget>(u"SSTab"_s);
        tabs->setCurrentIndex(4);
        program.start();
        QCOMPARE(tabs->currentIndex(), 4);
        QTRY_VERIFY(program.find<QPushButton>(u"cmdplypop"_s)->isVisible());
    }

    void aWindowThatIsClosedBeforeItIsBuiltLeavesTheSettingsAndConnectsNowhere()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        const QByteArray settings = "[servers]\r\nserver1=one\r\n" + autoConnect(server) + "savercon=0\r\n";
        Program program(settings);
        program.window.show();
        program.window.close();
        program.window.Form_Load();
        QVERIFY(!program.window.isVisible());
        QVERIFY(!program.window.findChild<QWidget *>(u"cmdplypop"_s));
        QCOMPARE(program.file(u"molvark.ini"_s), settings);
        QCOMPARE(QDir().entryList(QDir::Files), QStringList{u"molvark.ini"_s}); // no logs either
        QVERIFY(server.requests().isEmpty());
    }

    void theSavedServersAreRead_data()
    {
        QTest::addColumn<QByteArray>("settings");
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QStringList>("passwords");
        QTest::addColumn<int>("count");
        const QByteArray rest =
            "[ports]\r\nport1=1\r\nport2=2\r\nport3=3\r\n[rcon]\r\nrcon1=a\r\nrcon2=b\r\nrcon3=c\r\n";
        QTest::newRow("two servers") << QByteArray("[servers]\r\nserver1=one\r\nserver2=two\r\n" + rest)
                                     << QStringList({u"one:1"_s, u"two:2"_s}) << QStringList({u"a"_s, u"b"_s}) << 2;
        QTest::newRow("a gap ends the list") << QByteArray("[servers]\r\nserver1=one\r\nserver3=three\r\n" + rest)
                                             << QStringList{u"one:1"_s} << QStringList{u"a"_s} << 1;
        QTest::newRow("an empty key ends the list")
            << QByteArray("[servers]\r\nserver1=one\r\nserver2=\r\nserver3=three\r\n" + rest) << QStringList{u"one:1"_s}
            << QStringList{u"a"_s} << 1;
        QTest::newRow("a server of blanks ends the list and is counted")
            << QByteArray("[servers]\r\nserver1=one\r\nserver2=   \r\nserver3=three\r\n" + rest)
            << QStringList{u"one:1"_s} << QStringList{u"a"_s} << 2;
        QTest::newRow("a list that begins at two")
            << QByteArray("[servers]\r\nserver2=two\r\n" + rest) << QStringList() << QStringList() << 0;
        QTest::newRow("no port and no password")
            << QByteArray("[servers]\r\nserver1=one\r\n") << QStringList{u"one:"_s} << QStringList{u""_s} << 1;
    }

    void theSavedServersAreRead()
    {
        QFETCH(QByteArray, settings);
        Program program(settings);
        program.start();
        QTEST(program.rows(u"lstservers"_s), "rows");
        QTEST(program.rows(u"lstrcon"_s), "passwords");
        QCOMPARE(fields(program), QStringList({u"127.0.0.1"_s, u"28960"_s, u""_s}));
        QTEST(emptiedAtTheEnd(program), "count");
    }

    void anotherFolderHasOtherSettings()
    {
        const auto settings = [](const QByteArray &server) { return "[servers]\r\nserver1=" + server + "\r\n"; };
        QByteArray written;
        for (const QByteArray server : {"here", "there"}) {
            Program program(settings(server));
            program.start();
            QCOMPARE(program.rows(u"lstservers"_s), QStringList{QString::fromLatin1(server) + u':'});
            program.window.close();
            written = program.file(u"molvark.ini"_s);
            QVERIFY(written.startsWith("[servers]\r\nserver1=" + server + "\r\n"));
        }
        QVERIFY(!written.contains("=here"));
    }

    void theSettingsStayThoseOfTheStartingFolder()
    {
        Program program("[servers]\r\nserver1=here\r\n[options]\r\nsavercon=0\r\nsavemessages=0\r\n");
        const QString startedIn = QDir::currentPath();
        QTemporaryDir elsewhere;
        QVERIFY(QDir::setCurrent(elsewhere.path()));
        program.start();
        QCOMPARE(program.rows(u"lstservers"_s), QStringList{u"here:"_s});
        program.window.close();
        QVERIFY(program.file(u"molvark.ini"_s).contains("rcon1="));
        QVERIFY(QDir(elsewhere.path()).isEmpty());
        QDir::setCurrent(startedIn);
    }

    void autoConnectAsksEverythingInSilence()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        answerBriefly(server);
        Program program(autoConnect(server));
        program.output.addrcon(u"before\r\n"_s);
        program.output.addmessage(u"before"_s);
        QStringList seen;
        connect(&server, &PracticeServer::requested, this,
                [&] { seen.append(program.progress()->isVisible() ? u"noted"_s : u"no note"_s); });
        program.start();

        QCOMPARE(server.commands(),
                 QList<QByteArray>({"status", "getstatus", "dvarlist sv_maprotation", "fdir *.cfg"}));
        QCOMPARE(seen, QStringList(4, u"no note"_s));
        QVERIFY(isConnected(program));
        QCOMPARE(fields(program), QStringList({u"127.0.0.1"_s, QString::number(server.port()), u"practice"_s}));
        QCOMPARE(program.pane(), u"before\r\nServer running game mode [sd] on map [mp_carentan]"_s);
        QCOMPARE(program.messages(),
                 QStringList({u"before"_s, u"Connected to server 127.0.0.1:%1"_s.arg(server.port())}));
        QCOMPARE(program.file(u"molvark_rcon_050306.log"_s), "");
        QCOMPARE(program.file(u"molvar_messages_050306.log"_s), "");
        QCOMPARE(program.text(u"txtcurmaprot_0"_s), u"gametype sd map mp_decoy"_s);
        QCOMPARE(program.rows(u"lstcfgs"_s), QStringList({u"server.cfg"_s, u"match.cfg"_s}));
        QVERIFY(program.showsRepliesOf(server));
    }

    void autoConnectNeedsAllThree_data()
    {
        QTest::addColumn<int>("missing");
        QTest::newRow("server") << 0;
        QTest::newRow("port") << 1;
        QTest::newRow("password") << 2;
    }

    void autoConnectNeedsAllThree()
    {
        QFETCH(int, missing);
        PracticeServer server;
        QVERIFY(server.listen());
        QList<QByteArray> texts{"127.0.0.1", QByteArray::number(server.port()), "practice"};
        texts[missing].clear();
        Program program(autoConnect(texts[0], texts[1], texts[2]));
        program.start();
        QVERIFY(server.requests().isEmpty());
        QVERIFY(!isConnected(program));
        QCOMPARE(program.udpclient.State(), UDPClient::Closed);
        QStringList expected;
        for (const QByteArray &text : std::as_const(texts))
            expected.append(QString::fromLatin1(text));
        QCOMPARE(fields(program), expected);
        QVERIFY(!program.session.rconcollect);
    }

    void withoutThePreferenceTheFieldsKeepTheirDefaults()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program(autoConnect(server).replace("autoconnect=1", "autoconnect=0"));
        program.start();
        QCOMPARE(fields(program), QStringList({u"127.0.0.1"_s, u"28960"_s, u""_s}));
        QVERIFY(server.requests().isEmpty());
    }

    // The window is there before the settings file has been read.
    void whoConnectsAtOnceConnectsWithTheStoredPreferences()
    {
        PracticeServer server;
        PracticeServer preferred;
        QVERIFY(server.listen() && preferred.listen());
        answerBriefly(server);
        Program program(autoConnect(preferred) + "clearrconnew=0\r\n");
        program.window.show();
        program.output.addrcon(u"before\r\n"_s);
        program.connectTo(server);
        QVERIFY(isConnected(program));
        QVERIFY(program.pane().startsWith(u"before\r\n"));
        QCOMPARE(program.text(u"txtcurmaprot_0"_s), u"gametype sd map mp_decoy"_s);
        program.window.Form_Load();
        QVERIFY(isConnected(program));
        QVERIFY(preferred.requests().isEmpty());
        QCOMPARE(fields(program).at(1), QString::number(server.port()));
    }

    void aWrongPasswordAtStartIsToldAndTheProgramStands()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program(autoConnect(server, "guess"));
        program.start();
        const Box refused{u"No connection"_s, u"Invalid Rcon password, no connection established"_s,
                          BoxIcon::Exclamation, BoxButtons::Ok};
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{refused});
        QVERIFY(!isConnected(program));
        QVERIFY(!program.session.rconcollect);
    }

    void aServerThatIsSilentAboutItsGameEndsTheSilence()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        server.answerRaw("getstatus", {});
        Program program(autoConnect(server));
        program.start();
        QVERIFY(isConnected(program));
        QCOMPARE(program.pane(), u""_s);
        program.click(u"cmdstatus"_s);
        QVERIFY(program.pane().startsWith(u"map: "));
    }

    void aPortThatIsNoNumberIsToldAndTheProgramStands()
    {
        PracticeServer server;
        QVERIFY(server.listen());
        Program program(autoConnect("127.0.0.1", "abc", "practice"));
        program.start();
        const Box mismatch{u"Molvark"_s, u"Error code 13 Descr: Type mismatch"_s, BoxIcon::Exclamation, BoxButtons::Ok};
        QCOMPARE(program.prompts.takeBoxes(), QList<Box>{mismatch});
        QVERIFY(!program.session.rconcollect);
        program.connectTo(server);
        QVERIFY(isConnected(program));
    }
};

WINDOW_TEST(LifeCycleStartTest)
#include "tst_life_cycle_start.moc"
